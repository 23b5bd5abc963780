#pragma once

#include "ZelvoraContract/support/RecordingScreen.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// What every adapter's controllers, navigation stacks and presentations promise. A harness has a screen:
///
///     void show(std::shared_ptr<platform::UIViewController> controller);
///     std::shared_ptr<platform::UINavigationController> makeNavigationController(
///         std::shared_ptr<platform::UIViewController> root);
///     // Runs the adapter until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
///
/// The tests of what stops the process run the program once more for each call that does.
template<typename Harness>
class ViewControllerContract : public testing::Test {
protected:
    using Screen = std::shared_ptr<RecordingScreen>;
    using Events = std::vector<std::string>;
    static constexpr auto Yes = platform::Animated::Yes;
    static constexpr auto No = platform::Animated::No;

    class SwipeDelegate final : public platform::UIGestureRecognizerDelegate {
    public:
        bool gestureRecognizerShouldBegin(platform::UIGestureRecognizer&) override { return true; }
        bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
            platform::UIGestureRecognizer&, platform::UIGestureRecognizer&) override
        {
            return true;
        }
    };

    Screen makeScreen(std::string name) { return std::make_shared<RecordingScreen>(std::move(name), m_record); }

    Screen makeFullScreen(std::string name)
    {
        auto screen = makeScreen(std::move(name));
        screen->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
        return screen;
    }

    void showStack()
    {
        m_stack = m_harness.makeNavigationController(m_home);
        m_harness.show(m_stack);
    }

    void expectGone(std::weak_ptr<platform::UIViewController> const& controller)
    {
        EXPECT_TRUE(m_harness.runUntil([&] { return controller.expired(); }));
    }

    Events takeEvents() { return m_record.takeNew(); }

    Record<std::string> m_record;
    Harness m_harness;
    Screen m_home = makeScreen("home");
    std::shared_ptr<platform::UINavigationController> m_stack;
};

TYPED_TEST_SUITE_P(ViewControllerContract);

TYPED_TEST_P(ViewControllerContract, APushedScreenLoadsKnowingItsStackAndThenCoversTheOneBelow)
{
    this->showStack();
    EXPECT_EQ(this->m_home->navigationController(), this->m_stack);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "home did load in a stack" }));
    auto const shop = this->makeScreen("shop");
    this->m_stack->pushViewController(shop, this->Yes);
    EXPECT_EQ(shop->navigationController(), this->m_stack);
    EXPECT_EQ(this->m_stack->viewControllers().size(), 2U);
    EXPECT_EQ(this->m_stack->viewControllers().back(), shop);
    EXPECT_EQ(
        this->takeEvents(), (std::vector<std::string> { "shop did load in a stack", "home will disappear, animated" }));
}

TYPED_TEST_P(ViewControllerContract, APoppedScreenIsToldOnceAndReleased)
{
    this->showStack();
    auto shop = this->makeScreen("shop");
    std::weak_ptr<platform::UIViewController> const watched = shop;
    this->m_stack->pushViewController(shop, this->No);
    shop.reset();
    (void)this->takeEvents();
    this->m_stack->popViewController(this->Yes);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop will disappear, animated" }));
    EXPECT_EQ(this->m_stack->viewControllers().size(), 1U);
    this->expectGone(watched);
    EXPECT_TRUE(this->takeEvents().empty());
}

TYPED_TEST_P(ViewControllerContract, TheOnlyScreenOfAStackIsNotPopped)
{
    this->showStack();
    (void)this->takeEvents();
    this->m_stack->popViewController(this->Yes);
    EXPECT_EQ(this->m_stack->viewControllers().size(), 1U);
    EXPECT_TRUE(this->takeEvents().empty());
}

TYPED_TEST_P(ViewControllerContract, TheSwipeToPopIsTheSameAtEachCallAndKeepsItsDelegate)
{
    this->showStack();
    auto const delegate = std::make_shared<typename TestFixture::SwipeDelegate>();
    std::weak_ptr<platform::UIGestureRecognizer> watched;
    {
        auto const swipe = this->m_stack->interactivePopGestureRecognizer();
        ASSERT_TRUE(swipe);
        swipe->setDelegate(delegate);
        watched = swipe;
    }
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(this->m_stack->interactivePopGestureRecognizer(), watched.lock());
    EXPECT_EQ(this->m_stack->interactivePopGestureRecognizer()->delegate(), delegate);
}

TYPED_TEST_P(ViewControllerContract, AScreenCoveredByAnotherPushIsTold)
{
    this->showStack();
    auto const shop = this->makeScreen("shop");
    this->m_stack->pushViewController(shop, this->No);
    (void)this->takeEvents();
    auto const detail = this->makeScreen("detail");
    this->m_stack->pushViewController(detail, this->Yes);
    EXPECT_EQ(this->takeEvents(),
        (std::vector<std::string> { "detail did load in a stack", "shop will disappear, animated" }));
    this->m_stack->popViewController(this->No);
    this->m_stack->popViewController(this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "detail will disappear", "shop will disappear" }));
}

TYPED_TEST_P(ViewControllerContract, AFullScreenPresentationCoversThePresenterUntilItIsDismissed)
{
    this->m_harness.show(this->m_home);
    (void)this->takeEvents();
    auto shop = this->makeFullScreen("shop");
    std::weak_ptr<platform::UIViewController> const watched = shop;
    this->m_home->present(shop, this->Yes);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop did load", "home will disappear, animated" }));
    EXPECT_FALSE(shop->navigationController());
    shop->dismiss(this->Yes);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop will disappear, animated" }));
    shop.reset();
    this->expectGone(watched);
    EXPECT_TRUE(this->takeEvents().empty());
    // The presenter is on the screen again, as the next event shows.
    auto const other = this->makeFullScreen("other");
    this->m_home->present(other, this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "other did load", "home will disappear" }));
}

TYPED_TEST_P(ViewControllerContract, APresentationOfAnotherStyleLeavesThePresenterOnTheScreen)
{
    this->m_harness.show(this->m_home);
    (void)this->takeEvents();
    auto const shop = this->makeScreen("shop");
    this->m_home->present(shop, this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop did load" }));
    this->m_home->dismiss(this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop will disappear" }));
}

TYPED_TEST_P(ViewControllerContract, APresenterEndsThePresentationThatItMade)
{
    this->m_harness.show(this->m_home);
    auto shop = this->makeFullScreen("shop");
    std::weak_ptr<platform::UIViewController> const watched = shop;
    this->m_home->present(shop, this->No);
    shop.reset();
    (void)this->takeEvents();
    this->m_home->dismiss(this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop will disappear" }));
    this->expectGone(watched);
}

TYPED_TEST_P(ViewControllerContract, OnlyOnePresentationIsMadeAtATime)
{
    this->m_harness.show(this->m_home);
    auto const shop = this->makeFullScreen("shop");
    this->m_home->present(shop, this->No);
    (void)this->takeEvents();
    auto other = this->makeFullScreen("other");
    std::weak_ptr<platform::UIViewController> const watched = other;
    this->m_home->present(other, this->No);
    other.reset();
    this->expectGone(watched);
    EXPECT_TRUE(this->takeEvents().empty());
}

TYPED_TEST_P(ViewControllerContract, DismissingAScreenEndsAllPresentationsAboveIt)
{
    this->m_harness.show(this->m_home);
    auto lower = this->makeFullScreen("lower");
    auto upper = this->makeFullScreen("upper");
    std::weak_ptr<platform::UIViewController> const watchedLower = lower;
    std::weak_ptr<platform::UIViewController> const watchedUpper = upper;
    this->m_home->present(lower, this->No);
    lower->present(upper, this->No);
    (void)this->takeEvents();
    lower.reset();
    upper.reset();
    this->m_home->dismiss(this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "upper will disappear" }));
    this->expectGone(watchedUpper);
    this->expectGone(watchedLower);
}

TYPED_TEST_P(ViewControllerContract, ScreensThatEndTogetherAreToldFromTheTopDown)
{
    this->m_harness.show(this->m_home);
    auto const lower = this->makeScreen("lower");
    auto const middle = this->makeScreen("middle");
    auto const upper = this->makeScreen("upper");
    this->m_home->present(lower, this->No);
    lower->present(middle, this->No);
    middle->present(upper, this->No);
    (void)this->takeEvents();
    this->m_home->dismiss(this->Yes);
    EXPECT_EQ(this->takeEvents(),
        (std::vector<std::string> {
            "upper will disappear, animated", "middle will disappear, animated", "lower will disappear, animated" }));
}

TYPED_TEST_P(ViewControllerContract, AScreenBeingDismissedMayDismissTheOneBelow)
{
    for (auto const animated : { this->No, this->Yes }) {
        if (!this->m_home->isViewLoaded())
            this->m_harness.show(this->m_home);
        auto lower = this->makeFullScreen("lower");
        auto upper = this->makeFullScreen("upper");
        this->m_home->present(lower, this->No);
        lower->present(upper, this->No);
        (void)this->takeEvents();
        upper->actOnDisappearance = [this, animated] { this->m_home->dismiss(animated); };
        upper->dismiss(animated);
        (void)this->takeEvents();
        std::weak_ptr<platform::UIViewController> const watchedLower = std::exchange(lower, nullptr);
        std::weak_ptr<platform::UIViewController> const watchedUpper = std::exchange(upper, nullptr);
        this->expectGone(watchedUpper);
        this->expectGone(watchedLower);
        // Nothing covers the home screen any more.
        auto const other = this->makeFullScreen("other");
        this->m_home->present(other, this->No);
        EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "other did load", "home will disappear" }));
        other->dismiss(this->No);
        (void)this->takeEvents();
    }
}

TYPED_TEST_P(ViewControllerContract, DismissingAPushedScreenDoesNothing)
{
    this->showStack();
    auto const shop = this->makeScreen("shop");
    this->m_stack->pushViewController(shop, this->No);
    (void)this->takeEvents();
    shop->dismiss(this->No);
    EXPECT_TRUE(this->takeEvents().empty());
    EXPECT_EQ(this->m_stack->viewControllers().size(), 2U);
}

TYPED_TEST_P(ViewControllerContract, DismissingAScreenOfAPresentedStackEndsTheStack)
{
    this->m_harness.show(this->m_home);
    auto inner = this->makeScreen("inner");
    auto stack = this->m_harness.makeNavigationController(inner);
    stack->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    this->m_home->present(stack, this->No);
    auto shop = this->makeScreen("shop");
    stack->pushViewController(shop, this->No);
    (void)this->takeEvents();
    std::weak_ptr<platform::UIViewController> const watched = stack;
    std::weak_ptr<platform::UIViewController> const watchedShop = shop;
    stack.reset();
    inner.reset();
    shop->dismiss(this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "shop will disappear" }));
    shop.reset();
    this->expectGone(watched);
    this->expectGone(watchedShop);
}

TYPED_TEST_P(ViewControllerContract, AStackCoveredByAPresentationTellsItsTopScreen)
{
    this->showStack();
    auto const shop = this->makeScreen("shop");
    this->m_stack->pushViewController(shop, this->No);
    (void)this->takeEvents();
    auto const other = this->makeFullScreen("other");
    shop->present(other, this->No);
    EXPECT_EQ(this->takeEvents(), (std::vector<std::string> { "other did load", "shop will disappear" }));
    // The screen was covered already, so popping it does not tell it again.
    this->m_stack->popViewController(this->No);
    EXPECT_TRUE(this->takeEvents().empty());
}

TYPED_TEST_P(ViewControllerContract, PushingNothingOrWhatHasAPlaceStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    this->showStack();
    auto const shop = this->makeScreen("shop");
    auto const presented = this->makeScreen("presented");
    this->m_stack->pushViewController(shop, this->No);
    shop->present(presented, this->No);
    EXPECT_DEATH(this->m_stack->pushViewController(nullptr, this->No), "");
    EXPECT_DEATH(this->m_stack->pushViewController(shop, this->No), "");
    EXPECT_DEATH(this->m_stack->pushViewController(this->m_home, this->No), "");
    EXPECT_DEATH(this->m_stack->pushViewController(presented, this->No), "");
    EXPECT_DEATH(this->m_stack->pushViewController(this->m_stack, this->No), "");
    EXPECT_DEATH(this->m_harness.makeNavigationController(shop), "");
}

TYPED_TEST_P(ViewControllerContract, PresentingNothingOrWhatHasAPlaceStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    this->showStack();
    auto const shop = this->makeScreen("shop");
    auto const presented = this->makeScreen("presented");
    this->m_stack->pushViewController(shop, this->No);
    EXPECT_DEATH(shop->present(nullptr, this->No), "");
    EXPECT_DEATH(shop->present(shop, this->No), "");
    EXPECT_DEATH(shop->present(this->m_home, this->No), "");
    EXPECT_DEATH(shop->present(this->m_stack, this->No), "");
    shop->present(presented, this->No);
    EXPECT_DEATH(presented->present(presented, this->No), "");
    EXPECT_DEATH(presented->present(shop, this->No), "");
    EXPECT_DEATH(presented->present(this->m_stack, this->No), "");
}

TYPED_TEST_P(ViewControllerContract, AScreenThatHasLeftIsShownAgain)
{
    this->showStack();
    auto const shop = this->makeFullScreen("shop");
    for (auto const animated : { this->No, this->Yes }) {
        this->m_stack->pushViewController(shop, animated);
        this->m_stack->popViewController(animated);
        this->m_stack->pushViewController(shop, animated);
        EXPECT_EQ(shop->navigationController(), this->m_stack);
        this->m_stack->popViewController(animated);
    }
}

TYPED_TEST_P(ViewControllerContract, ScreensOpenedAndClosedManyTimesLeaveNothingBehind)
{
    this->showStack();
    std::vector<std::weak_ptr<platform::UIViewController>> watched;
    for (int round = 0; round < 50; ++round) {
        auto const pushed = this->makeScreen("pushed");
        this->m_stack->pushViewController(pushed, round % 2 == 0 ? this->Yes : this->No);
        auto const presented = this->makeFullScreen("presented");
        pushed->present(presented, round % 3 == 0 ? this->Yes : this->No);
        presented->dismiss(round % 5 == 0 ? this->Yes : this->No);
        this->m_stack->popViewController(round % 7 == 0 ? this->Yes : this->No);
        watched.insert(watched.end(), { pushed, presented });
    }
    for (auto const& controller : watched)
        this->expectGone(controller);
    EXPECT_EQ(this->m_stack->viewControllers().size(), 1U);
}

REGISTER_TYPED_TEST_SUITE_P(ViewControllerContract, APushedScreenLoadsKnowingItsStackAndThenCoversTheOneBelow,
    APoppedScreenIsToldOnceAndReleased, TheOnlyScreenOfAStackIsNotPopped,
    TheSwipeToPopIsTheSameAtEachCallAndKeepsItsDelegate, AScreenCoveredByAnotherPushIsTold,
    AFullScreenPresentationCoversThePresenterUntilItIsDismissed,
    APresentationOfAnotherStyleLeavesThePresenterOnTheScreen, APresenterEndsThePresentationThatItMade,
    OnlyOnePresentationIsMadeAtATime, DismissingAScreenEndsAllPresentationsAboveIt, DismissingAPushedScreenDoesNothing,
    ScreensThatEndTogetherAreToldFromTheTopDown, AScreenBeingDismissedMayDismissTheOneBelow,
    DismissingAScreenOfAPresentedStackEndsTheStack, AStackCoveredByAPresentationTellsItsTopScreen,
    PushingNothingOrWhatHasAPlaceStopsTheProcess, PresentingNothingOrWhatHasAPlaceStopsTheProcess,
    AScreenThatHasLeftIsShownAgain, ScreensOpenedAndClosedManyTimesLeaveNothingBehind);

}
