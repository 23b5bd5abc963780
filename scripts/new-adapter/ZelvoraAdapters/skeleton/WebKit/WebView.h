#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::skeleton {

class WebView final : public platform::WKWebView {
public:
    WebView(platform::CGRect frame, platform::WKWebViewConfiguration const& /*configuration*/) : WKWebView(frame) { }

    // platform::WKWebView
    [[nodiscard]] platform::WKWebViewConfiguration const& configuration() const override
    {
        missing("WebView::configuration");
    }
    void setInspectable(bool) override { missing("WebView::setInspectable"); }
    void setNavigationDelegate(platform::WKNavigationDelegate*) override { missing("WebView::setNavigationDelegate"); }
    void setAllowsBackForwardNavigationGestures(bool) override
    {
        missing("WebView::setAllowsBackForwardNavigationGestures");
    }
    void load(platform::URLRequest) override { missing("WebView::load"); }
    [[nodiscard]] std::optional<platform::URL> url() const override { missing("WebView::url"); }
    [[nodiscard]] bool canGoBack() const override { missing("WebView::canGoBack"); }
    void goBack() override { missing("WebView::goBack"); }
    void evaluateJavaScript(std::string const&) override { missing("WebView::evaluateJavaScript"); }
    [[nodiscard]] std::unique_ptr<platform::NSKeyValueObservation> observeURL(
        std::function<void(platform::WKWebView&)>) override
    {
        missing("WebView::observeURL");
    }
};

}
