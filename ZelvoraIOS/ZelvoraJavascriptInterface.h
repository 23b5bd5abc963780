#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <memory>
#include <optional>
#include <string>

namespace zelvora {

/// The bridge between a page and the SDK: the script that gives every page `window.ZelvoraSDKBridge`, and the dispatch
/// of what it posts.
class ZELVORA_API ZelvoraJavascriptInterface final {
public:
    /// The name that the message handler is registered under.
    static constexpr char const* handlerName = "zelvora";

    /// The script to run at document start in every frame, with a function for each custom action registered at this
    /// moment.
    [[nodiscard]] static std::string scriptSource();

    /// Does what a page's message asks for. A message under another name, and one that lacks what its action requires,
    /// is dropped. Main thread. Storage, the footer and custom actions are served before this returns; closing and
    /// answers to the page follow on the main queue, in order, and hold the controller or the web view until then.
    /// Either may be nullptr.
    static void handle(platform::WKScriptMessage const& message, std::shared_ptr<platform::WKWebView> const& webView,
        std::shared_ptr<platform::UIViewController> const& viewController);

private:
    static void sendCallback(std::shared_ptr<platform::WKWebView> const& webView, std::string const& callback,
        std::optional<platform::Value> const& value);

    friend class MessageDispatch;
};

}
