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

/// The view that shows the site: a web view that fills it, with the bridge in every page. It loads its address at once
/// and has no way to change it. Main thread. Links to anything but web pages are handed to the system.
class ZELVORA_API ZelvoraWebView final
    : public platform::UIView
    , public platform::WKNavigationDelegate
    , public platform::WKScriptMessageHandler {
public:
    /// An address that forms no URL leaves the view blank. `allowsSwipeBack` turns the web view's own back and forward
    /// swipes on.
    ZelvoraWebView(platform::CGRect frame, std::string urlString, bool allowsSwipeBack);
    /// Not supported: stops the process.
    explicit ZelvoraWebView(platform::CGRect frame);
    /// Not supported: stops the process.
    explicit ZelvoraWebView(platform::NSCoder const& coder);
    ~ZelvoraWebView() override;

    /// The address of the page that is shown or being loaded.
    [[nodiscard]] std::optional<std::string> currentUrl() const;
    [[nodiscard]] bool canGoBack() const;
    void goBack();

    /// The screen that the page's calls act on. Held weakly; nobody for a view that the host placed itself.
    [[nodiscard]] std::shared_ptr<platform::UIViewController> parentViewController() const;
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
