#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/HostCallback.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace zelvora::internal {

/// The host's configuration, the identifiers learnt during initialization and the state of the container.
struct Properties {
    std::optional<std::string> userKey;
    std::optional<std::string> apiKey;
    std::optional<std::string> adId;
    std::optional<std::string> shopId;
    std::optional<std::string> packageName;
    std::optional<std::string> apiURL;
    /// Host and path, without a scheme.
    std::optional<std::string> webURL;
    bool isTrackingEnabled = true;
    bool isDev = false;
    HostCallback<ZelvoraSDK::CompletionHandler> error_handler;
    bool isInitializing = false;
    /// The presenter of a launch that was requested during initialization.
    std::shared_ptr<platform::UIViewController> pendingViewController;
    HostCallback<ZelvoraSDK::ViewProvider> headerViewProvider;
    HostCallback<ZelvoraSDK::ViewProvider> footerViewProvider;
    bool allowsSwipeBack = false;
    std::weak_ptr<ZelvoraSDK::ZelvoraSDKDelegate> delegate;
    HostCallback<ZelvoraSDK::PageNavigationHandler> onPageNavigation;
    bool isFooterVisible = true;
    std::weak_ptr<ZelvoraWebView> activeWebView;
};

/// The properties behind one lock. Any thread.
class GuardedProperties final {
public:
    /// Runs `accessor` with the properties locked and returns its result. The accessor must neither call out nor
    /// destroy an object of the host: to replace one, it swaps the old value into a variable of its caller.
    template<typename Accessor>
    auto access(Accessor const& accessor)
    {
        std::scoped_lock const lock(m_mutex);
        return accessor(m_properties);
    }
    template<typename Accessor>
    auto access(Accessor const& accessor) const
    {
        std::scoped_lock const lock(m_mutex);
        return accessor(m_properties);
    }

    template<typename Property>
    [[nodiscard]] Property get(Property Properties::* property) const
    {
        return access([property](Properties const& properties) { return properties.*property; });
    }
    /// The old value is destroyed after the lock has been released.
    template<typename Property>
    void set(Property Properties::* property, std::type_identity_t<Property> value)
    {
        access([property, &value](Properties& properties) { std::swap(properties.*property, value); });
    }

private:
    mutable std::mutex m_mutex;
    Properties m_properties;
};

}
