#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/fatalError.h"

#include <algorithm>
#include <utility>

namespace zelvora {

using platform::NSLayoutConstraint;
using platform::Platform;
using platform::WKNavigationActionPolicy;

namespace {

bool isWebScheme(std::string scheme)
{
    // By hand: tolower follows the locale that the host has set.
    std::ranges::transform(
        scheme, scheme.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return scheme == "http" || scheme == "https" || scheme == "about";
}

void handToSystem(platform::URL const& url)
{
    auto& application = Platform::current().application();
    if (application.canOpenURL(url)) {
        application.open(url);
        return;
    }
    ZelvoraLogger::e("Cannot open external scheme: " + url.absoluteString());
}

}

ZelvoraWebView::ZelvoraWebView(platform::CGRect frame, std::string urlString, bool allowsSwipeBack)
    : UIView(frame)
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
    // An answer on its way to the page may keep the web view a little longer.
    m_webView->setNavigationDelegate(nullptr);
}

void ZelvoraWebView::setupWebView()
{
    platform::WKWebViewConfiguration configuration;
    auto controller = Platform::current().makeUserContentController();
    controller->addScriptMessageHandler(*this, ZelvoraJavascriptInterface::handlerName);
    controller->addUserScript({
        .source = ZelvoraJavascriptInterface::scriptSource(),
        .injectionTime = platform::WKUserScriptInjectionTime::AtDocumentStart,
        .forMainFrameOnly = false,
    });
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
    auto const scheme = action.url ? action.url->scheme() : std::nullopt;
    if (!action.url || (scheme && isWebScheme(*scheme))) {
        decisionHandler(WKNavigationActionPolicy::Allow);
        return;
    }
    handToSystem(*action.url);
    decisionHandler(WKNavigationActionPolicy::Cancel);
}

void ZelvoraWebView::didStartProvisionalNavigation() { }

void ZelvoraWebView::didReceiveScriptMessage(platform::WKScriptMessage const& message)
{
    ZelvoraJavascriptInterface::handle(message, m_webView, parentViewController());
}

}
