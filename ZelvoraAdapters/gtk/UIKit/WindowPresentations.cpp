#include "ZelvoraAdapters/gtk/UIKit/WindowPresentations.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/shared/Screens/expectFreeScreen.h"

#include <cstddef>
#include <utility>

namespace zelvora::gtk {

using platform::Animated;
using platform::UIViewController;

namespace {

constexpr char const* presentationsKey = "zelvora-presentations";
constexpr Stage::Offset below { 0, 1 };

/// Calls `visit` for the outermost screens in a widget tree.
template<typename Visit>
void forEachScreen(GtkWidget* widget, Visit const& visit)
{
    auto const* view = dynamic_cast<UIViewPeer*>(canvasClient(widget));
    if (view && view->controller()) {
        visit(*view->controller());
        return;
    }
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child))
        forEachScreen(child, visit);
}

}

WindowPresentations& WindowPresentations::of(GtkWindow* window)
{
    if (auto* made = g_object_get_data(G_OBJECT(window), presentationsKey))
        return *static_cast<WindowPresentations*>(made);
    auto* presentations = new WindowPresentations(window);
    g_object_set_data_full(G_OBJECT(window), presentationsKey, presentations,
        [](gpointer held) { delete static_cast<WindowPresentations*>(held); });
    return *presentations;
}

WindowPresentations::WindowPresentations(GtkWindow* window) : m_window(window)
{
    enterWindow();
    g_signal_connect_swapped(window, "destroy", G_CALLBACK(+[](WindowPresentations* self) { self->close(); }), this);
}

void WindowPresentations::present(
    UIViewControllerPeer& presenter, std::shared_ptr<UIViewController> const& presented, Animated animated)
{
    enterWindow();
    auto const level = levelOf(presenter);
    if (!level || !m_chain.mayPresent(*level)) {
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "Presentation ignored: the presenter is covered or presents already");
        return;
    }
    shared::expectFreeToPresent(presented.get(), presenter.owner(), UIViewControllerPeer::isShown);
    // A hook may end the window, and this with it.
    auto const window = retain(m_window);
    m_stage.finishSlide();
    m_chain.present(*level, presented, UIViewControllerPeer::of(*presented).modalPresentationStyle(), animated);
}

void WindowPresentations::dismiss(UIViewControllerPeer& presenter, Animated animated)
{
    auto const level = levelOf(presenter);
    if (!level || m_chain.isEmpty())
        return;
    // A hook may end the window, and this with it.
    auto const window = retain(m_window);
    m_stage.finishSlide();
    m_chain.dismiss(*level, animated);
}

void WindowPresentations::setContent(GtkWidget* content)
{
    enterWindow();
    close();
    replaceContent(content);
}

// Repeated if the host has given its window another child since; what was presented has left with the old one.
void WindowPresentations::enterWindow()
{
    if (gtk_widget_get_parent(m_stage.widget()))
        return;
    close();
    auto* child = gtk_window_get_child(m_window);
    auto const content = child ? retain(child) : nullptr;
    gtk_window_set_child(m_window, m_stage.widget());
    replaceContent(content.get());
}

void WindowPresentations::replaceContent(GtkWidget* content)
{
    if (m_content)
        m_stage.remove(m_content);
    m_content = content;
    if (!content)
        return;
    m_stage.add(content);
    m_stage.setMeasuredPage(content);
}

std::optional<WindowPresentations::Level> WindowPresentations::levelOf(UIViewControllerPeer const& peer) const
{
    auto& controller = peer.owner();
    if (!controller.isViewLoaded())
        return peer.window() == m_window ? std::optional<Level>(0) : std::nullopt;
    if (auto const level = m_chain.levelOf(controller))
        return level;
    auto* widget = widgetOf(controller);
    // A screen that is being dismissed is in the window still, but no longer in the chain.
    bool const isInContent = m_content && (widget == m_content || gtk_widget_is_ancestor(widget, m_content));
    bool const isWindowItself = !gtk_widget_get_root(widget) && peer.window() == m_window;
    return isInContent || isWindowItself ? std::optional<Level>(0) : std::nullopt;
}

GtkWidget* WindowPresentations::pageAt(Level level) const
{
    if (level == 0)
        return m_content;
    auto const screen = m_chain.screenAt(level);
    return screen ? widgetOf(*screen) : nullptr;
}

// The screens learn that their window is gone by leaving it.
void WindowPresentations::close()
{
    m_stage.finishSlide();
    for (auto const& screen : m_chain.removeAll())
        letGo(screen);
}

void WindowPresentations::letGo(Screen const& screen)
{
    m_stage.remove(widgetOf(*screen));
    releaseLater(screen);
}

void WindowPresentations::didRemove(Screen const& screen, Animated)
{
    m_stage.setLeaving(widgetOf(*screen));
}

void WindowPresentations::contentWillDisappear(Animated animated)
{
    if (m_content)
        forEachScreen(m_content, [animated](UIViewControllerPeer& screen) { screen.willDisappear(animated); });
}

void WindowPresentations::screenWillDisappear(UIViewController& screen, Animated animated)
{
    UIViewControllerPeer::of(screen).willDisappear(animated);
}

void WindowPresentations::show(Screen const& screen, Level presenter, Animated animated)
{
    auto* page = widgetOf(*screen);
    m_stage.add(page);
    UIViewControllerPeer::of(*screen).didAppear();
    gtk_widget_child_focus(page, GTK_DIR_TAB_FORWARD);
    m_stage.place(page, below);
    m_stage.slide(page, {}, animated, [this, presenter] {
        if (auto* hidden = pageAt(presenter))
            m_stage.setCovered(hidden, true);
    });
}

void WindowPresentations::uncover(Level level)
{
    // A hook may have ended the window.
    if (!gtk_widget_get_root(m_stage.widget()))
        return;
    if (auto* page = pageAt(level))
        m_stage.setCovered(page, false);
    if (auto const screen = m_chain.screenAt(level))
        UIViewControllerPeer::of(*screen).didAppear();
    else if (m_content)
        forEachScreen(m_content, [](UIViewControllerPeer& content) { content.didAppear(); });
}

void WindowPresentations::hide(Screen const& screen, Animated animated)
{
    m_stage.slide(widgetOf(*screen), below, animated, [this, screen] { letGo(screen); });
}

}
