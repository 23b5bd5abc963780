#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"

#include <webkit/webkit.h>

namespace zelvora::gtk {

/// The engine's view without anything in it: no script, no handler, no page.
[[nodiscard]] GObjectPointer<WebKitWebView> makeEngineView(
    WebKitUserContentManager* manager, WebsiteSession const& session);

/// A view whose web process runs before there is a page for it. No page is loaded, so nothing goes over the network and
/// the first page's history begins with itself. Main thread.
[[nodiscard]] GObjectPointer<WebKitWebView> makeViewAhead(WebsiteSession const& session);

}
