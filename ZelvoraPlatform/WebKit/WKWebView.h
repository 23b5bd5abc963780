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

/// The system's web view, which is itself a view. Main thread. It answers script dialogs at once with no panel, as the
/// phone's does without a UI delegate, and reloads the page when its web process died, unless it dies again and again.
class ZELVORA_API WKWebView : public UIView {
public:
    [[nodiscard]] virtual WKWebViewConfiguration const& configuration() const = 0;
    virtual void setInspectable(bool inspectable) = 0;
    /// Not owned; nullptr, or reset before the delegate is destroyed.
    virtual void setNavigationDelegate(WKNavigationDelegate* delegate) = 0;
    virtual void setAllowsBackForwardNavigationGestures(bool allows) = 0;

    virtual void load(URLRequest request) = 0;
    /// Of the page that is shown or being loaded.
    [[nodiscard]] virtual std::optional<URL> url() const = 0;
    [[nodiscard]] virtual bool canGoBack() const = 0;
    virtual void goBack() = 0;

    /// In the main frame, later, in the order of the calls. Results and errors are not reported.
    virtual void evaluateJavaScript(std::string const& script) = 0;

    /// Calls the handler after every change of `url`, until the observation is invalidated or destroyed.
    [[nodiscard]] virtual std::unique_ptr<NSKeyValueObservation> observeURL(
        std::function<void(WKWebView&)> handler) = 0;

protected:
    using UIView::UIView;
};

}
