#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "ZelvoraPlatform/WebKit/WKUserScript.h"

#include <string>

namespace zelvora::platform {

/// What is injected into the pages of the web views that share it, and who hears them. Main thread.
class ZELVORA_API WKUserContentController {
public:
    virtual ~WKUserContentController() = default;

    /// Makes `window.webkit.messageHandlers.NAME` in every frame. The handler is not owned: it removes itself before it
    /// is destroyed. A name may be added once.
    virtual void addScriptMessageHandler(WKScriptMessageHandler& handler, std::string const& name) = 0;
    /// The handler hears nothing after this returns, also not what was posted before.
    virtual void removeScriptMessageHandler(std::string const& name) = 0;
    virtual void addUserScript(WKUserScript script) = 0;
};

}
