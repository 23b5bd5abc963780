#include "ZelvoraAdapters/memory/Shop.h"
#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
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

// A whole visit, in memory: the shop is looked up, the user asked for permission, the container opened.
int main()
{
    auto& memory = memory::readyShop({ .serviceAddresses = addresses() });
    auto& sdk = ZelvoraSDK::shared();
    if (!sdk.initialize("user-7", "media-key", true, false, true))
        return fail("The SDK refused its first initialization.");
    // The SDK finds out that its presenter is a navigation stack, also if the two are in different shared libraries.
    auto const stack = std::make_shared<memory::NavigationController>();
    stack->pushViewController(std::make_shared<memory::ViewController>(), platform::Animated::No);
    if (!sdk.start(stack))
        return fail("The SDK refused to start.");
    memory.runUntilIdle();

    if (&platform::Platform::current() != &memory)
        return fail("There are two platforms.");
    if (stack->viewControllers().size() != 2)
        return fail("The container is not on the navigation stack.");
    auto const url = memory::Page(memory).url().value_or("");
    std::printf("%s\n%s\n", ZelvoraIOSVersionString, url.c_str());
    if (url != "https://shop.mall.example/v1/?adid=unknown&uKey=user-7&rid=M-AD-SDK")
        return fail("The entry URL is not the one expected.");
    return 0;
}
