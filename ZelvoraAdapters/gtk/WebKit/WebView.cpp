#include "ZelvoraAdapters/gtk/WebKit/WebView.h"

#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/gtk/WebKit/FileChooser.h"
#include "ZelvoraAdapters/gtk/WebKit/UserContentController.h"
#include "ZelvoraAdapters/gtk/WebKit/ViewAhead.h"
#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"
#include "ZelvoraAdapters/gtk/WebKit/refusePanels.h"

#include <utility>

namespace zelvora::gtk {

using platform::URL;
using platform::WKNavigationActionPolicy;

namespace {

GObjectPointer<WebKitWebView> engineViewFor(
    platform::WKWebViewConfiguration const& configuration, WebsiteSession const& session)
{
    auto& content = static_cast<UserContentController&>(*configuration.userContentController);
    auto ahead = content.takeViewAhead();
    return ahead ? std::move(ahead) : makeEngineView(content.manager(), session);
}

WebKitURIRequest* requestOf(WebKitPolicyDecision* decision)
{
    return webkit_navigation_action_get_request(
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision)));
}

platform::WKNavigationAction actionOf(WebKitPolicyDecision* decision)
{
    auto const* url = webkit_uri_request_get_uri(requestOf(decision));
    return { url ? URL::verbatim(url) : std::nullopt };
}

bool isPosted(WebKitPolicyDecision* decision)
{
    return g_strcmp0(webkit_uri_request_get_http_method(requestOf(decision)), "POST") == 0;
}

// 0 for a page that no server answered with.
guint statusOf(WebKitWebView* view)
{
    auto* const resource = webkit_web_view_get_main_resource(view);
    auto* const response = resource ? webkit_web_resource_get_response(resource) : nullptr;
    return response ? webkit_uri_response_get_status_code(response) : 0;
}

void forget(GWeakRef* reference)
{
    g_weak_ref_clear(reference);
    delete reference;
}

std::unique_ptr<GWeakRef, Releasing<forget>> watch(WebKitWebView* view)
{
    // A weak reference must stay where it was made.
    std::unique_ptr<GWeakRef, Releasing<forget>> reference(new GWeakRef);
    g_weak_ref_init(reference.get(), view);
    return reference;
}

// A script that is still running keeps the engine's view, and one that never ends would keep it forever.
void endLater(WebKitWebView* view)
{
    constexpr guint patience = 10;
    runLater(g_timeout_source_new_seconds(patience), [watched = watch(view)] {
        if (auto const kept = adopt(WEBKIT_WEB_VIEW(g_weak_ref_get(watched.get()))))
            webkit_web_view_terminate_web_process(kept.get());
    });
}

}

struct WebView::Observer {
    // Empty once the observation has ended.
    std::function<void(WKWebView&)> handler;
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

WebView::WebView(platform::CGRect frame, platform::WKWebViewConfiguration const& configuration, WebsiteSession& session)
    : WebView(frame, configuration, session, engineViewFor(configuration, session))
{
}

WebView::WebView(platform::CGRect frame, platform::WKWebViewConfiguration configuration, WebsiteSession& session,
    GObjectPointer<WebKitWebView> const& view)
    : WKWebView(std::make_unique<UIViewPeer>(*this, frame, GTK_WIDGET(view.get()), UIViewPeer::Sizing::None))
    , m_configuration(std::move(configuration))
    , m_session(session)
    , m_view(view.get())
{
    connectSignals();
    refusePanels(m_view);
}

WebView::~WebView()
{
    g_signal_handlers_disconnect_by_data(m_view, this);
    endLater(m_view);
}

void WebView::setInspectable(bool inspectable)
{
    webkit_settings_set_enable_developer_extras(webkit_web_view_get_settings(m_view), inspectable);
}

void WebView::setAllowsBackForwardNavigationGestures(bool allows)
{
    webkit_settings_set_enable_back_forward_navigation_gestures(webkit_web_view_get_settings(m_view), allows);
}

void WebView::load(platform::URLRequest request)
{
    m_session.renewTrust();
    m_uncommittedRequest = adopt(webkit_uri_request_new(request.url.absoluteString().c_str()));
    auto* headers = webkit_uri_request_get_http_headers(m_uncommittedRequest.get());
    for (auto const& [name, value] : request.httpHeaderFields) {
        if (headers)
            soup_message_headers_replace(headers, name.c_str(), value.c_str());
    }
    webkit_web_view_load_request(m_view, m_uncommittedRequest.get());
}

std::optional<URL> WebView::url() const
{
    auto const* text = webkit_web_view_get_uri(m_view);
    return text ? URL::verbatim(text) : std::nullopt;
}

bool WebView::canGoBack() const
{
    return webkit_web_view_can_go_back(m_view);
}

void WebView::goBack()
{
    webkit_web_view_go_back(m_view);
}

void WebView::evaluateJavaScript(std::string const& script)
{
    webkit_web_view_evaluate_javascript(
        m_view, script.data(), static_cast<gssize>(script.size()), nullptr, nullptr, nullptr, nullptr, nullptr);
}

std::unique_ptr<platform::NSKeyValueObservation> WebView::observeURL(std::function<void(WKWebView&)> handler)
{
    auto observer = std::make_shared<Observer>(std::move(handler));
    m_observers.push_back(observer);
    return std::make_unique<URLObservation>(std::move(observer));
}

void WebView::connectSignals()
{
    g_signal_connect(m_view, "decide-policy",
        G_CALLBACK(+[](WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                        WebView* self) -> gboolean { return self->decidePolicy(decision, type); }),
        this);
    g_signal_connect_swapped(m_view, "notify::uri", G_CALLBACK(+[](WebView* self) { self->urlDidChange(); }), this);
    g_signal_connect(m_view, "load-changed",
        G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, WebView* self) { self->loadDidChange(event); }), this);
    g_signal_connect(m_view, "load-failed",
        G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent, char const*, GError const* error, WebView* self) -> gboolean {
            self->loadDidFail(error);
            return FALSE;
        }),
        this);
    g_signal_connect(m_view, "run-file-chooser",
        G_CALLBACK(+[](WebKitWebView*, WebKitFileChooserRequest* request, WebView* self) -> gboolean {
            self->runFileChooser(request);
            return TRUE;
        }),
        this);
    g_signal_connect_swapped(
        m_view, "web-process-terminated", G_CALLBACK(+[](WebView* self) { self->webProcessDidTerminate(); }), this);
    g_signal_connect(m_view, "load-failed-with-tls-errors",
        G_CALLBACK(+[](WebKitWebView*, char const* url, GTlsCertificate* certificate, GTlsCertificateFlags,
                        WebView* self) -> gboolean { return self->didFailWithTLSErrors(url, certificate); }),
        this);
}

bool WebView::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type)
{
    if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE)
        return false;
    // The engine posts a form again when it loads a page again, so that answer is new, and to ask once more might order
    // once more.
    m_mayBeOld = m_mayBeOld && !isPosted(decision);
    if (!m_navigationDelegate)
        return false;
    // Shared because the completion handler is moved, and the engine may have released its decision by then.
    std::shared_ptr<WebKitPolicyDecision> const held(retain(decision));
    m_navigationDelegate->decidePolicyFor(actionOf(decision), [held](WKNavigationActionPolicy policy) {
        if (policy == WKNavigationActionPolicy::Allow)
            webkit_policy_decision_use(held.get());
        else
            webkit_policy_decision_ignore(held.get());
    });
    return true;
}

void WebView::loadDidChange(WebKitLoadEvent event)
{
    // The page that asked for a file has been replaced.
    if (event == WEBKIT_LOAD_COMMITTED) {
        m_fileChooser.reset();
        m_uncommittedRequest.reset();
        replaceOldError();
    }
    if (event == WEBKIT_LOAD_STARTED && m_navigationDelegate)
        m_navigationDelegate->didStartProvisionalNavigation();
}

void WebView::replaceOldError()
{
    constexpr guint firstErrorStatus = 400;
    if (std::exchange(m_mayBeOld, false) && statusOf(m_view) >= firstErrorStatus)
        webkit_web_view_reload_bypass_cache(m_view);
}

void WebView::loadDidFail(GError const* error)
{
    // A request that is replaced by a newer one is cancelled.
    if (!g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED))
        m_uncommittedRequest.reset();
}

void WebView::urlDidChange()
{
    auto const* text = webkit_web_view_get_uri(m_view);
    if (m_reportedURL == (text ? text : ""))
        return;
    m_reportedURL = text ? text : "";
    std::erase_if(m_observers, [](auto const& observer) { return !observer->handler; });
    // A handler may end observations and destroy this view.
    auto const told = m_observers;
    std::weak_ptr<UIView> const alive = weak_from_this();
    for (auto const& observer : told) {
        if (auto const handler = observer->handler; handler && !alive.expired())
            handler(*this);
    }
}

void WebView::runFileChooser(WebKitFileChooserRequest* request)
{
    m_fileChooser = std::make_unique<FileChooser>(m_view, request);
}

void WebView::webProcessDidTerminate()
{
    m_fileChooser.reset();
    constexpr int mostReloads = 3;
    constexpr gint64 period = gint64 { 30 } * G_USEC_PER_SEC;
    auto const now = g_get_monotonic_time();
    if (now - m_firstReload > period) {
        m_firstReload = now;
        m_reloads = 0;
    }
    if (++m_reloads <= mostReloads) {
        m_session.renewTrust();
        // The engine may give a new view a process that is about to die.
        if (m_uncommittedRequest) {
            webkit_web_view_load_request(m_view, m_uncommittedRequest.get());
        } else {
            m_mayBeOld = true;
            webkit_web_view_reload(m_view);
        }
        return;
    }
    g_log(
        "Zelvora", G_LOG_LEVEL_WARNING, "The web process died %d times in a row; the page is not reloaded", m_reloads);
}

bool WebView::didFailWithTLSErrors(char const* url, GTlsCertificate* certificate)
{
    if (!m_session.trustIfSigned(certificate, url))
        return false;
    webkit_web_view_load_uri(m_view, url);
    return true;
}

}
