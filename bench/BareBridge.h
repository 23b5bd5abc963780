#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

#include <functional>

namespace zelvora::bench {

/// The reference for the SDK's bridge: a web view that makes the same calls of the engine without the SDK. On a message
/// it evaluates an alert and a callback, in a later turn of the main loop.
class BareBridge final {
public:
    explicit BareBridge(std::function<void()> didReceive = nullptr);
    BareBridge(BareBridge const&) = delete;
    BareBridge& operator=(BareBridge const&) = delete;
    ~BareBridge();

    [[nodiscard]] WebKitWebView* webView() const { return m_webView.get(); }

private:
    static void didReceiveScriptMessage(WebKitUserContentManager* manager, JSCValue* body, gpointer self);
    static gboolean answer(gpointer self);

    std::function<void()> m_didReceive;
    gtk::GObjectPointer<WebKitUserContentManager> m_manager;
    gtk::GObjectPointer<WebKitWebView> m_webView;
};

}
