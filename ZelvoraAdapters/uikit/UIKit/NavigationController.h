#pragma once

#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#import <UIKit/UIKit.h>

#include <memory>
#include <vector>

namespace zelvora::uikit {

/// A navigation stack of the host's, kept as `ViewController` is.
class NavigationController final : public platform::UINavigationController {
public:
    explicit NavigationController(::UINavigationController* native);

    // platform::UINavigationController
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIViewController>> viewControllers() const override;
    void pushViewController(
        std::shared_ptr<platform::UIViewController> controller, platform::Animated animated) override;
    void popViewController(platform::Animated animated) override;
    [[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> interactivePopGestureRecognizer() const override;

private:
    [[nodiscard]] ::UINavigationController* native() const;
};

}
