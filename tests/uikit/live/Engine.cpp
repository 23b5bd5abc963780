#include "tests/uikit/live/Engine.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"
#include "ZelvoraAdapters/gtk/WebKit/UserContentController.h"
#include "ZelvoraAdapters/gtk/WebKit/refusePanels.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace zelvora::live {

namespace {

using Finish = std::function<void(std::optional<platform::Value> const& result, std::string const& error)>;

class WebKitEngine final
    : public Engine
    , private platform::WKScriptMessageHandler {
public:
    explicit WebKitEngine(Callbacks callbacks) : m_callbacks(std::move(callbacks))
    {
        m_view =
            WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "user-content-manager", m_content.manager(), nullptr));
        gtk::refusePanels(m_view);
        m_window = GTK_WINDOW(gtk_window_new());
        gtk_window_set_child(m_window, GTK_WIDGET(m_view));
        gtk_window_present(m_window);
        g_signal_connect(m_view, "decide-policy", G_CALLBACK(decidePolicy), this);
        g_signal_connect(m_view, "load-changed", G_CALLBACK(loadDidChange), this);
        g_signal_connect(m_view, "load-failed", G_CALLBACK(loadDidFail), this);
        g_signal_connect(m_view, "notify::uri", G_CALLBACK(urlDidChange), this);
        g_signal_connect(m_view, "web-process-terminated", G_CALLBACK(processDidDie), this);
    }
    WebKitEngine(WebKitEngine const&) = delete;
    WebKitEngine& operator=(WebKitEngine const&) = delete;
    ~WebKitEngine() override
    {
        g_signal_handlers_disconnect_by_data(m_view, this);
        gtk_window_destroy(m_window);
    }

    // Engine
    void addScript(std::string const& source, bool atStart, bool inMainFrameOnly) override
    {
        auto const time = atStart ? platform::WKUserScriptInjectionTime::AtDocumentStart
                                  : platform::WKUserScriptInjectionTime::AtDocumentEnd;
        m_content.addUserScript({ source, time, inMainFrameOnly });
    }
    void addHandler(std::string const& name) override { m_content.addScriptMessageHandler(*this, name); }
    void removeHandler(std::string const& name) override { m_content.removeScriptMessageHandler(name); }
    void load(std::string const& url, std::map<std::string, std::string> const& headers) override
    {
        auto const request = gtk::adopt(webkit_uri_request_new(url.c_str()));
        for (auto const& [name, value] : headers) {
            soup_message_headers_replace(
                webkit_uri_request_get_http_headers(request.get()), name.c_str(), value.c_str());
        }
        webkit_web_view_load_request(m_view, request.get());
    }
    void reload() override { webkit_web_view_reload(m_view); }
    bool isLoading() override { return webkit_web_view_is_loading(m_view); }
    bool canGoBack() override { return webkit_web_view_can_go_back(m_view); }
    void goBack() override { webkit_web_view_go_back(m_view); }
    void evaluate(std::string const& script, Finish done) override
    {
        auto finish = std::make_unique<Finish>(std::move(done));
        webkit_web_view_evaluate_javascript(m_view, script.c_str(), static_cast<gssize>(script.size()), nullptr,
            nullptr, nullptr, didEvaluate, finish.release());
    }
    void killProcess() override { webkit_web_view_terminate_web_process(m_view); }

private:
    static WebKitEngine& of(gpointer self) { return *static_cast<WebKitEngine*>(self); }

    static gboolean decidePolicy(
        WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type, gpointer self)
    {
        if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE)
            return FALSE;
        auto* const action =
            webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        char const* const url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
        std::shared_ptr<WebKitPolicyDecision> const held(gtk::retain(decision));
        of(self).m_callbacks.decideNavigation(url ? url : "", [held](bool isAllowed) {
            if (isAllowed)
                webkit_policy_decision_use(held.get());
            else
                webkit_policy_decision_ignore(held.get());
        });
        return TRUE;
    }

    static void loadDidChange(WebKitWebView*, WebKitLoadEvent event, gpointer self)
    {
        if (event == WEBKIT_LOAD_STARTED)
            of(self).m_callbacks.didStart();
        if (event == WEBKIT_LOAD_COMMITTED)
            of(self).m_callbacks.didCommit();
    }

    static gboolean loadDidFail(WebKitWebView*, WebKitLoadEvent event, char const*, GError const* error, gpointer self)
    {
        if (event == WEBKIT_LOAD_COMMITTED)
            return FALSE;
        of(self).m_callbacks.didFail(g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED));
        return FALSE;
    }

    static void urlDidChange(GObject*, GParamSpec*, gpointer self)
    {
        char const* const url = webkit_web_view_get_uri(of(self).m_view);
        of(self).m_callbacks.urlDidChange(url ? url : "");
    }

    static void processDidDie(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer self)
    {
        of(self).m_callbacks.processDidDie();
    }

    static void didEvaluate(GObject* view, GAsyncResult* result, gpointer data)
    {
        std::unique_ptr<Finish> const finish(static_cast<Finish*>(data));
        gtk::GErrorPlace error;
        auto const value =
            gtk::adopt(webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, error.out()));
        if (!value || jsc_value_is_undefined(value.get())) {
            (*finish)(std::nullopt, error ? error->message : "");
            return;
        }
        auto const converted = gtk::toValue(value.get());
        if (converted)
            (*finish)(*converted, "");
        else
            (*finish)(std::nullopt, converted.error());
    }

    // platform::WKScriptMessageHandler
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override
    {
        m_callbacks.didReceive(message.name, message.body);
    }

    Callbacks m_callbacks;
    gtk::UserContentController m_content;
    // Owned by the window.
    WebKitWebView* m_view = nullptr;
    GtkWindow* m_window = nullptr;
};

}

std::unique_ptr<Engine> makeEngine(Engine::Callbacks callbacks)
{
    if (!gtk_init_check()) {
        std::fprintf(stderr, "there is no display\n");
        std::abort();
    }
    return std::make_unique<WebKitEngine>(std::move(callbacks));
}

bool iterate()
{
    return g_main_context_iteration(nullptr, FALSE);
}

}
