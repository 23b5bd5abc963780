#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <optional>

namespace zelvora::tests {

namespace {

class EntryURLTest : public AuthorizedContainerTest { };

TEST_F(EntryURLTest, InDevelopmentTheEntryUrlNamesTheDevelopmentHost)
{
    initializeAndFinish({ .isDev = true });
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop-dev.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, ADeniedAdvertisingIdIsUnknownInTheEntryUrl)
{
    platform.trackingManager().setStatus(platform::ATTrackingAuthorizationStatus::Denied);
    initializeAndFinish();
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=unknown&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, WithoutAnAdvertisingIdTheItemIsEmptyAndTheLaunchSucceeds)
{
    initializeAndFinish();
    ZelvoraSDKInspector::change([](auto& properties) { properties.adId = std::nullopt; });
    platform.log().clear();

    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=&uKey=user-1&rid=M-AD-SDK");
    platform.runUntilIdle();
    EXPECT_TRUE(containerPresentedBy(*presenter));
}

TEST_F(EntryURLTest, KeysArePutIntoTheUrlUnchanged)
{
    initializeAndFinish({ .userKey = "a&b=c d#100%25/?+\xED\x95\x9C" }, "sh op&1");
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://sh op&1.shop.zelvora.example/v1/?adid=AD-1&uKey=a&b=c "
        "d#100%25/?+\xED\x95\x9C&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, AnEntryUrlWithCharactersThatAUrlCannotHaveIsEncodedAndLoads)
{
    initializeAndFinish({ .userKey = "kim \xED\x95\x9C" });
    sdk().start(presenter);
    platform.runUntilIdle();
    ASSERT_EQ(engine().loadedRequests().size(), 1U);
    EXPECT_EQ(engine().loadedRequests()[0].url.absoluteString(),
        "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=kim%20%ED%95%9C&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, EmptyKeysLaunchToo)
{
    initializeAndFinish({ .userKey = "", .apiKey = "" });
    platform.log().clear();
    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, TheEntryUrlIsBuiltAtTheTimeOfTheCall)
{
    initializeAndFinish();
    sdk().start(presenter);
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = "later"; });
    platform.runUntilIdle();
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(EntryURLTest, WithoutAWebAddressAStartStopsTheProcess)
{
    initializeAndFinish();
    ZelvoraSDKInspector::change([](auto& properties) { properties.webURL = std::nullopt; });
    EXPECT_DEATH(sdk().start(presenter), "Fatal error: the entry URL was asked for without a shop id, a web address");
}

}

}
