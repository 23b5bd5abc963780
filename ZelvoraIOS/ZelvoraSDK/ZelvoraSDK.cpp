#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/CurrentURL.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/SDKCore.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/WebViewCreation.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/expectMainThread.h"
#include "ZelvoraPlatform/Concurrency/spawn.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Platform.h"

#include <utility>

namespace zelvora {

using internal::HostCallback;
using internal::Properties;
using platform::Platform;

ZelvoraSDK::ZelvoraSDK() : m_core(internal::SDKCore::shared()) { }

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
    internal::expectMainThread("initialize");
    auto& properties = m_core.properties;
    auto const running = properties.access([](Properties& all) -> std::optional<HostCallback<CompletionHandler>> {
        return std::exchange(all.isInitializing, true) ? std::optional(all.error_handler) : std::nullopt;
    });
    if (running) {
        // The running call's handler comes first: it is that caller's initialization which is being disturbed.
        if (auto const& handler = *running ? running->function() : completion_handler)
            handler(ZelvoraSDKError::initializing());
        return std::unexpected(ZelvoraSDKError::initializing());
    }

    auto addresses = internal::environmentAddresses(isDev);
    properties.set(&Properties::userKey, std::move(userKey));
    properties.set(&Properties::apiKey, apiKey);
    properties.set(&Properties::packageName, Platform::current().mainBundle().bundleIdentifier());
    properties.set(&Properties::isTrackingEnabled, isTrackingEnabled);
    properties.set(&Properties::isDev, isDev);
    setAllowsSwipeBack(allowsSwipeBack);
    setHeaderViewProvider(std::move(headerViewProvider));
    setFooterViewProvider(std::move(footerViewProvider));
    setDelegate(delegate);
    properties.set(&Properties::webURL, std::move(addresses.webURL));
    properties.set(&Properties::apiURL, std::move(addresses.apiURL));
    properties.set(&Properties::error_handler, std::move(completion_handler));

    // Logged before the sequence is spawned, because another thread may run it, and log, from then on.
    auto sequence = m_core.initializationSequence.runInitialization(std::move(apiKey));
    ZelvoraLogger::i("Initialized");
    platform::spawn(Platform::current().globalQueue(), std::move(sequence));
    return {};
}

ZelvoraSDK::Result ZelvoraSDK::start(std::shared_ptr<platform::UIViewController> presenter)
{
    return m_core.launch.start(std::move(presenter));
}

std::shared_ptr<ZelvoraWebView> ZelvoraSDK::createWebView()
{
    internal::expectMainThread("createWebView");
    return internal::createWebView(m_core.properties);
}

std::optional<std::string> ZelvoraSDK::getCurrentUrl() const
{
    return internal::getCurrentUrl(m_core.properties);
}

void ZelvoraSDK::setFooterVisible(bool visible)
{
    internal::expectMainThread("setFooterVisible");
    m_core.properties.set(&Properties::isFooterVisible, visible);
    Platform::current().notificationCenter().post(
        { "ZelvoraFooterVisibilityChanged", platform::Dictionary { { "visible", visible } } });
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the queue
void ZelvoraSDK::sendTrackingData()
{
    m_core.trackingUpload.sendTrackingData();
}

void ZelvoraSDK::addCustomAction(std::string const& functionName, CustomAction action)
{
    m_core.customActions.add(functionName, std::move(action));
}

ZelvoraSDK::CustomActions ZelvoraSDK::getCustomActions() const
{
    return m_core.customActions.all();
}

ZelvoraSDK::ViewProvider ZelvoraSDK::headerViewProvider() const
{
    return m_core.properties.get(&Properties::headerViewProvider).function();
}

void ZelvoraSDK::setHeaderViewProvider(ViewProvider provider)
{
    m_core.properties.set(&Properties::headerViewProvider, std::move(provider));
}

ZelvoraSDK::ViewProvider ZelvoraSDK::footerViewProvider() const
{
    return m_core.properties.get(&Properties::footerViewProvider).function();
}

void ZelvoraSDK::setFooterViewProvider(ViewProvider provider)
{
    m_core.properties.set(&Properties::footerViewProvider, std::move(provider));
}

bool ZelvoraSDK::allowsSwipeBack() const
{
    return m_core.properties.get(&Properties::allowsSwipeBack);
}

void ZelvoraSDK::setAllowsSwipeBack(bool allows)
{
    m_core.properties.set(&Properties::allowsSwipeBack, allows);
}

std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> ZelvoraSDK::delegate() const
{
    return m_core.properties.get(&Properties::delegate).lock();
}

void ZelvoraSDK::setDelegate(std::shared_ptr<ZelvoraSDKDelegate> const& delegate)
{
    m_core.properties.set(&Properties::delegate, delegate);
}

ZelvoraSDK::PageNavigationHandler ZelvoraSDK::onPageNavigation() const
{
    return m_core.properties.get(&Properties::onPageNavigation).function();
}

void ZelvoraSDK::setOnPageNavigation(PageNavigationHandler handler)
{
    m_core.properties.set(&Properties::onPageNavigation, std::move(handler));
}

bool ZelvoraSDK::isFooterVisible() const
{
    return m_core.properties.get(&Properties::isFooterVisible);
}

std::shared_ptr<ZelvoraWebView> ZelvoraSDK::activeWebView() const
{
    return m_core.properties.get(&Properties::activeWebView).lock();
}

void ZelvoraSDK::setActiveWebView(std::shared_ptr<ZelvoraWebView> const& webView)
{
    m_core.properties.set(&Properties::activeWebView, webView);
}

}
