#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/internal/BridgeScript.h"
#include "ZelvoraIOS/internal/NavigationPolicy.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora {

using platform::NSLayoutConstraint;
using platform::Platform;

ZelvoraWebView::ZelvoraWebView(platform::CGRect frame, std::string urlString, bool allowsSwipeBack)
    : UIView(frame, "ZelvoraWebView")
    , m_urlString(std::move(urlString))
    , m_allowsSwipeBack(allowsSwipeBack)
{
    setupWebView();
}

ZelvoraWebView::ZelvoraWebView(platform::CGRect frame) : UIView(frame)
{
    platform::fatalError("Use of unimplemented initializer 'init(frame:)' for class 'ZelvoraIOS.ZelvoraWebView'");
}

ZelvoraWebView::ZelvoraWebView(platform::NSCoder const&)
{
    platform::fatalError("init(coder:) has not been implemented");
}

ZelvoraWebView::~ZelvoraWebView()
{
    if (m_urlObservation)
        m_urlObservation->invalidate();
    m_webView->configuration().userContentController->removeScriptMessageHandler(
        ZelvoraJavascriptInterface::handlerName);
    // A queued answer to the page may keep the system's web view alive a little longer than this view.
    m_webView->setNavigationDelegate(nullptr);
}

void ZelvoraWebView::setupWebView()
{
    platform::WKWebViewConfiguration configuration;
    auto controller = Platform::current().makeUserContentController();
    controller->addScriptMessageHandler(*this, ZelvoraJavascriptInterface::handlerName);
    controller->addUserScript(internal::bridgeScript());
    configuration.userContentController = std::move(controller);

    m_webView = Platform::current().makeWebView(bounds(), std::move(configuration));
    m_webView->setInspectable(true);
    m_webView->setNavigationDelegate(this);
    m_webView->setAllowsBackForwardNavigationGestures(m_allowsSwipeBack);
    pinWebView();
    loadEntryPage();
    observeNavigation();
}

void ZelvoraWebView::pinWebView()
{
    m_webView->setTranslatesAutoresizingMaskIntoConstraints(false);
    addSubview(m_webView);
    NSLayoutConstraint::activate({
        m_webView->topAnchor().constraintEqualTo(topAnchor()),
        m_webView->leadingAnchor().constraintEqualTo(leadingAnchor()),
        m_webView->trailingAnchor().constraintEqualTo(trailingAnchor()),
        m_webView->bottomAnchor().constraintEqualTo(bottomAnchor()),
    });
}

void ZelvoraWebView::loadEntryPage()
{
    if (auto url = platform::URL::parse(m_urlString))
        m_webView->load({ .url = *std::move(url) });
}

void ZelvoraWebView::observeNavigation()
{
    m_urlObservation = m_webView->observeURL([](platform::WKWebView const& webView) {
        auto const url = webView.url();
        if (!url)
            return;
        if (auto const onPageNavigation = ZelvoraSDK::shared().onPageNavigation())
            onPageNavigation(url->absoluteString());
    });
}

std::optional<std::string> ZelvoraWebView::currentUrl() const
{
    return m_webView->url().transform([](platform::URL const& url) { return url.absoluteString(); });
}

bool ZelvoraWebView::canGoBack() const
{
    return m_webView->canGoBack();
}

void ZelvoraWebView::goBack()
{
    m_webView->goBack();
}

std::shared_ptr<platform::UIViewController> ZelvoraWebView::parentViewController() const
{
    return m_parentViewController.lock();
}

void ZelvoraWebView::setParentViewController(std::shared_ptr<platform::UIViewController> const& controller)
{
    m_parentViewController = controller;
}

void ZelvoraWebView::decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler)
{
    decisionHandler(internal::decidePolicyFor(action));
}

void ZelvoraWebView::didStartProvisionalNavigation() { }

void ZelvoraWebView::didReceiveScriptMessage(platform::WKScriptMessage const& message)
{
    ZelvoraJavascriptInterface::handle(message, m_webView, parentViewController());
}

}
