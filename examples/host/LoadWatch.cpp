#include "examples/host/LoadWatch.h"

namespace zelvora::examples {

namespace {

// A page that the server could not make is no page to show, although the engine has loaded it.
std::string serverError(WebKitWebView* engine)
{
    constexpr guint firstServerError = 500;
    auto* const resource = webkit_web_view_get_main_resource(engine);
    auto* const response = resource ? webkit_web_resource_get_response(resource) : nullptr;
    auto const status = response ? webkit_uri_response_get_status_code(response) : 0;
    return status < firstServerError ? "" : "The server answered " + std::to_string(status);
}

// A newer load has replaced it, or the SDK has handed the link to another app.
bool isIntended(GError const& error)
{
    return g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED)
        || g_error_matches(&error, WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
}

}

LoadWatch::LoadWatch(WebKitWebView* engine, LoadWatcher& watcher) : m_engine(gtk::retain(engine)), m_watcher(watcher)
{
    g_signal_connect(engine, "load-changed",
        G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, LoadWatch* self) { self->loadDidChange(event); }), this);
    g_signal_connect(engine, "load-failed",
        G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent, char const* url, GError const* error,
                        LoadWatch* self) -> gboolean { return self->loadDidFail(url, *error); }),
        this);
    g_signal_connect(engine, "notify::estimated-load-progress",
        G_CALLBACK(+[](WebKitWebView* view, GParamSpec*, LoadWatch* self) {
            self->m_watcher.didProgress(webkit_web_view_get_estimated_load_progress(view));
        }),
        this);
    g_signal_connect_swapped(
        engine, "web-process-terminated", G_CALLBACK(+[](LoadWatch* self) { self->webProcessDidTerminate(); }), this);
}

LoadWatch::~LoadWatch()
{
    g_signal_handlers_disconnect_by_data(m_engine.get(), this);
}

void LoadWatch::loadDidChange(WebKitLoadEvent event)
{
    if (event == WEBKIT_LOAD_STARTED)
        m_watcher.didStartLoad();
    if (event == WEBKIT_LOAD_FINISHED)
        m_watcher.didFinishLoad();
    if (event != WEBKIT_LOAD_COMMITTED)
        return;
    if (auto const error = serverError(m_engine.get()); error.empty())
        m_watcher.didCommitLoad();
    else
        m_watcher.didFailLoad(url(), error, LoadWatcher::PageBefore::Replaced);
}

bool LoadWatch::loadDidFail(char const* url, GError const& error)
{
    if (isIntended(error))
        return false;
    m_watcher.didFailLoad(url, error.message, LoadWatcher::PageBefore::Kept);
    // The engine's own page about the failure is not shown.
    return true;
}

void LoadWatch::webProcessDidTerminate()
{
    // The adapter loads the page again, unless its process dies again and again.
    if (!webkit_web_view_is_loading(m_engine.get()))
        m_watcher.didFailLoad(url(), "The page's process has ended", LoadWatcher::PageBefore::Replaced);
}

std::string LoadWatch::url() const
{
    auto const* const url = webkit_web_view_get_uri(m_engine.get());
    return url ? url : "";
}

}
