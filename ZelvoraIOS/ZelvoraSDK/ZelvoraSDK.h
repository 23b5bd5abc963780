#pragma once

#include "ZelvoraIOS/ZelvoraSDKError.h"
#include "ZelvoraPlatform/Export.h"

#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

/// The SDK. A host begins with `ZelvoraSDK`, which takes or returns most other types here; `ZelvoraStorage` and
/// `ZelvoraLogger` have static functions of their own.
namespace zelvora {

class ZelvoraWebView;

namespace platform {
class UIView;
class UIViewController;
}
namespace internal {
struct SDKCore;
}

/// The SDK's facade: a host configures it once and then asks it to show the shopping site.
///
///     auto& sdk = ZelvoraSDK::shared();
///     sdk.initialize("user-1", "media-key", true, false, true, nullptr, nullptr, nullptr,
///         [](std::optional<ZelvoraSDKError> const& error) { log(error->code()); });
///     sdk.start(homeScreen); // opens the site as soon as initialization has ended
///
/// Install a platform first: without one, `initialize` and whatever needs a service of the platform stop the process
/// with a message. Call on the main thread unless stated otherwise. The properties may be read and set on any thread.
/// The SDK calls no callback of the host while it holds a lock, so every callback may call the SDK. A getter returns a
/// callable that shares the state of the one that was set: a closure that counts its calls counts them all.
class ZELVORA_API ZelvoraSDK final {
public:
    /// The host's side of the container. The SDK keeps a weak reference only. Main thread.
    class ZelvoraSDKDelegate {
    public:
        virtual ~ZelvoraSDKDelegate() = default;

        /// The user completed a back swipe. Return true to let the container handle it, by going back in the page's
        /// history or else leaving the screen; return false if the host has handled it.
        virtual bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) = 0;
        /// The container is about to disappear, for good or because another screen will cover it.
        virtual void zelvoraSDKWillDismiss() = 0;
    };

    /// Success without a value, or the error. May be ignored: errors go to the completion handler as well.
    using Result = std::expected<void, ZelvoraSDKError>;
    /// Called with an error each time something fails, never on success. Errors of the shop-id lookup arrive on a
    /// background thread, those of a call on the caller's thread.
    using CompletionHandler = std::function<void(std::optional<ZelvoraSDKError>)>;
    /// Creates a view for a container, once for each container, when that loads its view. nullptr means no view.
    using ViewProvider = std::function<std::shared_ptr<platform::UIView>(platform::UIViewController&)>;
    /// Called with the address that a page has now.
    using PageNavigationHandler = std::function<void(std::string const& url)>;
    /// Called with the text that the page passed, if any.
    using CustomAction = std::function<void(std::optional<std::string> const& data)>;
    /// The actions by their names.
    using CustomActions = std::map<std::string, CustomAction>;

    /// The only instance, created on first use and never destroyed. Any thread.
    static ZelvoraSDK& shared();
    ZelvoraSDK(ZelvoraSDK const&) = delete;
    ZelvoraSDK& operator=(ZelvoraSDK const&) = delete;

    /// Stores the configuration and starts initialization, without waiting for it: in parallel, the SDK finds the shop
    /// id (stored for a day, else looked up with `apiKey`) and, as soon as the app is active, asks the user for
    /// permission to track, once per install and whatever `isTrackingEnabled` is. Then it uploads queued events and
    /// carries out a `start` that was called in the meantime.
    ///
    /// Fails with `initializing` while an earlier call's initialization is running; nothing changes then, and the
    /// earlier call's handler receives the error, or this call's if the earlier one passed none. Afterwards
    /// `initialize` may be called again and replaces every argument of the earlier call, with nullptr too. Keys are not
    /// validated here: a wrong API key surfaces as an `internalApiError` of the lookup. `isDev` selects the development
    /// environment; `allowsSwipeBack`, the view providers and the delegate set the properties below.
    Result initialize(std::string userKey, std::string apiKey, bool isTrackingEnabled, bool isDev, bool allowsSwipeBack,
        ViewProvider headerViewProvider = nullptr, ViewProvider footerViewProvider = nullptr,
        std::shared_ptr<ZelvoraSDKDelegate> const& delegate = nullptr, CompletionHandler completion_handler = nullptr);

    /// Shows the site full screen: pushed onto the presenter's navigation stack if it is one or is on one, else
    /// presented modally. Any thread; the container appears later, on the main thread, and the presenter is kept alive
    /// until then.
    ///
    /// During initialization the call succeeds and the launch is deferred; the latest presenter is used once
    /// initialization ends. Otherwise it fails with `shopIdNotInitialized`, `mediaKeyNotInitialized` or
    /// `userKeyNotInitialized` if one of these is missing. A presenter that is nullptr always fails with `otherError`.
    /// The completion handler receives the error as well; before the first `initialize` there is none, and the platform
    /// complains.
    Result start(std::shared_ptr<platform::UIViewController> presenter);

    /// A web view on the site, for the host to size and place; the host owns it. nullptr, with an error line in the
    /// log, if the shop id, the API key or the user key is missing.
    [[nodiscard]] std::shared_ptr<ZelvoraWebView> createWebView();
    /// The address of the page in the active web view; absent if there is none.
    [[nodiscard]] std::optional<std::string> getCurrentUrl() const;

    /// Shows or hides the footer, with an animation in the open container, and from the start in later ones. Pages call
    /// it, too: a footer that one of them hid stays hidden at the next visit.
    void setFooterVisible(bool visible);

    /// Uploads the oldest queued events, up to 500, and removes them once the server has accepted them. The SDK calls
    /// this at the end of initialization, when a page calls `close` and when a container disappears. The outcome is
    /// only logged. Any thread. Overlapping calls upload the same events twice, and may remove later events that were
    /// never sent.
    void sendTrackingData();

    /// Registers an action that pages call as `window.ZelvoraSDKBridge.NAME(data)`, on the main thread. A later action
    /// of the same name replaces it, also for pages that are open. Any thread.
    ///
    /// A page has functions for the names that were registered when its web view was made: register before `start`. A
    /// name that is no JavaScript identifier, such as "add-to-cart", is called as `ZelvoraSDKBridge["add-to-cart"]()`;
    /// the empty name gets no function. The name of one of the bridge's own functions, such as "close" or "getItem",
    /// takes that function away from the pages.
    void addCustomAction(std::string const& functionName, CustomAction action);
    /// A copy of the table. Any thread.
    [[nodiscard]] CustomActions getCustomActions() const;

    /// Makes the header of each container that opens from now on; without one there is none.
    [[nodiscard]] ViewProvider headerViewProvider() const;
    /// See `headerViewProvider`. `initialize` sets it too.
    void setHeaderViewProvider(ViewProvider provider);
    /// Makes the footer of each container that opens from now on; without one there is none.
    [[nodiscard]] ViewProvider footerViewProvider() const;
    /// See `footerViewProvider`. `initialize` sets it too.
    void setFooterViewProvider(ViewProvider provider);
    /// Whether a swipe from the left edge goes back; asked when a container opens and at each swipe.
    [[nodiscard]] bool allowsSwipeBack() const;
    /// See `allowsSwipeBack`. `initialize` sets it too.
    void setAllowsSwipeBack(bool allows);
    /// nullptr if the host has released its delegate.
    [[nodiscard]] std::shared_ptr<ZelvoraSDKDelegate> delegate() const;
    /// The SDK does not keep it. `initialize` sets it too.
    void setDelegate(std::shared_ptr<ZelvoraSDKDelegate> const& delegate);
    /// Called on the main thread with every new URL of a page, in every web view of the SDK.
    [[nodiscard]] PageNavigationHandler onPageNavigation() const;
    /// See `onPageNavigation`.
    void setOnPageNavigation(PageNavigationHandler handler);
    /// Whether containers show their footer; true until `setFooterVisible` is called.
    [[nodiscard]] bool isFooterVisible() const;
    /// The web view that was created last, by a container or by `createWebView`. A weak reference: nullptr once that
    /// view no longer exists. To use it, include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h".
    [[nodiscard]] std::shared_ptr<ZelvoraWebView> activeWebView() const;
    /// See `activeWebView`. Hosts that show a web view of their own may set it.
    void setActiveWebView(std::shared_ptr<ZelvoraWebView> const& webView);

private:
    ZelvoraSDK();

    internal::SDKCore& m_core;
};

}
