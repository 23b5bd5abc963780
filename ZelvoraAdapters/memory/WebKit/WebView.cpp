#include "ZelvoraAdapters/memory/WebKit/WebView.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

using platform::URL;
using Policy = platform::WKNavigationActionPolicy;

class WebView::URLObservation final : public platform::NSKeyValueObservation {
public:
    URLObservation(std::weak_ptr<Observers> observers, std::size_t number)
        : m_observers(std::move(observers))
        , m_number(number)
    {
    }
    ~URLObservation() override { end(); }
    URLObservation(URLObservation const&) = delete;
    URLObservation& operator=(URLObservation const&) = delete;

    // platform::NSKeyValueObservation
    void invalidate() override { end(); }

private:
    void end()
    {
        if (auto const observers = m_observers.lock())
            observers->erase(m_number);
    }

    std::weak_ptr<Observers> m_observers;
    std::size_t m_number;
};

WebView::WebView(Screen& screen, platform::DispatchQueue& mainQueue, platform::CGRect frame,
    platform::WKWebViewConfiguration configuration)
    : platform::WKWebView(frame)
    , m_screen(screen)
    , m_mainQueue(mainQueue)
    , m_initialFrame(frame)
    , m_configuration(std::move(configuration))
{
    record("makeWebView");
}

bool WebView::postMessage(std::string const& name, platform::Value body) const
{
    auto* const handler = userContentController().handler(name);
    if (handler)
        handler->didReceiveScriptMessage({ name, std::move(body) });
    return handler != nullptr;
}

void WebView::navigate(URL const& url)
{
    startPendingLoad();
    decide({ .kind = Navigation::Kind::Link, .url = url });
}

void WebView::navigateFrame(std::optional<URL> url)
{
    decide({ .kind = Navigation::Kind::Frame, .url = std::move(url) });
}

void WebView::setURL(std::optional<URL> url)
{
    if (m_url == url)
        return;
    m_url = std::move(url);
    // By number: a handler may end its own observation or another one.
    std::vector<std::size_t> numbers;
    for (auto const& [number, handler] : *m_observers)
        numbers.push_back(number);
    for (auto const number : numbers) {
        auto const found = m_observers->find(number);
        if (found == m_observers->end())
            continue;
        auto const handler = found->second;
        handler(*this);
    }
}

std::size_t WebView::observerCount() const
{
    return m_observers->size();
}

std::vector<std::string> WebView::calls() const
{
    auto const* asView = static_cast<platform::UIView const*>(this);
    return m_screen.calls().of({ asView, &userContentController() });
}

UserContentController& WebView::userContentController() const
{
    auto* const controller = dynamic_cast<UserContentController*>(m_configuration.userContentController.get());
    if (!controller)
        platform::fatalError("a web view was made without a content controller of the adapter in memory");
    return *controller;
}

void WebView::setInspectable(bool inspectable)
{
    record(inspectable ? "setInspectable true" : "setInspectable false");
    m_inspectable = inspectable;
}

void WebView::setNavigationDelegate(platform::WKNavigationDelegate* delegate)
{
    record("setNavigationDelegate");
    m_delegate = delegate;
}

void WebView::setAllowsBackForwardNavigationGestures(bool allows)
{
    record(allows ? "setAllowsBackForwardNavigationGestures true" : "setAllowsBackForwardNavigationGestures false");
    m_allowsGestures = allows;
}

void WebView::load(platform::URLRequest request)
{
    auto const& url = request.url;
    record("load " + url.absoluteString());
    m_pendingLoad = { Navigation::Kind::Load, url, m_pendingLoad ? m_pendingLoad->previous : m_url };
    m_mainQueue.async([weak = weak_from_this()] {
        if (auto const view = weak.lock())
            static_cast<WebView&>(*view).startPendingLoad();
    });
    m_loadedRequests.push_back(request);
    setURL(url);
}

void WebView::goBack()
{
    record("goBack");
    if (canGoBack())
        decide({ .kind = Navigation::Kind::Back, .url = m_history[m_place - 2] });
}

void WebView::evaluateJavaScript(std::string const& script)
{
    record("evaluateJavaScript");
    m_evaluated.push_back(script);
}

std::unique_ptr<platform::NSKeyValueObservation> WebView::observeURL(std::function<void(platform::WKWebView&)> handler)
{
    record("observeURL");
    m_observers->emplace(++m_observations, std::move(handler));
    return std::make_unique<URLObservation>(m_observers, m_observations);
}

void WebView::record(std::string call) const
{
    m_screen.calls().add(static_cast<platform::UIView const*>(this), std::move(call));
}

void WebView::decide(Navigation const& navigation)
{
    // The delegate may answer after this view is destroyed.
    auto decided = [weak = weak_from_this(), navigation](Policy policy) {
        if (auto const view = weak.lock())
            static_cast<WebView&>(*view).didDecide(navigation, policy);
    };
    if (m_delegate)
        m_delegate->decidePolicyFor({ navigation.url }, std::move(decided));
    else
        decided(Policy::Allow);
}

void WebView::didDecide(Navigation const& navigation, Policy policy)
{
    using Kind = Navigation::Kind;
    m_decisions.push_back({ { navigation.url }, policy });
    if (policy == Policy::Cancel) {
        if (navigation.kind == Kind::Load && m_url == navigation.url)
            setURL(navigation.previous);
    } else if (navigation.kind == Kind::Back) {
        --m_place;
        setURL(navigation.url);
    } else if (navigation.kind != Kind::Frame)
        commit(*navigation.url);
}

void WebView::startPendingLoad()
{
    if (auto const load = std::exchange(m_pendingLoad, std::nullopt))
        decide(*load);
}

void WebView::commit(URL const& url)
{
    if (m_delegate)
        m_delegate->didStartProvisionalNavigation();
    m_history.resize(m_place, url);
    m_history.push_back(url);
    ++m_place;
    setURL(url);
}

}
