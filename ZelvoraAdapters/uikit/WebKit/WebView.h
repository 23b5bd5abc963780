#pragma once

#include "ZelvoraPlatform/WebKit/WKWebView.h"

#import <WebKit/WebKit.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

@class ZLVWebViewObserver;

namespace zelvora::uikit {

/// The system's web view. The SDK's view keeps the native one and takes back what it gave to it when it ends: the host
/// may keep the native view.
class WebView final : public platform::WKWebView {
public:
    WebView(platform::CGRect frame, platform::WKWebViewConfiguration configuration);
    WebView(WebView const&) = delete;
    WebView& operator=(WebView const&) = delete;
    ~WebView() override;

    /// The view that a native one stands for; a new one for a native view of the host's, whose delegate stays. Not nil.
    [[nodiscard]] static std::shared_ptr<platform::WKWebView> of(::WKWebView* native);

    /// Called by the native side.
    void decidePolicyFor(
        platform::WKNavigationAction const& action, platform::WKNavigationDelegate::DecisionHandler decisionHandler);
    void didStartProvisionalNavigation();
    void didCommitNavigation();
    void didFailProvisionalNavigation(NSError* error);
    void webProcessDidTerminate();
    void urlDidChange();

    // platform::WKWebView
    [[nodiscard]] platform::WKWebViewConfiguration const& configuration() const override { return m_configuration; }
    void setInspectable(bool inspectable) override;
    void setNavigationDelegate(platform::WKNavigationDelegate* delegate) override;
    void setAllowsBackForwardNavigationGestures(bool allows) override;
    void load(platform::URLRequest request) override;
    [[nodiscard]] std::optional<platform::URL> url() const override;
    [[nodiscard]] bool canGoBack() const override;
    void goBack() override;
    void evaluateJavaScript(std::string const& script) override;
    [[nodiscard]] std::unique_ptr<platform::NSKeyValueObservation> observeURL(
        std::function<void(platform::WKWebView&)> handler) override;

private:
    class URLObservation;
    struct Observer;

    WebView(::WKWebView* native, platform::WKWebViewConfiguration configuration);

    platform::WKWebViewConfiguration m_configuration;
    ::WKWebView* m_native;
    // The native view's delegate and observer.
    ZLVWebViewObserver* m_observer;
    // Reset by the delegate, before it is destroyed.
    platform::WKNavigationDelegate* m_navigationDelegate = nullptr;
    // Until there is a page, which the system can reload by itself.
    NSURLRequest* m_uncommittedRequest = nil;
    std::string m_reportedURL;
    std::vector<std::shared_ptr<Observer>> m_observers;
    bool m_isObserving = false;
    std::chrono::steady_clock::time_point m_firstReload;
    int m_reloads = 0;
};

}
