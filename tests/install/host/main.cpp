#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraIOSVersion.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

using namespace zelvora;

namespace {

platform::ServiceAddresses addresses()
{
    return {
        .productionWebHost = "mall.example",
        .developmentWebHost = "mall-dev.example",
        .productionApiBase = "https://api.example",
        .developmentApiBase = "https://api-dev.example",
        .lookupEndpoint = "https://lookup.example/shop",
        .trackingEndpoint = "https://collector.example/events",
    };
}

int fail(char const* what)
{
    std::fprintf(stderr, "%s\n", what);
    return 1;
}

}

// A whole visit, in memory: look the shop up, ask for permission, open the container.
int main()
{
    auto& memory = memory::install({
        .trackingStatus = platform::ATTrackingAuthorizationStatus::Denied,
        .serviceAddresses = addresses(),
    });
    auto& sdk = ZelvoraSDK::shared();
    if (!sdk.initialize("user-7", "media-key", true, false, true))
        return fail("The SDK refused its first initialization.");
    auto const presenter = std::make_shared<memory::ViewController>();
    if (!sdk.start(presenter))
        return fail("The SDK refused to start.");
    memory.runUntilIdle();
    memory.urlSession().answer(200, R"({"data": {"shopId": "corner"}})");
    memory.runUntilIdle();

    auto const webViews = memory.webViews();
    if (webViews.size() != 1 || webViews.front()->loadedRequests().size() != 1)
        return fail("There is no container with a page.");
    auto const url = webViews.front()->loadedRequests().front().url.absoluteString();
    std::printf("%s\n%s\n", ZelvoraIOSVersionString, url.c_str());
    if (url != "https://corner.mall.example/v1/?adid=unknown&uKey=user-7&rid=M-AD-SDK")
        return fail("The entry URL is not the one expected.");
    return 0;
}
