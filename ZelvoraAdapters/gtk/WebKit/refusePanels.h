#pragma once

#include <webkit/webkit.h>

namespace zelvora::gtk {

/// Makes a page act as on the phone without a UI delegate: script dialogs are answered as if the user dismissed them, a
/// server that asks for a login is answered without one, so that its page is shown, and a page can neither print nor
/// fill the screen. It holds for as long as the engine's view lives. That may be longer than the web view that made it,
/// because a running script keeps the engine's view; a dialog that the engine then opened for it would keep both
/// forever.
void refusePanels(WebKitWebView* view);

}
