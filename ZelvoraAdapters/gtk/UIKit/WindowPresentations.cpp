#include "ZelvoraAdapters/gtk/UIKit/WindowPresentations.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"

#include <cstddef>
#include <utility>

namespace zelvora::gtk {

using platform::Animated;
using platform::UIViewController;

namespace {

constexpr char const* presentationsKey = "zelvora-presentations";
constexpr Stage::Offset below { 0, 1 };

GtkWidget* widgetOf(UIViewController& controller)
{
    return UIViewPeer::of(controller.view()).widget();
}

/// Calls `tell` for the outermost screens in a widget tree.
template<typename Tell>
void forEachScreen(GtkWidget* widget, Tell const& tell)
{
    auto const* view = dynamic_cast<UIViewPeer*>(canvasClient(widget));
    if (view && view->controller()) {
        tell(*view->controller());
        return;
    }
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child))
        forEachScreen(child, tell);
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
    standInWindow();
    g_signal_connect_swapped(window, "destroy", G_CALLBACK(+[](WindowPresentations* self) { self->close(); }), this);
}

void WindowPresentations::present(
    UIViewControllerPeer& presenter, std::shared_ptr<UIViewController> const& presented, Animated animated)
{
    standInWindow();
    auto const level = levelOf(presenter);
    if (level != m_presented.size() || UIViewControllerPeer::of(*presented).window()) {
        g_log("Zelvora", G_LOG_LEVEL_WARNING,
            "A screen is presented already, or the presenter is covered: nothing is presented");
        return;
    }
    // A hook may end the window, and this with it.
    auto const window = retain(m_window);
    m_stage.finishSlide();
    auto* page = widgetOf(*presented);
    auto& peer = UIViewControllerPeer::of(*presented);
    m_presented.push_back(presented);
    if (peer.modalPresentationStyle() == platform::UIModalPresentationStyle::FullScreen)
        tellDisappearance(*level, animated);
    // A hook may have ended the presentation already.
    if (m_presented.size() <= *level || m_presented[*level] != presented)
        return;
    m_stage.add(page);
    peer.didAppear();
    gtk_widget_child_focus(page, GTK_DIR_TAB_FORWARD);
    m_stage.place(page, below);
    m_stage.slide(page, {}, animated, [this, covered = *level] {
        if (auto* hidden = pageAt(covered))
            m_stage.setCovered(hidden, true);
    });
}

void WindowPresentations::dismiss(UIViewControllerPeer& presenter, Animated animated)
{
    auto const level = levelOf(presenter);
    if (!level)
        return;
    if (*level < m_presented.size())
        uncover(*level, animated);
    else if (*level > 0)
        uncover(*level - 1, animated);
}

void WindowPresentations::setContent(GtkWidget* content)
{
    standInWindow();
    close();
    replaceContent(content);
}

// Again where the host has given its window another child since: what was presented went with the old one.
void WindowPresentations::standInWindow()
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
    for (Level level = m_presented.size(); level > 0; --level) {
        if (m_presented[level - 1].get() == &controller)
            return level;
    }
    auto* widget = widgetOf(controller);
    // One whose dismissal is on its way stands in the window but nowhere in the order.
    bool const standsInContent = m_content && (widget == m_content || gtk_widget_is_ancestor(widget, m_content));
    bool const isWindowItself = !gtk_widget_get_root(widget) && peer.window() == m_window;
    return standsInContent || isWindowItself ? std::optional<Level>(0) : std::nullopt;
}

GtkWidget* WindowPresentations::pageAt(Level level) const
{
    return level == 0 ? m_content : widgetOf(*m_presented[level - 1]);
}

void WindowPresentations::uncover(Level level, Animated animated)
{
    // A hook may end the window, and this with it.
    auto const window = retain(m_window);
    m_stage.finishSlide();
    // Out of the order first: a hook that dismisses once more finds nothing to end.
    auto const first = m_presented.begin() + static_cast<std::ptrdiff_t>(level);
    std::vector const ended(first, m_presented.end());
    m_presented.erase(first, m_presented.end());
    auto const& leaving = ended.back();
    UIViewControllerPeer::of(*leaving).willDisappear(animated);

    for (auto const& controller : ended) {
        if (controller != leaving)
            letGo(controller);
    }
    // The hook may have ended more of them, or presented another.
    if (m_presented.size() == level) {
        if (auto* uncovered = pageAt(level))
            m_stage.setCovered(uncovered, false);
        tellAppearance(level);
    }
    m_stage.slide(widgetOf(*leaving), below, animated, [this, leaving] { letGo(leaving); });
}

void WindowPresentations::letGo(std::shared_ptr<UIViewController> const& controller)
{
    m_stage.remove(widgetOf(*controller));
    releaseLater(controller);
}

void WindowPresentations::tellDisappearance(Level level, Animated animated)
{
    if (level > 0)
        UIViewControllerPeer::of(*m_presented[level - 1]).willDisappear(animated);
    else if (m_content)
        forEachScreen(m_content, [animated](UIViewControllerPeer& screen) { screen.willDisappear(animated); });
}

void WindowPresentations::tellAppearance(Level level)
{
    if (level > 0)
        UIViewControllerPeer::of(*m_presented[level - 1]).didAppear();
    else if (m_content)
        forEachScreen(m_content, [](UIViewControllerPeer& screen) { screen.didAppear(); });
}

// What the screens stand on goes: they hear that by leaving the window.
void WindowPresentations::close()
{
    m_stage.finishSlide();
    for (auto const& controller : std::exchange(m_presented, {}))
        letGo(controller);
}

}
