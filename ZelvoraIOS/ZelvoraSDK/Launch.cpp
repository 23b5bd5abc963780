#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora {

using platform::Animated;
using platform::UINavigationController;
using platform::UIViewController;

namespace {

void present(std::string urlString, UIViewController& presenter)
{
    auto container = std::make_shared<ZelvoraIOSViewController>(std::move(urlString));
    auto* navigation = dynamic_cast<UINavigationController*>(&presenter);
    auto const surrounding = presenter.navigationController();
    if (!navigation)
        navigation = surrounding.get();
    if (navigation) {
        navigation->pushViewController(std::move(container), Animated::Yes);
        return;
    }
    container->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    presenter.present(std::move(container), Animated::Yes);
}

}

std::string ZelvoraSDK::getFinalUrl() const
{
    auto const properties = withProperties([](Properties const& all) { return all; });
    if (!properties.shopId || !properties.webURL || !properties.userKey)
        platform::fatalError("the entry URL was asked for without a shop id, a web address or a user key");
    // Nothing is escaped here: the site gets the keys as the host gave them.
    return "https://" + *properties.shopId + "." + *properties.webURL + "/?adid=" + properties.adId.value_or("")
        + "&uKey=" + *properties.userKey + "&rid=M-AD-SDK";
}

ZelvoraSDK::Result ZelvoraSDK::start(std::shared_ptr<UIViewController> presenter)
{
    if (!presenter)
        return std::unexpected(report(ZelvoraSDKError::otherError("start was called without a view controller")));
    // In one step with the question, so that a sequence that ends meanwhile either sees the presenter or is seen to
    // have ended.
    auto const isDeferred = withProperties([&presenter](Properties& properties) {
        // Swapped, so that an earlier presenter is destroyed without the lock.
        if (properties.isInitializing)
            std::swap(properties.pendingViewController, presenter);
        return properties.isInitializing;
    });
    if (isDeferred) {
        ZelvoraLogger::d("SDK is still initializing. The activity will start automatically once ready.");
        return {};
    }
    if (!read(&Properties::shopId))
        return std::unexpected(report(ZelvoraSDKError::shopIdNotInitialized()));
    if (!read(&Properties::apiKey))
        return std::unexpected(report(ZelvoraSDKError::mediaKeyNotInitialized()));
    if (!read(&Properties::userKey))
        return std::unexpected(report(ZelvoraSDKError::userKeyNotInitialized()));

    auto url = getFinalUrl();
    ZelvoraLogger::d("Final URL: " + url);
    platform::Platform::current().mainQueue().async(
        [url = std::move(url), presenter = std::move(presenter)]() mutable { present(std::move(url), *presenter); });
    return {};
}

std::shared_ptr<ZelvoraWebView> ZelvoraSDK::createWebView()
{
    auto const isReady = withProperties(
        [](Properties const& properties) { return properties.shopId && properties.apiKey && properties.userKey; });
    if (!isReady) {
        ZelvoraLogger::e("SDK not fully initialized to get view");
        return nullptr;
    }
    auto webView = std::make_shared<ZelvoraWebView>(platform::CGRect {}, getFinalUrl(), allowsSwipeBack());
    setActiveWebView(webView);
    return webView;
}

std::optional<std::string> ZelvoraSDK::getCurrentUrl() const
{
    auto const webView = activeWebView();
    return webView ? webView->currentUrl() : std::nullopt;
}

}
