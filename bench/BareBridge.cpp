#include "bench/BareBridge.h"

namespace zelvora::bench {

BareBridge::BareBridge(std::function<void()> didReceive)
    : m_didReceive(std::move(didReceive))
    , m_manager(webkit_user_content_manager_new())
    , m_webView(gtk::sink(
          WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "user-content-manager", m_manager.get(), nullptr))))
{
    g_signal_connect(
        m_manager.get(), "script-message-received::zelvora", G_CALLBACK(&BareBridge::didReceiveScriptMessage), this);
    webkit_user_content_manager_register_script_message_handler(m_manager.get(), "zelvora", nullptr);
    auto const closeDialog = [](WebKitWebView*, WebKitScriptDialog*, gpointer) -> gboolean { return TRUE; };
    g_signal_connect(m_webView.get(), "script-dialog", G_CALLBACK(+closeDialog), nullptr);
    webkit_web_view_load_uri(m_webView.get(), "about:blank");
}

BareBridge::~BareBridge()
{
    g_signal_handlers_disconnect_by_data(m_manager.get(), this);
}

void BareBridge::didReceiveScriptMessage(WebKitUserContentManager*, JSCValue*, gpointer self)
{
    auto const& bridge = *static_cast<BareBridge*>(self);
    if (bridge.m_didReceive)
        bridge.m_didReceive();
    else
        g_idle_add(&BareBridge::answer, self);
}

gboolean BareBridge::answer(gpointer self)
{
    auto* const webView = static_cast<BareBridge*>(self)->webView();
    for (auto const* script : { "javascript:alert('null');", "receive(null);" })
        webkit_web_view_evaluate_javascript(webView, script, -1, nullptr, nullptr, nullptr, nullptr, nullptr);
    return G_SOURCE_REMOVE;
}

}
