#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "ZelvoraPlatform/WebKit/WKUserScript.h"

#include <string>

namespace zelvora::platform {

/// The scripts that are injected into the pages of the web views that share it, and the handlers of the pages'
/// messages. Main thread.
class ZELVORA_API WKUserContentController {
public:
    virtual ~WKUserContentController() = default;

    /// Provides `window.webkit.messageHandlers.NAME` in every frame. The handler is not owned: remove it before it is
    /// destroyed. Adding a name that has a handler stops the process.
    virtual void addScriptMessageHandler(WKScriptMessageHandler& handler, std::string const& name) = 0;
    /// The handler receives nothing after this returns, not even what was posted before. It may remove itself while it
    /// is called. An unknown name is ignored.
    virtual void removeScriptMessageHandler(std::string const& name) = 0;
    /// Applies to pages loaded from now on, in the order of the calls.
    virtual void addUserScript(WKUserScript script) = 0;
};

}
