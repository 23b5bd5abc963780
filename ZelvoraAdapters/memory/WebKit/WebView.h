#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::memory {

class Screen;
class UserContentController;

/// A web view without an engine: it records its calls, and the test acts as the page. Main thread.
///
/// `load` changes the URL at once and asks the delegate when the main queue runs; if the delegate refuses, the former
/// URL is restored. A call that changes the URL calls the observers before it returns.
class ZELVORA_API WebView final : public platform::WKWebView {
public:
    /// What the delegate decided about an action.
    struct Decision {
        /// The question and the answer. Without a delegate, the answer is to allow.
        /// @{
        platform::WKNavigationAction action;
        platform::WKNavigationActionPolicy policy = platform::WKNavigationActionPolicy::Cancel;
        /// @}

        bool operator==(Decision const&) const = default;
    };

    /// Made by `Platform::makeWebView`. The screen and the queue must outlive it.
    WebView(Screen& screen, platform::DispatchQueue& mainQueue, platform::CGRect frame,
        platform::WKWebViewConfiguration configuration);

    /// Posts to `window.webkit.messageHandlers.NAME`, as the page does. Returns whether there is a handler.
    bool postMessage(std::string const& name, platform::Value body) const;
    /// Goes to another URL, as the page or its user does: the delegate is asked, and if it allows, the URL joins the
    /// history.
    void navigate(platform::URL const& url);
    /// Makes a navigation that leaves this view's URL as it is, such as a frame's, or one without a URL.
    void navigateFrame(std::optional<platform::URL> url);
    /// Changes the URL in place, as a page's script does. If it is absent, the page has no URL.
    void setURL(std::optional<platform::URL> url);

    /// The evaluated scripts, in order.
    [[nodiscard]] std::vector<std::string> const& evaluated() const { return m_evaluated; }
    /// What `load` was called with, in order, even if the delegate refused it.
    [[nodiscard]] std::vector<platform::URLRequest> const& loadedRequests() const { return m_loadedRequests; }
    /// Every navigation that was decided on, in the order of the answers.
    [[nodiscard]] std::vector<Decision> const& decisions() const { return m_decisions; }
    /// The frame that the view was made with.
    [[nodiscard]] platform::CGRect initialFrame() const { return m_initialFrame; }
    /// As it was set last; at first false or nullptr.
    /// @{
    [[nodiscard]] bool isInspectable() const { return m_inspectable; }
    [[nodiscard]] bool allowsBackForwardNavigationGestures() const { return m_allowsGestures; }
    [[nodiscard]] platform::WKNavigationDelegate* navigationDelegate() const { return m_delegate; }
    /// @}
    /// How many observations of the URL have not ended.
    [[nodiscard]] std::size_t observerCount() const;
    /// The calls to the content controller, this view and its peer, in one common order: "makeWebView", "setInspectable
    /// true", "setNavigationDelegate", "setAllowsBackForwardNavigationGestures false", "load URL", "observeURL",
    /// "goBack", "evaluateJavaScript", and those that the other two document.
    [[nodiscard]] std::vector<std::string> calls() const;
    /// Where the SDK's scripts and message handlers are. One of another adapter stops the process.
    [[nodiscard]] UserContentController& userContentController() const;

    // platform::WKWebView
    [[nodiscard]] platform::WKWebViewConfiguration const& configuration() const override { return m_configuration; }
    void setInspectable(bool inspectable) override;
    void setNavigationDelegate(platform::WKNavigationDelegate* delegate) override;
    void setAllowsBackForwardNavigationGestures(bool allows) override;
    void load(platform::URLRequest request) override;
    [[nodiscard]] std::optional<platform::URL> url() const override { return m_url; }
    [[nodiscard]] bool canGoBack() const override { return m_place > 1; }
    void goBack() override;
    void evaluateJavaScript(std::string const& script) override;
    /// Calls the handler whenever the URL has changed, after those that were added before it and before the call that
    /// changed the URL returns.
    [[nodiscard]] std::unique_ptr<platform::NSKeyValueObservation> observeURL(
        std::function<void(platform::WKWebView&)> handler) override;

private:
    class URLObservation;
    using Observers = std::map<std::size_t, std::function<void(platform::WKWebView&)>>;
    struct Navigation {
        enum class Kind : std::uint8_t { Load, Link, Back, Frame };

        Kind kind = Kind::Load;
        std::optional<platform::URL> url {};
        /// What a refused load restores.
        std::optional<platform::URL> previous {};
    };

    void record(std::string call) const;
    void decide(Navigation const& navigation);
    void didDecide(Navigation const& navigation, platform::WKNavigationActionPolicy policy);
    void startPendingLoad();
    void commit(platform::URL const& url);

    Screen& m_screen;
    platform::DispatchQueue& m_mainQueue;
    platform::CGRect m_initialFrame;
    platform::WKWebViewConfiguration m_configuration;
    // Reset by the delegate before it is destroyed.
    platform::WKNavigationDelegate* m_delegate = nullptr;
    bool m_inspectable = false;
    bool m_allowsGestures = false;
    std::optional<platform::URL> m_url;
    std::optional<Navigation> m_pendingLoad;
    std::vector<platform::URL> m_history;
    // How many entries of the history lead to the page shown, itself included.
    std::size_t m_place = 0;
    std::vector<std::string> m_evaluated;
    std::vector<platform::URLRequest> m_loadedRequests;
    std::vector<Decision> m_decisions;
    // Shared with the observations, which may outlive the view.
    std::shared_ptr<Observers> m_observers = std::make_shared<Observers>();
    std::size_t m_observations = 0;
};

}
