#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zelvora::memory {

/// The host's navigation stack; made with `std::make_shared`, its first screen is pushed like the others. It calls
/// `viewDidLoad` of a pushed controller, which knows its stack by then, before `viewWillDisappear` of the one that it
/// covers. Pushing what is in a stack or presented stops the process.
class ZELVORA_API NavigationController final : public platform::UINavigationController {
public:
    enum class SwipeToPop : std::uint8_t { No, Yes };

    /// With its own swipe to pop, or without: a completed swipe (see `memory::perform`) pops the top controller.
    explicit NavigationController(SwipeToPop swipe = SwipeToPop::Yes);
    ~NavigationController() override;

    [[nodiscard]] std::shared_ptr<platform::UIViewController> topViewController() const;

    // platform::UINavigationController
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIViewController>> viewControllers() const override;
    void pushViewController(
        std::shared_ptr<platform::UIViewController> controller, platform::Animated animated) override;
    void popViewController(platform::Animated animated) override;
    [[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> interactivePopGestureRecognizer() const override;

    // platform::UIViewController
    void viewWillDisappear(platform::Animated animated) override;

private:
    class PopGestureRecognizer;

    std::vector<std::shared_ptr<platform::UIViewController>> m_controllers;
    std::shared_ptr<PopGestureRecognizer> m_popGestureRecognizer;
};

}
