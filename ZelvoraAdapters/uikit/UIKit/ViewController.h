#pragma once

#include "ZelvoraPlatform/UIKit/UIViewController.h"

#import <UIKit/UIKit.h>

#include <memory>

namespace zelvora::uikit {

/// A screen of the host's. The native controller keeps it, and it knows the native controller as long as that lives.
class ViewController final : public platform::UIViewController {
public:
    /// The controller that the native one stands for; a new one, or a navigation stack, if it stands for none. Not nil.
    /// Any thread.
    [[nodiscard]] static std::shared_ptr<platform::UIViewController> of(::UIViewController* native);

    explicit ViewController(::UIViewController* native);
};

}
