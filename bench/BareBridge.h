#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

#include <functional>

namespace zelvora::bench {

/// A web view with nothing of the SDK that makes the same calls of the engine: it hears a message, and later evaluates
/// an alert and a callback.
class BareBridge final {
public:
    explicit BareBridge(std::function<void()> didHear = nullptr);
    BareBridge(BareBridge const&) = delete;
    BareBridge& operator=(BareBridge const&) = delete;
    ~BareBridge();

    [[nodiscard]] WebKitWebView* webView() const { return m_webView.get(); }

private:
    static void hear(WebKitUserContentManager* manager, JSCValue* body, gpointer self);
    static gboolean answer(gpointer self);

    std::function<void()> m_didHear;
    gtk::GObjectPointer<WebKitUserContentManager> m_manager;
    gtk::GObjectPointer<WebKitWebView> m_webView;
};

}
