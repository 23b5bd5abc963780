#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zelvora::memory {

/// The host's navigation stack. Make it with `std::make_shared`, and push its first screen like the others. It calls
/// `viewDidLoad` of a pushed controller, which knows its stack by then, before `viewWillDisappear` of the one that it
/// covers. Pushing a controller that is in a stack or presented stops the process.
class ZELVORA_API NavigationController final : public platform::UINavigationController {
public:
    /// Whether a stack has a recognizer for the swipe that pops.
    enum class SwipeToPop : std::uint8_t { No, Yes };

    /// With or without a swipe to pop: a completed swipe (see `memory::perform`) pops the top controller.
    explicit NavigationController(SwipeToPop swipe = SwipeToPop::Yes);
    ~NavigationController() override;

    /// The controller that is shown; nullptr before the first push.
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
    class PopRecognizer;

    std::vector<std::shared_ptr<platform::UIViewController>> m_stack;
    std::shared_ptr<PopRecognizer> m_popRecognizer;
};

}
