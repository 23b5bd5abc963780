#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"

#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "ZelvoraAdapters/gtk/UIKit/Stage.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/WindowPresentations.h"
#include "ZelvoraAdapters/shared/Screens/outermost.h"

#include <utility>

namespace zelvora::gtk {

using platform::Animated;
using platform::UINavigationController;
using platform::UIView;
using platform::UIViewController;

UIViewControllerPeer::UIViewControllerPeer(UIViewController& owner) : m_owner(owner) { }

UIViewControllerPeer::~UIViewControllerPeer()
{
    if (auto const view = m_view.lock())
        UIViewPeer::of(*view).setController(nullptr);
}

void UIViewControllerPeer::setNavigationController(std::weak_ptr<UINavigationController> navigation)
{
    m_navigation = std::move(navigation);
}

void UIViewControllerPeer::didAppear()
{
    m_isOnScreen = true;
    if (auto* child = visibleChild())
        of(*child).didAppear();
}

void UIViewControllerPeer::willDisappear(Animated animated)
{
    if (!std::exchange(m_isOnScreen, false))
        return;
    m_owner.viewWillDisappear(animated);
    if (auto* child = visibleChild())
        of(*child).willDisappear(animated);
}

void UIViewControllerPeer::viewDidEnterWindow()
{
    if (m_navigation.expired())
        didAppear();
}

void UIViewControllerPeer::viewWillLeaveWindow()
{
    if (m_navigation.expired())
        willDisappear(Animated::No);
}

GtkWindow* UIViewControllerPeer::window() const
{
    auto const view = m_view.lock();
    auto* root = view ? gtk_widget_get_root(UIViewPeer::of(*view).widget()) : nullptr;
    return GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr;
}

bool UIViewControllerPeer::isShown(UIViewController const& controller)
{
    auto const& peer = of(controller);
    auto const view = peer.m_view.lock();
    return peer.window() && !(view && Stage::isLeaving(UIViewPeer::of(*view).widget()));
}

void UIViewControllerPeer::warnIfWindowIsHidden() const
{
    auto* const shownIn = window();
    if (shownIn && !gtk_widget_get_visible(GTK_WIDGET(shownIn)))
        g_log("Zelvora", G_LOG_LEVEL_WARNING,
            "A screen was put into a window that is not shown: call gtk_window_present");
}

std::shared_ptr<UIView> UIViewControllerPeer::loadView()
{
    auto view = makeView();
    UIViewPeer::of(*view).setController(this);
    m_view = view;
    return view;
}

std::shared_ptr<UINavigationController> UIViewControllerPeer::navigationController() const
{
    return m_navigation.lock();
}

void UIViewControllerPeer::present(std::shared_ptr<UIViewController> presented, Animated animated)
{
    auto& presenter = outermost();
    auto* window = presenter.window();
    if (!window) {
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "Presentation ignored: the presenter is in no window");
        return;
    }
    presenter.warnIfWindowIsHidden();
    WindowPresentations::of(window).present(presenter, presented, animated);
}

void UIViewControllerPeer::dismiss(Animated animated)
{
    auto& presenter = outermost();
    if (auto* window = presenter.window())
        WindowPresentations::of(window).dismiss(presenter, animated);
}

std::shared_ptr<UIView> UIViewControllerPeer::makeView()
{
    return std::make_shared<UIView>();
}

UIViewControllerPeer& UIViewControllerPeer::outermost()
{
    return of(shared::outermost(m_owner));
}

GtkWidget* widgetOf(UIViewController& controller)
{
    return UIViewPeer::of(controller.view()).widget();
}

void releaseLater(std::shared_ptr<UIViewController> controller)
{
    auto* const soon = g_idle_source_new();
    g_source_set_priority(soon, G_PRIORITY_DEFAULT);
    runLater(soon, [held = std::move(controller)] { });
}

}
