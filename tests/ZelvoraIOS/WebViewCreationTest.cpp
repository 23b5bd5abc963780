#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <optional>

namespace zelvora::tests {

namespace {

class WebViewCreationTest : public AuthorizedContainerTest { };

TEST_F(WebViewCreationTest, ACreatedWebViewHasAZeroFrameNoScreenAndTheFinalUrl)
{
    initializeAndFinish();
    auto const view = sdk().createWebView();
    ASSERT_TRUE(view);
    EXPECT_EQ(memory::frame(*view), CGRect());
    EXPECT_EQ(engine(*view).initialFrame(), CGRect());
    EXPECT_FALSE(view->parentViewController());
    EXPECT_FALSE(view->superview());
    EXPECT_EQ(view->currentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
    EXPECT_EQ(sdk().activeWebView(), view);
    EXPECT_TRUE(platform.screen().transitions().empty());
}

TEST_F(WebViewCreationTest, ACreatedWebViewTakesTheSwipeFlagOfTheSDK)
{
    initializeAndFinish();
    EXPECT_FALSE(engine(*sdk().createWebView()).allowsBackForwardNavigationGestures());
    sdk().setAllowsSwipeBack(true);
    auto const view = sdk().createWebView();
    EXPECT_TRUE(engine(*view).allowsBackForwardNavigationGestures());
}

TEST_F(WebViewCreationTest, AWebViewCanBeCreatedWhileInitializingOnceTheShopIdIsKnown)
{
    platform.trackingManager().setStatus(platform::ATTrackingAuthorizationStatus::NotDetermined);
    initialize();
    platform.runUntilIdle();
    EXPECT_FALSE(sdk().createWebView());
    platform.urlSession().answer(200, R"({"data": {"shopId": "shop-1"}})");
    platform.runUntilIdle();
    ASSERT_TRUE(ZelvoraSDKInspector::isInitializing());

    auto const view = sdk().createWebView();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->currentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(WebViewCreationTest, WithoutAWebAddressCreatingAWebViewStopsTheProcess)
{
    initializeAndFinish();
    ZelvoraSDKInspector::change([](auto& properties) { properties.webURL = std::nullopt; });
    EXPECT_DEATH(
        (void)sdk().createWebView(), "Fatal error: the entry URL was asked for without a shop id, a web address");
}

class WebViewCreationFailureTest : public WebViewCreationTest {
protected:
    void SetUp() override
    {
        WebViewCreationTest::SetUp();
        initializeAndFinish();
        platform.log().clear();
    }

    void expectNoView()
    {
        auto const former = std::make_shared<ZelvoraWebView>(CGRect {}, entryUrl, false);
        sdk().setActiveWebView(former);
        EXPECT_FALSE(sdk().createWebView());
        EXPECT_EQ(
            logMessages(), (std::vector<LogMessage> { { OSLogType::Error, "SDK not fully initialized to get view" } }));
        EXPECT_TRUE(errors.empty());
        EXPECT_EQ(sdk().activeWebView(), former);
    }
};

TEST_F(WebViewCreationFailureTest, WithoutAShopIdThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.shopId = std::nullopt; });
    expectNoView();
}

TEST_F(WebViewCreationFailureTest, WithoutAnApiKeyThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiKey = std::nullopt; });
    expectNoView();
}

TEST_F(WebViewCreationFailureTest, WithoutAUserKeyThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = std::nullopt; });
    expectNoView();
}

}

}
