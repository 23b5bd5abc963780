#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <memory>
#include <vector>

namespace zelvora::skeleton {

class NavigationController final : public platform::UINavigationController {
public:
    // platform::UINavigationController
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIViewController>> viewControllers() const override
    {
        missing("NavigationController::viewControllers");
    }
    void pushViewController(std::shared_ptr<platform::UIViewController>, platform::Animated) override
    {
        missing("NavigationController::pushViewController");
    }
    void popViewController(platform::Animated) override { missing("NavigationController::popViewController"); }
    [[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> interactivePopGestureRecognizer() const override
    {
        missing("NavigationController::interactivePopGestureRecognizer");
    }
};

}
