#include "tests/uikit/live/Engine.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace zelvora::live {

namespace {

std::string jsonOf(JSCValue* value)
{
    if (!value || jsc_value_is_undefined(value))
        return {};
    char* const json = jsc_value_to_json(value, 0);
    std::string text = json ? json : "";
    g_free(json);
    return text;
}

class WebKitEngine final : public Engine {
public:
    explicit WebKitEngine(Callbacks callbacks) : m_callbacks(std::move(callbacks))
    {
        m_view = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "user-content-manager", m_content, nullptr));
        m_window = GTK_WINDOW(gtk_window_new());
        gtk_window_set_child(m_window, GTK_WIDGET(m_view));
        gtk_window_present(m_window);
        g_signal_connect(m_view, "decide-policy", G_CALLBACK(decidePolicy), this);
        g_signal_connect(m_view, "load-changed", G_CALLBACK(loadDidChange), this);
        g_signal_connect(m_view, "notify::uri", G_CALLBACK(urlDidChange), this);
        g_signal_connect(m_view, "script-dialog", G_CALLBACK(closeDialog), nullptr);
    }

    ~WebKitEngine() override
    {
        g_signal_handlers_disconnect_by_data(m_view, this);
        g_signal_handlers_disconnect_by_data(m_content, this);
        gtk_window_destroy(m_window);
        g_object_unref(m_content);
    }

    // Engine
    void addScript(std::string const& source, bool atStart, bool inMainFrameOnly) override
    {
        auto* const script = webkit_user_script_new(source.c_str(),
            inMainFrameOnly ? WEBKIT_USER_CONTENT_INJECT_TOP_FRAME : WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
            atStart ? WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START : WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END, nullptr,
            nullptr);
        webkit_user_content_manager_add_script(m_content, script);
        webkit_user_script_unref(script);
    }
    void addHandler(std::string const& name) override
    {
        g_signal_connect(m_content, ("script-message-received::" + name).c_str(), G_CALLBACK(didReceive), this);
        m_handler = name;
        webkit_user_content_manager_register_script_message_handler(m_content, name.c_str(), nullptr);
    }
    void removeHandler(std::string const& name) override
    {
        webkit_user_content_manager_unregister_script_message_handler(m_content, name.c_str(), nullptr);
    }
    void load(std::string const& html, std::string const& url) override
    {
        webkit_web_view_load_html(m_view, html.c_str(), url.c_str());
    }
    void evaluate(
        std::string const& script, std::function<void(std::string const& json, std::string const& error)> done) override
    {
        auto finish = std::make_unique<decltype(done)>(std::move(done));
        webkit_web_view_evaluate_javascript(m_view, script.c_str(), static_cast<gssize>(script.size()), nullptr,
            nullptr, nullptr, didEvaluate, finish.release());
    }

private:
    static WebKitEngine& of(gpointer self) { return *static_cast<WebKitEngine*>(self); }

    static void didReceive(WebKitUserContentManager*, JSCValue* value, gpointer self)
    {
        of(self).m_callbacks.didReceive(of(self).m_handler, jsonOf(value));
    }

    static gboolean decidePolicy(
        WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type, gpointer self)
    {
        if (type != WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION)
            return FALSE;
        auto* const action =
            webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        auto* const request = webkit_navigation_action_get_request(action);
        if (of(self).m_callbacks.mayNavigate(webkit_uri_request_get_uri(request)))
            webkit_policy_decision_use(decision);
        else
            webkit_policy_decision_ignore(decision);
        return TRUE;
    }

    static void loadDidChange(WebKitWebView*, WebKitLoadEvent event, gpointer self)
    {
        if (event == WEBKIT_LOAD_STARTED)
            of(self).m_callbacks.didStart();
    }

    // A page that is answered alerts first, and waits: what is handled without a panel is closed at once.
    static gboolean closeDialog(WebKitWebView*, WebKitScriptDialog*, gpointer) { return TRUE; }

    static void urlDidChange(GObject*, GParamSpec*, gpointer self)
    {
        char const* const url = webkit_web_view_get_uri(of(self).m_view);
        of(self).m_callbacks.urlDidChange(url ? url : "");
    }

    static void didEvaluate(GObject* view, GAsyncResult* result, gpointer data)
    {
        std::unique_ptr<std::function<void(std::string const&, std::string const&)>> const finish(
            static_cast<std::function<void(std::string const&, std::string const&)>*>(data));
        GError* error = nullptr;
        auto* value = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error);
        (*finish)(jsonOf(value), error ? error->message : "");
        g_clear_object(&value);
        g_clear_error(&error);
    }

    Callbacks m_callbacks;
    WebKitUserContentManager* m_content = webkit_user_content_manager_new();
    WebKitWebView* m_view = nullptr;
    GtkWindow* m_window = nullptr;
    // The SDK has one handler.
    std::string m_handler;
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
