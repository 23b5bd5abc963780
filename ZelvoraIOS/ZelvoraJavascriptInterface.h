#pragma once

#include "ZelvoraPlatform/Export.h"

#include <memory>
#include <string>

namespace zelvora {

namespace platform {
class UIViewController;
class WKWebView;
struct WKScriptMessage;
}

/// The bridge between a page and the SDK: the script that gives every page `window.ZelvoraSDKBridge`, and the handling
/// of the messages that it posts. `ZelvoraWebView` uses both; a host needs them only for a web view of its own:
///
///     controller->addScriptMessageHandler(handler, ZelvoraJavascriptInterface::handlerName);
///     controller->addUserScript({ .source = ZelvoraJavascriptInterface::scriptSource() });
class ZELVORA_API ZelvoraJavascriptInterface final {
public:
    /// The name under which the script posts its messages.
    static constexpr char const* handlerName = "zelvora";

    /// The script, to be run at document start in every frame. It has a function for each custom action that is
    /// registered at this moment. Any thread.
    [[nodiscard]] static std::string scriptSource();

    /// Carries out a page's message. Untrusted input: a message under another name, or without a required argument of
    /// the right type, is ignored. Main thread.
    ///
    /// Storage, footer and custom actions are done when this returns. Closing the screen and answers to the page follow
    /// on the main queue, in order, and keep the view controller or the web view alive until then. Either may be
    /// nullptr: then nothing is closed or answered.
    static void handle(platform::WKScriptMessage const& message, std::shared_ptr<platform::WKWebView> const& webView,
        std::shared_ptr<platform::UIViewController> const& viewController);
};

}
