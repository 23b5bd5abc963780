#pragma once

#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtk/gtk.h>

#include <memory>

namespace zelvora::gtk {

/// The native side of a view controller: which container shows it, and whether it is on the screen, so that each
/// disappearance is reported once. A presentation that is not full screen looks the same, but as on the phone its
/// presenter still counts as on the screen.
class UIViewControllerPeer : public platform::UIViewController::Peer {
public:
    explicit UIViewControllerPeer(platform::UIViewController& owner);
    UIViewControllerPeer(UIViewControllerPeer const&) = delete;
    UIViewControllerPeer& operator=(UIViewControllerPeer const&) = delete;
    ~UIViewControllerPeer() override;

    [[nodiscard]] static UIViewControllerPeer& of(platform::UIViewController const& controller)
    {
        return static_cast<UIViewControllerPeer&>(controller.peer());
    }

    [[nodiscard]] platform::UIViewController& owner() const { return m_owner; }
    [[nodiscard]] bool isOnScreen() const { return m_isOnScreen; }
    [[nodiscard]] platform::UIModalPresentationStyle modalPresentationStyle() const { return m_style; }

    /// Called by containers about what they show.
    void setNavigationController(std::weak_ptr<platform::UINavigationController> navigation);
    void didAppear();
    void willDisappear(platform::Animated animated);

    /// Called by the root view: a screen outside a navigation stack appears and disappears with its window.
    void viewDidEnterWindow();
    void viewWillLeaveWindow();

    /// The window that the screen is in, or nullptr.
    [[nodiscard]] virtual GtkWindow* window() const;
    /// Whether the controller is in a window or is one, and is not only still seen to leave.
    [[nodiscard]] static bool isShown(platform::UIViewController const& controller);
    /// Warns if that window is hidden, in which nobody sees what is put on screen.
    void warnIfWindowIsHidden() const;

    // platform::UIViewController::Peer
    [[nodiscard]] std::shared_ptr<platform::UIView> loadView() final;
    [[nodiscard]] std::shared_ptr<platform::UINavigationController> navigationController() const override;
    void setModalPresentationStyle(platform::UIModalPresentationStyle style) override { m_style = style; }
    void present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated) override;
    void dismiss(platform::Animated animated) override;

protected:
    [[nodiscard]] virtual std::shared_ptr<platform::UIView> makeView();
    /// The screen that this one contains, which appears and disappears with it.
    [[nodiscard]] virtual platform::UIViewController* visibleChild() const { return nullptr; }

private:
    [[nodiscard]] UIViewControllerPeer& outermost();

    platform::UIViewController& m_owner;
    std::weak_ptr<platform::UIView> m_view;
    std::weak_ptr<platform::UINavigationController> m_navigation;
    platform::UIModalPresentationStyle m_style = platform::UIModalPresentationStyle::Automatic;
    bool m_isOnScreen = false;
};

/// The widget of the screen's view, which is loaded first if it has not been.
[[nodiscard]] GtkWidget* widgetOf(platform::UIViewController& controller);

/// Releases a controller later, in the main loop, because the code that runs now may be its own.
void releaseLater(std::shared_ptr<platform::UIViewController> controller);

}
