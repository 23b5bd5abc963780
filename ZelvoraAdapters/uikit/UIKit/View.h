#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"

#import <UIKit/UIKit.h>

#include <memory>

namespace zelvora::uikit {

/// A view that shows a native view of the host's or the system's, such as a header. It keeps the native view.
class View final : public platform::UIView {
public:
    /// The view that the native one stands for; a new one if it stands for none. Not nil.
    [[nodiscard]] static std::shared_ptr<platform::UIView> of(::UIView* native);

private:
    explicit View(::UIView* native);
};

}
