#include "ZelvoraAdapters/uikit/WebKit/WebView.h"

#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"
#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/uikit/WebKit/UserContentController.h"

#include <utility>

typedef void (^DecisionHandler)(WKNavigationActionPolicy);

/// The delegate of a native web view, and the observer of its URL.
@interface ZLVWebViewObserver : NSObject <WKNavigationDelegate> {
@public
    // Reset by its destructor.
    zelvora::uikit::WebView* _view;
}
@end

@implementation ZLVWebViewObserver

- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler
{
    if (!_view) {
        decisionHandler(WKNavigationActionPolicyAllow);
        return;
    }
    DecisionHandler const decide = [decisionHandler copy];
    _view->decidePolicyFor({ zelvora::uikit::urlOf(navigationAction.request.URL) },
        [decide](auto policy) { decide(static_cast<WKNavigationActionPolicy>(policy)); });
}

- (void)webView:(WKWebView*)webView didStartProvisionalNavigation:(WKNavigation*)navigation
{
    if (_view)
        _view->didStartProvisionalNavigation();
}

- (void)webView:(WKWebView*)webView didCommitNavigation:(WKNavigation*)navigation
{
    if (_view)
        _view->didCommitNavigation();
}

- (void)webView:(WKWebView*)webView didFailProvisionalNavigation:(WKNavigation*)navigation withError:(NSError*)error
{
    if (_view)
        _view->didFailProvisionalNavigation(error);
}

- (void)webViewWebContentProcessDidTerminate:(WKWebView*)webView
{
    if (_view)
        _view->webProcessDidTerminate();
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context
{
    if (_view)
        _view->urlDidChange();
}

@end

namespace zelvora::uikit {

using platform::URL;
using platform::WKNavigationActionPolicy;

namespace {

NSString* const s_urlKeyPath = @"URL";

::WKWebView* makeNative(platform::CGRect frame, platform::WKWebViewConfiguration const& configuration)
{
    auto const& content = static_cast<UserContentController const&>(*configuration.userContentController);
    WKWebViewConfiguration* native = [[WKWebViewConfiguration alloc] init];
    native.userContentController = content.native();
    return [[::WKWebView alloc] initWithFrame:CGRectMake(frame.x, frame.y, frame.width, frame.height)
                                configuration:native];
}

}

struct WebView::Observer {
    // Empty once the observation has ended.
    std::function<void(platform::WKWebView&)> handler;
};

class WebView::URLObservation final : public platform::NSKeyValueObservation {
public:
    explicit URLObservation(std::shared_ptr<Observer> observer) : m_observer(std::move(observer)) { }
    URLObservation(URLObservation const&) = delete;
    URLObservation& operator=(URLObservation const&) = delete;
    ~URLObservation() override { m_observer->handler = nullptr; }

    // platform::NSKeyValueObservation
    void invalidate() override { m_observer->handler = nullptr; }

private:
    std::shared_ptr<Observer> m_observer;
};

WebView::WebView(platform::CGRect frame, platform::WKWebViewConfiguration configuration)
    : WebView(makeNative(frame, configuration), std::move(configuration))
{
    m_native.navigationDelegate = m_observer;
}

WebView::WebView(::WKWebView* native, platform::WKWebViewConfiguration configuration)
    : platform::WKWebView(std::make_unique<UIViewPeer>(*this, native))
    , m_configuration(std::move(configuration))
    , m_native(native)
    , m_observer([[ZLVWebViewObserver alloc] init])
{
    m_observer->_view = this;
}

WebView::~WebView()
{
    m_observer->_view = nullptr;
    if (m_isObserving)
        [m_native removeObserver:m_observer forKeyPath:s_urlKeyPath context:nullptr];
}

std::shared_ptr<platform::WKWebView> WebView::of(::WKWebView* native)
{
    if (auto owner = Bond<platform::UIView, ::UIView>::ownerOf(native)) {
        if (auto view = std::dynamic_pointer_cast<platform::WKWebView>(std::move(owner)))
            return view;
    }
    auto content = std::make_shared<UserContentController>(native.configuration.userContentController);
    return std::shared_ptr<WebView>(new WebView(native, { std::move(content) }));
}

void WebView::decidePolicyFor(
    platform::WKNavigationAction const& action, platform::WKNavigationDelegate::DecisionHandler decisionHandler)
{
    if (m_navigationDelegate)
        m_navigationDelegate->decidePolicyFor(action, std::move(decisionHandler));
    else
        decisionHandler(WKNavigationActionPolicy::Allow);
}

void WebView::didStartProvisionalNavigation()
{
    if (m_navigationDelegate)
        m_navigationDelegate->didStartProvisionalNavigation();
}

void WebView::didCommitNavigation()
{
    m_uncommittedRequest = nil;
}

void WebView::didFailProvisionalNavigation(NSError* error)
{
    // A request that is replaced by a newer one is cancelled.
    if (error.code != NSURLErrorCancelled)
        m_uncommittedRequest = nil;
}

void WebView::webProcessDidTerminate()
{
    constexpr int mostReloads = 3;
    constexpr std::chrono::seconds period { 30 };
    auto const now = std::chrono::steady_clock::now();
    if (m_reloads == 0 || now - m_firstReload > period) {
        m_firstReload = now;
        m_reloads = 0;
    }
    if (++m_reloads > mostReloads)
        return;
    if (m_uncommittedRequest)
        [m_native loadRequest:m_uncommittedRequest];
    else
        [m_native reload];
}

void WebView::urlDidChange()
{
    auto const current = url();
    auto const text = current ? current->absoluteString() : std::string();
    // The system also reports a URL that is set again.
    if (m_reportedURL == text)
        return;
    m_reportedURL = text;
    std::erase_if(m_observers, [](auto const& observer) { return !observer->handler; });
    // A handler may end observations and destroy this view.
    auto const told = m_observers;
    std::weak_ptr<platform::UIView> const alive = weak_from_this();
    for (auto const& observer : told) {
        if (auto const handler = observer->handler; handler && !alive.expired())
            handler(*this);
    }
}

void WebView::setInspectable(bool inspectable)
{
    m_native.inspectable = inspectable;
}

void WebView::setNavigationDelegate(platform::WKNavigationDelegate* delegate)
{
    m_navigationDelegate = delegate;
}

void WebView::setAllowsBackForwardNavigationGestures(bool allows)
{
    m_native.allowsBackForwardNavigationGestures = allows;
}

void WebView::load(platform::URLRequest request)
{
    // Without one the view stays blank.
    m_uncommittedRequest = nativeRequest(request);
    if (m_uncommittedRequest)
        [m_native loadRequest:m_uncommittedRequest];
}

std::optional<URL> WebView::url() const
{
    return urlOf(m_native.URL);
}

bool WebView::canGoBack() const
{
    return m_native.canGoBack;
}

void WebView::goBack()
{
    [m_native goBack];
}

void WebView::evaluateJavaScript(std::string const& script)
{
    if (NSString* text = stringOf(script))
        [m_native evaluateJavaScript:text completionHandler:nil];
}

std::unique_ptr<platform::NSKeyValueObservation> WebView::observeURL(std::function<void(platform::WKWebView&)> handler)
{
    if (!std::exchange(m_isObserving, true)) {
        auto const current = url();
        m_reportedURL = current ? current->absoluteString() : "";
        [m_native addObserver:m_observer forKeyPath:s_urlKeyPath options:NSKeyValueObservingOptionNew context:nullptr];
    }
    auto observer = std::make_shared<Observer>(std::move(handler));
    m_observers.push_back(observer);
    return std::make_unique<URLObservation>(std::move(observer));
}

}
