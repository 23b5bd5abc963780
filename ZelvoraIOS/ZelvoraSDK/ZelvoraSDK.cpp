#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/serviceAddresses.h"
#include "ZelvoraPlatform/Concurrency/spawn.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Platform.h"

#include <utility>

namespace zelvora {

using platform::Platform;

ZelvoraSDK& ZelvoraSDK::shared()
{
    // Never destroyed: threads of the system may still call in while the process ends.
    static auto* const s_shared = new ZelvoraSDK;
    return *s_shared;
}

ZelvoraSDK::Result ZelvoraSDK::initialize(std::string userKey, std::string apiKey, bool isTrackingEnabled, bool isDev,
    bool allowsSwipeBack, ViewProvider headerViewProvider, ViewProvider footerViewProvider,
    std::shared_ptr<ZelvoraSDKDelegate> const& delegate, CompletionHandler completion_handler)
{
    auto const wasInitializing =
        withProperties([](Properties& properties) { return std::exchange(properties.isInitializing, true); });
    if (wasInitializing) {
        // The stored handler has priority: a call made too early tells the first caller, not the second.
        auto const stored = read(&Properties::error_handler);
        if (auto const& handler = stored ? stored : completion_handler)
            handler(ZelvoraSDKError::initializing());
        return std::unexpected(ZelvoraSDKError::initializing());
    }

    auto const addresses = serviceAddresses();
    write(&Properties::userKey, std::move(userKey));
    write(&Properties::apiKey, apiKey);
    write(&Properties::packageName, Platform::current().mainBundle().bundleIdentifier());
    write(&Properties::isTrackingEnabled, isTrackingEnabled);
    write(&Properties::isDev, isDev);
    setAllowsSwipeBack(allowsSwipeBack);
    setHeaderViewProvider(std::move(headerViewProvider));
    setFooterViewProvider(std::move(footerViewProvider));
    setDelegate(delegate);
    write(&Properties::webURL, (isDev ? addresses.developmentWebHost : addresses.productionWebHost) + "/v1");
    write(&Properties::apiURL, isDev ? addresses.developmentApiBase : addresses.productionApiBase);
    write(&Properties::error_handler, std::move(completion_handler));

    // The line comes before every line of the sequence, which another thread may begin to run as soon as it is spawned.
    auto sequence = runInitialization(std::move(apiKey));
    ZelvoraLogger::i("Initialized");
    platform::spawn(Platform::current().globalQueue(), std::move(sequence));
    return {};
}

ZelvoraSDKError ZelvoraSDK::report(ZelvoraSDKError const& error) const
{
    if (auto const handler = read(&Properties::error_handler))
        handler(error);
    return error;
}

void ZelvoraSDK::setFooterVisible(bool visible)
{
    write(&Properties::isFooterVisible, visible);
    Platform::current().notificationCenter().post(
        { "ZelvoraFooterVisibilityChanged", platform::Dictionary { { "visible", visible } } });
}

void ZelvoraSDK::addCustomAction(std::string const& functionName, CustomAction action)
{
    withProperties([&](Properties& properties) { std::swap(properties.customActions[functionName], action); });
}

ZelvoraSDK::CustomActions ZelvoraSDK::getCustomActions() const
{
    return read(&Properties::customActions);
}

ZelvoraSDK::ViewProvider ZelvoraSDK::headerViewProvider() const
{
    return read(&Properties::headerViewProvider);
}

void ZelvoraSDK::setHeaderViewProvider(ViewProvider provider)
{
    write(&Properties::headerViewProvider, std::move(provider));
}

ZelvoraSDK::ViewProvider ZelvoraSDK::footerViewProvider() const
{
    return read(&Properties::footerViewProvider);
}

void ZelvoraSDK::setFooterViewProvider(ViewProvider provider)
{
    write(&Properties::footerViewProvider, std::move(provider));
}

bool ZelvoraSDK::allowsSwipeBack() const
{
    return read(&Properties::allowsSwipeBack);
}
void ZelvoraSDK::setAllowsSwipeBack(bool allows)
{
    write(&Properties::allowsSwipeBack, allows);
}

std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> ZelvoraSDK::delegate() const
{
    return read(&Properties::delegate).lock();
}

void ZelvoraSDK::setDelegate(std::shared_ptr<ZelvoraSDKDelegate> const& delegate)
{
    write(&Properties::delegate, delegate);
}

ZelvoraSDK::PageNavigationHandler ZelvoraSDK::onPageNavigation() const
{
    return read(&Properties::onPageNavigation);
}

void ZelvoraSDK::setOnPageNavigation(PageNavigationHandler handler)
{
    write(&Properties::onPageNavigation, std::move(handler));
}

bool ZelvoraSDK::isFooterVisible() const
{
    return read(&Properties::isFooterVisible);
}

std::shared_ptr<ZelvoraWebView> ZelvoraSDK::activeWebView() const
{
    return read(&Properties::activeWebView).lock();
}

void ZelvoraSDK::setActiveWebView(std::shared_ptr<ZelvoraWebView> const& webView)
{
    write(&Properties::activeWebView, webView);
}

}
