#pragma once

#include "ZelvoraIOS/ZelvoraSDKError.h"
#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace zelvora {

class ZelvoraWebView;

/// The one object that a host app talks to: it is configured once and asked to show the shopping site. Called on the
/// main thread, where nothing else is said. A platform must have been installed before `shared` is first used.
class ZELVORA_API ZelvoraSDK final {
public:
    /// What a host is asked and told about the container. Held weakly. Main thread.
    class ZelvoraSDKDelegate {
    public:
        virtual ~ZelvoraSDKDelegate() = default;

        /// A back swipe was completed. True lets the container handle it: a step back in the page's history, or leaving
        /// the screen.
        virtual bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) = 0;
        /// The container is about to disappear, also when another screen only covers it.
        virtual void zelvoraSDKWillDismiss() = 0;
    };

    /// Success without a value, or what went wrong. May be ignored: the completion handler hears of errors too.
    using Result = std::expected<void, ZelvoraSDKError>;
    /// Called with errors only, never on success; those of the shop-id lookup come on a background thread.
    using CompletionHandler = std::function<void(std::optional<ZelvoraSDKError>)>;
    /// Makes a view for a container; nullptr for none.
    using ViewProvider = std::function<std::shared_ptr<platform::UIView>(platform::UIViewController&)>;
    using PageNavigationHandler = std::function<void(std::string const& url)>;
    /// Called with the page's text, where it sent some.
    using CustomAction = std::function<void(std::optional<std::string> const& data)>;
    using CustomActions = std::map<std::string, CustomAction>;

    /// The singleton, made on first use and never destroyed.
    static ZelvoraSDK& shared();
    ZelvoraSDK(ZelvoraSDK const&) = delete;
    ZelvoraSDK& operator=(ZelvoraSDK const&) = delete;

    /// Stores the configuration and starts to gather the identifiers, without waiting for them. While an earlier call
    /// is still at that, nothing changes: the result is `initializing`, and so hears the handler of that earlier call,
    /// or this one's where that had none. Keys are not validated here. The user is asked for permission to track
    /// whatever `isTrackingEnabled` says, once per install.
    Result initialize(std::string userKey, std::string apiKey, bool isTrackingEnabled, bool isDev, bool allowsSwipeBack,
        ViewProvider headerViewProvider = nullptr, ViewProvider footerViewProvider = nullptr,
        std::shared_ptr<ZelvoraSDKDelegate> const& delegate = nullptr, CompletionHandler completion_handler = nullptr);

    /// Shows the site full screen: pushed on the presenter's navigation stack, or presented over it where it has none.
    /// While the SDK is initializing the presenter is kept and shown from afterwards, the last one only. A missing shop
    /// id, API key or user key, and a presenter that is nullptr, are told to the completion handler too. Any thread;
    /// the container appears later.
    Result start(std::shared_ptr<platform::UIViewController> presenter);

    /// A web view on the site for the host to size and place; nullptr before the shop id is known.
    [[nodiscard]] std::shared_ptr<ZelvoraWebView> createWebView();
    /// The address of the page in the web view that was made last, while that exists.
    [[nodiscard]] std::optional<std::string> getCurrentUrl() const;

    /// Shows or hides the footer of the container, with an animation, and of those to come.
    void setFooterVisible(bool visible);

    /// Uploads up to 500 of the oldest events; those that the server took are removed. Any thread. Calls may overlap,
    /// and then upload the same events twice.
    void sendTrackingData();

    /// Lets pages call the action under this name. The last registration holds. Pages opened before get no function for
    /// it.
    void addCustomAction(std::string const& functionName, CustomAction action);
    [[nodiscard]] CustomActions getCustomActions() const;

    [[nodiscard]] ViewProvider headerViewProvider() const;
    void setHeaderViewProvider(ViewProvider provider);
    [[nodiscard]] ViewProvider footerViewProvider() const;
    void setFooterViewProvider(ViewProvider provider);
    [[nodiscard]] bool allowsSwipeBack() const;
    void setAllowsSwipeBack(bool allows);
    [[nodiscard]] std::shared_ptr<ZelvoraSDKDelegate> delegate() const;
    void setDelegate(std::shared_ptr<ZelvoraSDKDelegate> const& delegate);
    /// Told of every change of a page's URL, in every web view of the SDK.
    [[nodiscard]] PageNavigationHandler onPageNavigation() const;
    void setOnPageNavigation(PageNavigationHandler handler);
    [[nodiscard]] bool isFooterVisible() const;
    /// The web view that was made last, while it exists.
    [[nodiscard]] std::shared_ptr<ZelvoraWebView> activeWebView() const;
    void setActiveWebView(std::shared_ptr<ZelvoraWebView> const& webView);

private:
    struct Properties {
        std::optional<std::string> userKey;
        std::optional<std::string> apiKey;
        std::optional<std::string> adId;
        std::optional<std::string> shopId;
        std::optional<std::string> packageName;
        std::optional<std::string> apiURL;
        std::optional<std::string> webURL;
        bool isTrackingEnabled = true;
        bool isDev = false;
        CompletionHandler error_handler;
        bool isInitializing = false;
        std::shared_ptr<platform::UIViewController> pendingViewController;
        ViewProvider headerViewProvider;
        ViewProvider footerViewProvider;
        bool allowsSwipeBack = false;
        std::weak_ptr<ZelvoraSDKDelegate> delegate;
        PageNavigationHandler onPageNavigation;
        bool isFooterVisible = true;
        std::weak_ptr<ZelvoraWebView> activeWebView;
        CustomActions customActions;
    };
    friend class ZelvoraSDKInspector;

    ZelvoraSDK() = default;

    // Runs the accessor with the properties locked. It must not call out.
    template<typename Accessor>
    auto withProperties(Accessor const& accessor)
    {
        std::scoped_lock const lock(m_mutex);
        return accessor(m_properties);
    }
    template<typename Accessor>
    auto withProperties(Accessor const& accessor) const
    {
        std::scoped_lock const lock(m_mutex);
        return accessor(m_properties);
    }
    template<typename Property>
    Property read(Property Properties::* property) const
    {
        return withProperties([property](Properties const& properties) { return properties.*property; });
    }
    template<typename Property>
    void write(Property Properties::* property, std::type_identity_t<Property> value)
    {
        // Swapped, so that what a host captured is destroyed without the lock.
        withProperties([property, &value](Properties& properties) { std::swap(properties.*property, value); });
    }

    [[nodiscard]] static std::string profile(bool isDev) { return isDev ? "dev" : "prd"; }
    ZelvoraSDKError report(ZelvoraSDKError const& error) const;

    platform::Task<void> runInitialization(std::string apiKey);
    void startDeferred();
    platform::Task<void> fetchIDFA();
    static platform::Task<void> waitForAppActive();
    void updateAdId(platform::ATTrackingAuthorizationStatus status);

    platform::Task<void> fetchShopId(std::string apiKey);
    static platform::Task<std::expected<platform::URLSession::Answer, platform::Error>> performRequest(
        platform::URLRequest request);
    void acceptLookup(platform::URLSession::Answer const& answer);

    [[nodiscard]] std::string getFinalUrl() const;

    void sendData();
    void acceptIdentity(std::expected<platform::URLSession::Answer, platform::Error> const& result);

    mutable std::mutex m_mutex;
    Properties m_properties;
};

}
