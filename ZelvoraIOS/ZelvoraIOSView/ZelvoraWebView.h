#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/NSCoder.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <memory>
#include <optional>
#include <string>

namespace zelvora {

/// A view that shows the site: it is filled by a web view of the system's, with the bridge in every page and frame. It
/// loads its address when it is created, and only pages can navigate away from that. Links of other schemes than http,
/// https and about are opened by the system. Every change of the page's URL is passed to
/// `ZelvoraSDK::onPageNavigation`. Main thread.
class ZELVORA_API ZelvoraWebView final
    : public platform::UIView
    , public platform::WKNavigationDelegate
    , public platform::WKScriptMessageHandler {
public:
    /// The view stays blank if the address is not a URL. `allowsSwipeBack` enables the system's own swipes back and
    /// forward through the page's history.
    ZelvoraWebView(platform::CGRect frame, std::string urlString, bool allowsSwipeBack);
    /// Not supported: stops the process.
    explicit ZelvoraWebView(platform::CGRect frame);
    /// Not supported: stops the process.
    explicit ZelvoraWebView(platform::NSCoder const& coder);
    ~ZelvoraWebView() override;

    /// The address of the page that is shown or being loaded; absent if there is none.
    [[nodiscard]] std::optional<std::string> currentUrl() const;
    /// Whether the page's history has a step back.
    [[nodiscard]] bool canGoBack() const;
    /// Takes that step, if there is one.
    void goBack();

    /// The screen that the page's "close" dismisses; nullptr if the host placed the view itself. A weak reference.
    [[nodiscard]] std::shared_ptr<platform::UIViewController> parentViewController() const;
    /// See `parentViewController`.
    void setParentViewController(std::shared_ptr<platform::UIViewController> const& controller);

    // platform::WKNavigationDelegate
    void decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler) override;
    void didStartProvisionalNavigation() override;

    // platform::WKScriptMessageHandler
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override;

private:
    void setupWebView();
    void pinWebView();
    void loadEntryPage();
    void observeNavigation();

    std::shared_ptr<platform::WKWebView> m_webView;
    std::string m_urlString;
    bool m_allowsSwipeBack = false;
    std::unique_ptr<platform::NSKeyValueObservation> m_urlObservation;
    std::weak_ptr<platform::UIViewController> m_parentViewController;
};

}
