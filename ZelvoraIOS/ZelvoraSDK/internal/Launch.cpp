#include "ZelvoraIOS/ZelvoraSDK/internal/Launch.h"

#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/EntryURL.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/reportError.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"

#include <optional>
#include <string>
#include <utility>

namespace zelvora::internal {

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

// A screen that nobody else keeps any more may only be destroyed there.
void destroyOnMainThread(std::shared_ptr<UIViewController> screen)
{
    platform::Platform::current().mainQueue().async([screen = std::move(screen)] { });
}

}

ZelvoraSDK::Result Launch::start(std::shared_ptr<UIViewController> presenter)
{
    if (!presenter) {
        auto error = ZelvoraSDKError::otherError("start was called without a view controller");
        return std::unexpected(reportError(m_properties, std::move(error)));
    }
    // In one step: if the initialization ends at the same time, either it finds this presenter or the keys are read
    // after its end.
    auto const keys = m_properties.access([&presenter](Properties& properties) -> std::optional<EntryKeys> {
        if (!properties.isInitializing)
            return entryKeys(properties);
        std::swap(properties.pendingViewController, presenter);
        return std::nullopt;
    });
    if (!keys) {
        if (presenter)
            destroyOnMainThread(std::move(presenter));
        ZelvoraLogger::d("SDK is still initializing. The activity will start automatically once ready.");
        return {};
    }
    if (auto error = missingKey(*keys)) {
        // Without an initialize there is no handler that the error could reach.
        if (!keys->userKey)
            platform::Platform::current().complain("ZelvoraSDK::start was called before initialize.");
        return std::unexpected(reportError(m_properties, *std::move(error)));
    }

    auto url = getFinalUrl(*keys);
    ZelvoraLogger::d("Final URL: " + url);
    platform::Platform::current().mainQueue().async(
        [url = std::move(url), presenter = std::move(presenter)]() mutable { present(std::move(url), *presenter); });
    return {};
}

}
