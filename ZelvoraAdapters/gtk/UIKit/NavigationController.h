#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Stage.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <memory>
#include <vector>

namespace zelvora::gtk {

/// The host's navigation stack: screens slide in from the trailing edge, and a drag from the left edge takes the top
/// one out again. It has no navigation bar.
///
/// A drag takes its screen off the stack as soon as it begins, and puts it back if it does not get far enough.
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
