#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/NSKeyValueObservation.h"
#include "ZelvoraPlatform/Foundation/URL.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/WebKit/WKNavigationDelegate.h"
#include "ZelvoraPlatform/WebKit/WKWebViewConfiguration.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::platform {

/// The system's web view, which is itself a view. Main thread. It answers a page's dialogs at once without showing
/// them, as the phone's does without a UI delegate. If its web process dies it reloads the page, unless that happens
/// repeatedly.
class ZELVORA_API WKWebView : public UIView {
public:
    /// What the view was made with.
    [[nodiscard]] virtual WKWebViewConfiguration const& configuration() const = 0;
    /// Whether the system lets developer tools inspect the pages.
    virtual void setInspectable(bool inspectable) = 0;
    /// Not owned: reset it to nullptr before it is destroyed. Without a delegate every navigation is allowed.
    virtual void setNavigationDelegate(WKNavigationDelegate* delegate) = 0;
    /// Whether the system's own swipes go through the history.
    virtual void setAllowsBackForwardNavigationGestures(bool allows) = 0;

    /// Loads the URL with the header fields, after asking the delegate. Other members of the request may be ignored.
    virtual void load(URLRequest request) = 0;
    /// The address of the page that is shown or being loaded, verbatim; absent before the first.
    [[nodiscard]] virtual std::optional<URL> url() const = 0;
    /// Whether the history has a page before the one that is shown.
    [[nodiscard]] virtual bool canGoBack() const = 0;
    /// Does nothing if `canGoBack` is false.
    virtual void goBack() = 0;

    /// Runs the script in the main frame, asynchronously, in the order of the calls. Neither results nor errors are
    /// reported.
    virtual void evaluateJavaScript(std::string const& script) = 0;

    /// Calls the handler after every change of `url`, until the observation is invalidated or destroyed. The handler
    /// may end any observation.
    [[nodiscard]] virtual std::unique_ptr<NSKeyValueObservation> observeURL(
        std::function<void(WKWebView&)> handler) = 0;

protected:
    using UIView::UIView;
};

}
