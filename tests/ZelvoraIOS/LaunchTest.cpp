#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <optional>
#include <thread>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::ATTrackingAuthorizationStatus;
using Kind = memory::Transition::Kind;

class LaunchTest : public ContainerTest {
protected:
    LaunchTest() : ContainerTest({ .trackingStatus = ATTrackingAuthorizationStatus::Authorized }) { }

    void SetUp() override { platform.identifierManager().setAdvertisingIdentifier("AD-1"); }

    [[nodiscard]] std::vector<memory::Transition> const& transitions() const { return platform.screen().transitions(); }

    std::shared_ptr<memory::ViewController> presenter = std::make_shared<memory::ViewController>();
};

class LaunchFailureTest : public LaunchTest {
protected:
    void SetUp() override
    {
        LaunchTest::SetUp();
        initializeAndFinish();
        platform.log().clear();
    }

    void expectFailure(ZelvoraSDKError const& error)
    {
        auto const result = sdk().start(presenter);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), error);
        EXPECT_EQ(errors, std::vector { std::optional(error) });
        EXPECT_TRUE(logMessages().empty());
        platform.runUntilIdle();
        EXPECT_TRUE(transitions().empty());
        EXPECT_TRUE(platform.webViews().empty());
    }
};

TEST_F(LaunchTest, AStartDuringInitializationSucceedsAndPresentsOnlyOnceInitializationEnds)
{
    initialize();
    platform.log().clear();

    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> {
            { OSLogType::Debug, "SDK is still initializing. The activity will start automatically once ready." } }));
    platform.runUntilIdle();
    EXPECT_TRUE(transitions().empty());

    finishInitialization();
    ASSERT_EQ(transitions().size(), 1U);
    EXPECT_EQ(transitions()[0].kind, Kind::Present);
    EXPECT_TRUE(containerPresentedBy(*presenter));
    EXPECT_TRUE(errors.empty());
}

TEST_F(LaunchTest, OfTwoStartsDuringInitializationOnlyTheSecondPresents)
{
    auto const second = std::make_shared<memory::ViewController>();
    initialize();
    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_TRUE(sdk().start(second));

    finishInitialization();
    EXPECT_EQ(transitions().size(), 1U);
    EXPECT_FALSE(containerPresentedBy(*presenter));
    EXPECT_TRUE(containerPresentedBy(*second));
}

TEST_F(LaunchTest, ADeferredPresenterIsHeldUntilTheEndOfInitializationAndForgottenThen)
{
    std::weak_ptr<memory::ViewController> const weak = presenter;
    initialize();
    sdk().start(std::exchange(presenter, nullptr));
    EXPECT_FALSE(weak.expired());

    finishInitialization();
    EXPECT_FALSE(ZelvoraSDKInspector::properties().pendingViewController);
    EXPECT_TRUE(weak.expired());
}

TEST_F(LaunchTest, ASecondDeferredStartLetsGoOfTheFirstPresenter)
{
    std::weak_ptr<memory::ViewController> const weak = presenter;
    initialize();
    sdk().start(std::exchange(presenter, nullptr));
    sdk().start(std::make_shared<memory::ViewController>());
    EXPECT_TRUE(weak.expired());
}

TEST_F(LaunchTest, TheDeferredStartIsAnnouncedBeforeTheFinalUrl)
{
    initialize();
    sdk().start(presenter);
    platform.log().clear();
    finishInitialization();

    auto const lines = logMessages(OSLogType::Debug);
    auto const announced = std::ranges::find(lines, "Executing deferred start after initialization");
    ASSERT_NE(announced, lines.end());
    ASSERT_NE(announced + 1, lines.end());
    EXPECT_EQ(
        *(announced + 1), "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(LaunchTest, ADeferredStartWhoseLookupFailedReportsTheMissingShopIdToTheHandler)
{
    initialize();
    EXPECT_TRUE(sdk().start(presenter));
    platform.runUntilIdle();
    platform.urlSession().answer(500);
    finishInitialization();

    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[1], ZelvoraSDKError::shopIdNotInitialized());
    EXPECT_TRUE(transitions().empty());
    EXPECT_FALSE(ZelvoraSDKInspector::properties().pendingViewController);
}

TEST_F(LaunchTest, WhileInitializingAMissingShopIdIsNotAnError)
{
    initialize();
    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_TRUE(errors.empty());
}

TEST_F(LaunchFailureTest, AStartWithoutAShopIdFailsWithE001)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.shopId = std::nullopt; });
    expectFailure(ZelvoraSDKError::shopIdNotInitialized());
    EXPECT_EQ(errors.at(0)->code(), "E001");
}

TEST_F(LaunchFailureTest, AStartWithoutAnApiKeyFailsWithE002)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiKey = std::nullopt; });
    expectFailure(ZelvoraSDKError::mediaKeyNotInitialized());
    EXPECT_EQ(errors.at(0)->code(), "E002");
}

TEST_F(LaunchFailureTest, AStartWithoutAUserKeyFailsWithE003)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = std::nullopt; });
    expectFailure(ZelvoraSDKError::userKeyNotInitialized());
    EXPECT_EQ(errors.at(0)->code(), "E003");
}

TEST_F(LaunchFailureTest, WithoutShopIdAndApiKeyOnlyTheShopIdIsReported)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.shopId = properties.apiKey = std::nullopt; });
    expectFailure(ZelvoraSDKError::shopIdNotInitialized());
}

TEST_F(LaunchFailureTest, WithoutApiKeyAndUserKeyOnlyTheApiKeyIsReported)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiKey = properties.userKey = std::nullopt; });
    expectFailure(ZelvoraSDKError::mediaKeyNotInitialized());
}

TEST_F(LaunchFailureTest, AStartWithoutAPresenterFailsWithE300WhateverElseIsMissing)
{
    auto const error = ZelvoraSDKError::otherError("start was called without a view controller");
    presenter = nullptr;
    expectFailure(error);
    EXPECT_EQ(errors.at(0)->code(), "E300");

    errors.clear();
    ZelvoraSDKInspector::change([](auto& properties) { properties.shopId = std::nullopt; });
    expectFailure(error);
}

TEST_F(LaunchTest, AStartWithoutAPresenterDuringInitializationFailsAtOnceAndKeepsAnEarlierPresenter)
{
    initialize();
    EXPECT_TRUE(sdk().start(presenter));
    auto const result = sdk().start(nullptr);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), ZelvoraSDKError::otherError("start was called without a view controller"));

    finishInitialization();
    EXPECT_TRUE(containerPresentedBy(*presenter));
}

TEST_F(LaunchTest, AStartBeforeInitializeFailsWithE001AndTellsNobody)
{
    auto const result = sdk().start(presenter);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), ZelvoraSDKError::shopIdNotInitialized());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(LaunchFailureTest, WithoutACompletionHandlerAFailureIsOnlyReturned)
{
    ZelvoraSDKInspector::change([](auto& properties) {
        properties.error_handler = nullptr;
        properties.shopId = std::nullopt;
    });
    auto const result = sdk().start(presenter);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), ZelvoraSDKError::shopIdNotInitialized());
    EXPECT_TRUE(errors.empty());
}

TEST_F(LaunchTest, AStartLogsTheFinalUrlAndReturnsBeforeTheContainerIsMade)
{
    initializeAndFinish();
    platform.log().clear();

    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug,
            "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK" } }));
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);
    EXPECT_TRUE(transitions().empty());
    EXPECT_TRUE(platform.webViews().empty());

    platform.mainQueue().runOne();
    EXPECT_EQ(transitions().size(), 1U);
    EXPECT_EQ(platform.webViews().size(), 1U);
    EXPECT_TRUE(errors.empty());
}

TEST_F(LaunchTest, TheContainerLoadsTheFinalUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    ASSERT_EQ(engine().loadedRequests().size(), 1U);
    EXPECT_EQ(engine().loadedRequests()[0].url.absoluteString(),
        "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(LaunchTest, InDevelopmentTheEntryUrlNamesTheDevelopmentHost)
{
    initializeAndFinish({ .isDev = true });
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop-dev.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(LaunchTest, ADeniedAdvertisingIdStandsInTheEntryUrlAsUnknown)
{
    platform.trackingManager().setStatus(ATTrackingAuthorizationStatus::Denied);
    initializeAndFinish();
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=unknown&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(LaunchTest, WithoutAnAdvertisingIdTheItemIsEmptyAndTheLaunchGoesOn)
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

TEST_F(LaunchTest, KeysArePutIntoTheUrlUnchanged)
{
    initializeAndFinish({ .userKey = "a&b=c d#100%25/?+\xED\x95\x9C" }, "sh op&1");
    platform.log().clear();
    sdk().start(presenter);
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://sh op&1.shop.zelvora.example/v1/?adid=AD-1&uKey=a&b=c "
        "d#100%25/?+\xED\x95\x9C&rid=M-AD-SDK");
}

TEST_F(LaunchTest, AnEntryUrlWithWhatAUrlCannotHoldIsEncodedAndLoads)
{
    initializeAndFinish({ .userKey = "kim \xED\x95\x9C" });
    sdk().start(presenter);
    platform.runUntilIdle();
    ASSERT_EQ(engine().loadedRequests().size(), 1U);
    EXPECT_EQ(engine().loadedRequests()[0].url.absoluteString(),
        "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=kim%20%ED%95%9C&rid=M-AD-SDK");
}

TEST_F(LaunchTest, EmptyKeysLaunchAsWell)
{
    initializeAndFinish({ .userKey = "", .apiKey = "" });
    platform.log().clear();
    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(logMessages(OSLogType::Debug).at(0),
        "Final URL: https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=&rid=M-AD-SDK");
}

TEST_F(LaunchTest, ABarePresenterGetsAFullScreenPresentationWithAnimation)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();

    auto const container = containerPresentedBy(*presenter);
    ASSERT_TRUE(container);
    EXPECT_EQ(memory::peer(*container).modalPresentationStyle(), platform::UIModalPresentationStyle::FullScreen);
    EXPECT_EQ(static_cast<int>(memory::peer(*container).modalPresentationStyle()), 0);
    EXPECT_EQ(transitions(), (std::vector<memory::Transition> { { Kind::Present, container.get(), Animated::Yes } }));
}

TEST_F(LaunchTest, APresenterThatIsANavigationControllerGetsAPush)
{
    initializeAndFinish();
    auto const stack = makeStack(presenter);
    sdk().start(stack);
    platform.runUntilIdle();

    auto const container = containerOn(*stack);
    ASSERT_TRUE(container);
    EXPECT_EQ(stack->viewControllers().size(), 2U);
    EXPECT_EQ(transitions().back(), (memory::Transition { Kind::Push, container.get(), Animated::Yes }));
    EXPECT_EQ(memory::peer(*container).modalPresentationStyle(), platform::UIModalPresentationStyle::Automatic);
}

TEST_F(LaunchTest, APresenterInsideANavigationStackGetsAPushOntoThatStack)
{
    initializeAndFinish();
    auto const stack = makeStack(presenter);
    sdk().start(presenter);
    platform.runUntilIdle();

    auto const container = containerOn(*stack);
    ASSERT_TRUE(container);
    EXPECT_EQ(transitions().back(), (memory::Transition { Kind::Push, container.get(), Animated::Yes }));
    EXPECT_FALSE(memory::peer(*presenter).presentedViewController());
}

TEST_F(LaunchTest, AnEmptyNavigationControllerGetsThePushToo)
{
    initializeAndFinish();
    auto const stack = std::make_shared<memory::NavigationController>();
    sdk().start(stack);
    platform.runUntilIdle();
    EXPECT_TRUE(containerOn(*stack));
}

TEST_F(LaunchTest, WhatTheStackIsWhenTheMainQueueRunsDecidesAndNotWhatItWasAtTheCall)
{
    initializeAndFinish();
    sdk().start(presenter);
    auto const stack = makeStack(presenter);
    platform.runUntilIdle();
    EXPECT_TRUE(containerOn(*stack));
}

TEST_F(LaunchTest, TheEntryUrlIsThatOfTheMomentOfTheCall)
{
    initializeAndFinish();
    sdk().start(presenter);
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = "later"; });
    platform.runUntilIdle();
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");
}

TEST_F(LaunchTest, TheQueuedPresentationHoldsThePresenter)
{
    initializeAndFinish();
    std::weak_ptr<memory::ViewController> const weak = presenter;
    sdk().start(std::exchange(presenter, nullptr));
    EXPECT_FALSE(weak.expired());
    platform.runUntilIdle();
    EXPECT_TRUE(weak.expired());
}

TEST_F(LaunchTest, TwoStartsInARowPushInTheirOrder)
{
    initializeAndFinish();
    auto const stack = makeStack(presenter);
    sdk().start(stack);
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = "user-2"; });
    sdk().start(stack);
    platform.runUntilIdle();
    EXPECT_EQ(stack->viewControllers().size(), 3U);
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-2&rid=M-AD-SDK");
}

TEST_F(LaunchTest, AStartOnAnotherThreadChecksThereAndShowsOnTheMainQueue)
{
    initializeAndFinish();
    auto started = false;
    std::thread([&] { started = sdk().start(presenter).has_value(); }).join();
    EXPECT_TRUE(started);
    EXPECT_TRUE(transitions().empty());
    platform.runUntilIdle();
    EXPECT_TRUE(containerPresentedBy(*presenter));
}

TEST_F(LaunchTest, AFailureOnAnotherThreadIsToldOnThatThread)
{
    std::thread::id toldOn;
    ZelvoraSDKInspector::change([&](auto& properties) {
        properties.error_handler = [&toldOn](auto const&) { toldOn = std::this_thread::get_id(); };
    });
    std::thread::id startedOn;
    std::thread([&] {
        startedOn = std::this_thread::get_id();
        EXPECT_FALSE(sdk().start(presenter));
        EXPECT_EQ(toldOn, startedOn);
    }).join();
    EXPECT_NE(startedOn, std::thread::id());
    EXPECT_NE(startedOn, std::this_thread::get_id());
}

TEST_F(LaunchTest, TheHandlerMayStartAgain)
{
    auto depth = 0;
    ZelvoraSDKInspector::change([&](auto& properties) {
        properties.error_handler = [&](auto const&) {
            if (++depth == 1) {
                EXPECT_FALSE(sdk().start(presenter));
            }
        };
    });
    EXPECT_FALSE(sdk().start(presenter));
    EXPECT_EQ(depth, 2);
}

TEST_F(LaunchTest, WithoutAWebAddressAStartStopsTheProcess)
{
    initializeAndFinish();
    ZelvoraSDKInspector::change([](auto& properties) { properties.webURL = std::nullopt; });
    EXPECT_DEATH(sdk().start(presenter), "Fatal error: the entry URL was asked for without a shop id, a web address");
}

TEST_F(LaunchTest, WithoutAWebAddressCreatingAWebViewStopsTheProcess)
{
    initializeAndFinish();
    ZelvoraSDKInspector::change([](auto& properties) { properties.webURL = std::nullopt; });
    EXPECT_DEATH(
        (void)sdk().createWebView(), "Fatal error: the entry URL was asked for without a shop id, a web address");
}

class CreateWebViewFailureTest : public LaunchFailureTest {
protected:
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

TEST_F(CreateWebViewFailureTest, WithoutAShopIdThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.shopId = std::nullopt; });
    expectNoView();
}

TEST_F(CreateWebViewFailureTest, WithoutAnApiKeyThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiKey = std::nullopt; });
    expectNoView();
}

TEST_F(CreateWebViewFailureTest, WithoutAUserKeyThereIsNoViewAndAnErrorLine)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = std::nullopt; });
    expectNoView();
}

TEST_F(LaunchTest, ACreatedWebViewHasAZeroFrameNoScreenAndTheFinalUrl)
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
    EXPECT_TRUE(transitions().empty());
}

TEST_F(LaunchTest, ACreatedWebViewTakesTheSwipeFlagOfTheSDK)
{
    initializeAndFinish();
    EXPECT_FALSE(engine(*sdk().createWebView()).allowsBackForwardNavigationGestures());
    sdk().setAllowsSwipeBack(true);
    auto const view = sdk().createWebView();
    EXPECT_TRUE(engine(*view).allowsBackForwardNavigationGestures());
}

TEST_F(LaunchTest, AWebViewCanBeCreatedWhileInitializingOnceTheShopIdIsKnown)
{
    platform.trackingManager().setStatus(ATTrackingAuthorizationStatus::NotDetermined);
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

TEST_F(LaunchTest, BeforeAnyWebViewThereIsNoCurrentUrl)
{
    EXPECT_FALSE(sdk().getCurrentUrl());
    initializeAndFinish();
    EXPECT_FALSE(sdk().getCurrentUrl());
    sdk().start(presenter);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(LaunchTest, OnceTheContainerIsShownTheCurrentUrlIsThatOfItsPage)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");

    engine().navigate(url("https://shop-1.shop.zelvora.example/v1/cart"));
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/cart");
    engine().setURL(std::nullopt);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(LaunchTest, TheWebViewThatWasMadeLastHasTheCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    engine().navigate(url("https://shop-1.shop.zelvora.example/v1/container"));

    auto const created = sdk().createWebView();
    EXPECT_EQ(sdk().getCurrentUrl(), created->currentUrl());
    EXPECT_NE(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/container");

    engine(*created).navigate(url("https://shop-1.shop.zelvora.example/v1/created"));
    sdk().start(makeStack());
    platform.runUntilIdle();
    EXPECT_NE(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/created");
}

TEST_F(LaunchTest, OnceTheHostDropsACreatedWebViewThereIsNoCurrentUrl)
{
    initializeAndFinish();
    auto view = sdk().createWebView();
    ASSERT_TRUE(sdk().getCurrentUrl());
    view.reset();
    EXPECT_FALSE(sdk().activeWebView());
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(LaunchTest, ALeftContainerThatTheHostKeepsStillHasTheCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    auto const container = containerPresentedBy(*presenter);
    container->dismiss(Animated::No);
    EXPECT_FALSE(containerPresentedBy(*presenter));
    EXPECT_TRUE(sdk().getCurrentUrl());
}

TEST_F(LaunchTest, ALeftContainerThatNobodyKeepsHasNoCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    presenter->dismiss(Animated::No);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST(LaunchWithoutPlatformDeathTest, UsingTheSDKBeforeAPlatformIsInstalledStopsTheProcess)
{
    auto const message = "the SDK was used before a platform was installed: call Platform::install first";
    EXPECT_DEATH(ZelvoraSDK::shared().initialize("user", "media", true, false, false), message);
    EXPECT_DEATH((void)ZelvoraSDK::shared().createWebView(), message);
    EXPECT_DEATH(ZelvoraSDK::shared().setFooterVisible(true), message);
    EXPECT_DEATH(ZelvoraSDK::shared().sendTrackingData(), message);
}

}

}
