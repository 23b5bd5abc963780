#include "tests/examples/developer/ObservedSDK.h"

#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <utility>

namespace zelvora::developer {

namespace {

// The platform that is installed owns it.
memory::Platform& makeMemory()
{
    return *new memory::Platform(
        { .trackingStatus = platform::ATTrackingAuthorizationStatus::NotDetermined, .serviceAddresses = {} });
}

ObservedPlatform& install(memory::Platform& memory, PlatformObserver& observer)
{
    auto platform = std::make_unique<ObservedPlatform>(std::unique_ptr<platform::Platform>(&memory), observer);
    auto& installed = *platform;
    platform::Platform::install(std::move(platform));
    return installed;
}

}

ObservedSDK::ObservedSDK()
    : memory(makeMemory())
    , recorder([this] { return memory.clock().now(); })
    , observed(install(memory, recorder))
{
    recorder.setTrackingEndpoint(trackingEndpoint);
}

void ObservedSDK::open()
{
    auto& sdk = ZelvoraSDK::shared();
    sdk.initialize("user", "key", true, false, true);
    memory.runUntilIdle();
    memory.urlSession().answer(200, R"({"data": {"shopId": "shop"}})");
    memory.runUntilIdle();
    static auto const screen = std::make_shared<memory::ViewController>();
    sdk.start(screen);
    memory.runUntilIdle();
    ASSERT_EQ(memory.webViews().size(), 1U);
}

void ObservedSDK::post(platform::Value body)
{
    ASSERT_TRUE(memory.webViews().front()->postMessage("zelvora", std::move(body)));
    memory.runUntilIdle();
}

}
