#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::gtk {

class FileChooser;
class UIViewPeer;
class WebsiteSession;

/// The engine's web view. As on the phone without a UI delegate, a page shows no panel but the file chooser, which goes
/// when the page goes, and it can neither print nor open a window; the navigation delegate is still asked about a new
/// window, as about any navigation. A page is reloaded when its web process dies, unless that keeps happening. A page
/// does not outlive the view by more than the scripts that are running, and by no more than a few seconds.
class WebView final : public platform::WKWebView {
public:
    /// The session outlives the view.
    WebView(platform::CGRect frame, platform::WKWebViewConfiguration const& configuration, WebsiteSession& session);
    ~WebView() override;

    [[nodiscard]] WebKitWebView* webKitWebView() const { return m_view; }

    // platform::WKWebView
    [[nodiscard]] platform::WKWebViewConfiguration const& configuration() const override { return m_configuration; }
    void setInspectable(bool inspectable) override;
    void setNavigationDelegate(platform::WKNavigationDelegate* delegate) override { m_navigationDelegate = delegate; }
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

    WebView(platform::CGRect frame, platform::WKWebViewConfiguration configuration, WebsiteSession& session,
        GObjectPointer<WebKitWebView> const& view);

    void connectSignals();
    [[nodiscard]] bool decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void loadDidChange(WebKitLoadEvent event);
    void loadDidFail(GError const* error);
    void urlDidChange();
    void runFileChooser(WebKitFileChooserRequest* request);
    void webProcessDidTerminate();
    /// Where a process has died, the engine shows the page again as it has kept it, be it an error of an earlier visit.
    void replaceOldError();
    [[nodiscard]] bool didFailWithTLSErrors(char const* url, GTlsCertificate* certificate);

    platform::WKWebViewConfiguration m_configuration;
    WebsiteSession& m_session;
    // Owned by the peer, as its content.
    WebKitWebView* m_view;
    // Reset by the delegate, before it is destroyed.
    platform::WKNavigationDelegate* m_navigationDelegate = nullptr;
    // Until there is a page, which the engine can reload by itself.
    GObjectPointer<WebKitURIRequest> m_uncommittedRequest;
    std::string m_reportedURL;
    std::vector<std::shared_ptr<Observer>> m_observers;
    std::unique_ptr<FileChooser> m_fileChooser;
    bool m_mayBeOld = false;
    gint64 m_firstReload = 0;
    int m_reloads = 0;
};

}
