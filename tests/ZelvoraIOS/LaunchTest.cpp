#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <optional>
#include <thread>
#include <utility>

namespace zelvora::tests {

namespace {

using Kind = memory::Transition::Kind;

class LaunchTest : public AuthorizedContainerTest {
protected:
    [[nodiscard]] std::vector<memory::Transition> const& transitions() const { return platform.screen().transitions(); }
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

TEST_F(LaunchTest, ADeferredPresenterIsKeptAliveUntilInitializationEndsAndThenReleased)
{
    std::weak_ptr<memory::ViewController> const weak = presenter;
    initialize();
    sdk().start(std::exchange(presenter, nullptr));
    EXPECT_FALSE(weak.expired());

    finishInitialization();
    EXPECT_FALSE(ZelvoraSDKInspector::properties().pendingViewController);
    EXPECT_TRUE(weak.expired());
}

TEST_F(LaunchTest, ASecondDeferredStartReleasesTheFirstPresenter)
{
    std::weak_ptr<memory::ViewController> const weak = presenter;
    initialize();
    sdk().start(std::exchange(presenter, nullptr));
    sdk().start(std::make_shared<memory::ViewController>());
    platform.mainQueue().runAll();
    EXPECT_TRUE(weak.expired());
}

// A screen that notes where it is destroyed.
class WatchedScreen final : public memory::ViewController {
public:
    explicit WatchedScreen(std::thread::id& destroyedOn) : m_destroyedOn(destroyedOn) { }
    ~WatchedScreen() override { m_destroyedOn = std::this_thread::get_id(); }

private:
    std::thread::id& m_destroyedOn;
};

TEST_F(LaunchTest, APresenterThatAStartOnAnotherThreadReplacesIsDestroyedOnTheMainThread)
{
    std::thread::id destroyedOn;
    initialize();
    sdk().start(std::make_shared<WatchedScreen>(destroyedOn));
    std::thread([] { sdk().start(std::make_shared<memory::ViewController>()); }).join();
    EXPECT_EQ(destroyedOn, std::thread::id());
    platform.mainQueue().runAll();
    EXPECT_EQ(destroyedOn, std::this_thread::get_id());
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

TEST_F(LaunchTest, AStartBeforeInitializeFailsWithE001AndCallsNoHandler)
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

TEST_F(LaunchTest, TheStackWhenTheMainQueueRunsDecidesAndNotTheStackAtTheCall)
{
    initializeAndFinish();
    sdk().start(presenter);
    auto const stack = makeStack(presenter);
    platform.runUntilIdle();
    EXPECT_TRUE(containerOn(*stack));
}

TEST_F(LaunchTest, TheQueuedPresentationKeepsThePresenterAlive)
{
    initializeAndFinish();
    std::weak_ptr<memory::ViewController> const weak = presenter;
    sdk().start(std::exchange(presenter, nullptr));
    EXPECT_FALSE(weak.expired());
    platform.runUntilIdle();
    EXPECT_TRUE(weak.expired());
}

TEST_F(LaunchTest, OfTwoStartsInARowOnABarePresenterOnlyTheFirstPresents)
{
    initializeAndFinish();
    sdk().start(presenter);
    sdk().start(presenter);
    platform.runUntilIdle();
    EXPECT_TRUE(containerPresentedBy(*presenter));
    EXPECT_EQ(transitions().size(), 1U);
    EXPECT_EQ(platform.screen().complaints().size(), 1U);
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

TEST_F(LaunchTest, AFailureOnAnotherThreadIsReportedOnThatThread)
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

}

}
