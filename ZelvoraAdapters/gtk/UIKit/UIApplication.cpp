#include "ZelvoraAdapters/gtk/UIKit/UIApplication.h"

#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <utility>

namespace zelvora::gtk {

using platform::UIApplicationState;

namespace {

template<typename Visit>
void forEachWindow(Visit const& visit)
{
    auto* windows = gtk_window_get_toplevels();
    for (guint index = 0; index < g_list_model_get_n_items(windows); ++index) {
        auto const window = adopt(static_cast<GtkWindow*>(g_list_model_get_item(windows, index)));
        visit(window.get());
    }
}

UIApplicationState currentState()
{
    auto state = UIApplicationState::Background;
    forEachWindow([&state](GtkWindow* window) {
        // A window that was hidden while it had the focus still claims to have it.
        if (!gtk_widget_get_mapped(GTK_WIDGET(window)))
            return;
        if (gtk_window_is_active(window))
            state = UIApplicationState::Active;
        else if (state == UIApplicationState::Background)
            state = UIApplicationState::Inactive;
    });
    return state;
}

GObjectPointer<GAppInfo> handlerOf(platform::URL const& url)
{
    auto const scheme = url.scheme();
    if (!scheme)
        return nullptr;
    GTextPointer const lowerCase(g_ascii_strdown(scheme->c_str(), -1));
    return adopt(g_app_info_get_default_for_uri_scheme(lowerCase.get()));
}

void didLaunch(GObject*, GAsyncResult* result, gpointer)
{
    GErrorPlace error;
    if (!g_app_info_launch_default_for_uri_finish(result, error.out()))
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "A URL could not be opened: %s", error->message);
}

}

UIApplication::UIApplication(platform::NotificationCenter& notificationCenter, std::function<void()> didResignActive)
    : m_notificationCenter(notificationCenter)
    , m_didResignActive(std::move(didResignActive))
    , m_state(currentState())
{
    auto const changed = +[](UIApplication* self) {
        self->watchWindows();
        self->updateLater();
    };
    g_signal_connect_swapped(gtk_window_get_toplevels(), "items-changed", G_CALLBACK(changed), this);
    watchWindows();
}

UIApplication::~UIApplication()
{
    g_signal_handlers_disconnect_by_data(gtk_window_get_toplevels(), this);
    forEachWindow([this](GtkWindow* window) { g_signal_handlers_disconnect_by_data(window, this); });
}

bool UIApplication::canOpenURL(platform::URL const& url) const
{
    return handlerOf(url) != nullptr;
}

void UIApplication::open(platform::URL const& url)
{
    // The scheme in lower case, as in `canOpenURL`: the system's lookup is case-sensitive.
    auto const& text = url.absoluteString();
    auto const schemeLength = url.scheme().value_or("").size();
    GTextPointer const lowerCase(g_ascii_strdown(text.c_str(), static_cast<gssize>(schemeLength)));
    auto const normalized = lowerCase.get() + text.substr(schemeLength);
    // The display's launch context lets the other app come to the front.
    auto* display = gdk_display_get_default();
    auto const context = display ? adopt(gdk_display_get_app_launch_context(display)) : nullptr;
    g_app_info_launch_default_for_uri_async(
        normalized.c_str(), G_APP_LAUNCH_CONTEXT(context.get()), nullptr, didLaunch, nullptr);
}

void UIApplication::watchWindows()
{
    forEachWindow([this](GtkWindow* window) {
        g_signal_handlers_disconnect_by_data(window, this);
        auto const changed = +[](UIApplication* self) { self->updateLater(); };
        g_signal_connect_swapped(window, "notify::is-active", G_CALLBACK(changed), this);
        g_signal_connect_swapped(window, "map", G_CALLBACK(changed), this);
        g_signal_connect_swapped(window, "unmap", G_CALLBACK(changed), this);
    });
}

// One window loses the focus before the next one gets it; the app stays active in between.
void UIApplication::updateLater()
{
    if (!m_update)
        m_update = attach(g_idle_source_new(), [this] { update(); });
}

void UIApplication::update()
{
    m_update.reset();
    auto const before = std::exchange(m_state, currentState());
    bool const isActive = m_state == UIApplicationState::Active;
    bool const wasActive = before == UIApplicationState::Active;
    if (isActive && !wasActive)
        m_notificationCenter.post({ didBecomeActiveNotification, std::nullopt });
    else if (wasActive && !isActive)
        m_didResignActive();
}

}
