#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Stage.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <memory>
#include <vector>

namespace zelvora::gtk {

/// A navigation stack of the host's: screens slide in from the trailing edge, and a drag from the left edge takes the
/// top one back out. It has no bar of its own.
///
/// Taken off by a drag, a screen is off the stack from the drag's begin, and on it again if the drag does not get far
/// enough.
class NavigationController final : public platform::UINavigationController {
public:
    [[nodiscard]] static std::shared_ptr<NavigationController> create(
        std::shared_ptr<platform::UIViewController> rootViewController);
    ~NavigationController() override;

    // platform::UINavigationController
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIViewController>> viewControllers() const override;
    void pushViewController(
        std::shared_ptr<platform::UIViewController> controller, platform::Animated animated) override;
    void popViewController(platform::Animated animated) override;
    [[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> interactivePopGestureRecognizer() const override;

    // platform::UIViewController
    void viewDidLoad() override;

private:
    class Peer;
    class PopRecognizer;

    NavigationController();

    [[nodiscard]] GtkWidget* showPage(platform::UIViewController& controller);
    [[nodiscard]] Stage::Offset outside() const;
    [[nodiscard]] std::shared_ptr<platform::UIViewController> takeTop(platform::Animated animated);
    void slideOut(std::shared_ptr<platform::UIViewController> const& leaving, platform::Animated animated);
    void slideBackIn();

    void settle();
    void popDidBegin();
    void popDidMove(double distance);
    void popDidEnd(bool isCompleted);

    std::vector<std::shared_ptr<platform::UIViewController>> m_stack;
    // The screen that a drag is taking out.
    std::shared_ptr<platform::UIViewController> m_dragged;
    std::shared_ptr<PopRecognizer> m_popRecognizer;
    Stage m_stage;
};

}
