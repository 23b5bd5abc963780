#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::UIGestureRecognizer;
using platform::UIGestureRecognizerState;
using platform::UIScreenEdgePanGestureRecognizer;
using Kind = memory::Transition::Kind;

class BackSwipeTest : public ContainerTest {
protected:
    BackSwipeTest() { sdk().setAllowsSwipeBack(true); }

    void push(std::shared_ptr<memory::NavigationController> onto)
    {
        stack = std::move(onto);
        container = std::make_shared<ZelvoraIOSViewController>(entryUrl);
        stack->pushViewController(container, Animated::No);
        platform.runUntilIdle();
    }
    void push() { push(makeStack()); }

    void present()
    {
        container = std::make_shared<ZelvoraIOSViewController>(entryUrl);
        presenter->present(container, Animated::No);
        platform.runUntilIdle();
    }

    std::size_t swipe(memory::GestureStates const& states = memory::completed()) const
    {
        return memory::edgePan(container->view(), platform::UIRectEdge::Left, states);
    }

    [[nodiscard]] std::shared_ptr<UIScreenEdgePanGestureRecognizer> edgePan() const
    {
        auto const& recognizers = container->view().gestureRecognizers();
        return recognizers.empty() ? nullptr
                                   : std::dynamic_pointer_cast<UIScreenEdgePanGestureRecognizer>(recognizers[0]);
    }

    [[nodiscard]] bool isPresented() const { return containerPresentedBy(*presenter) == container; }
    [[nodiscard]] bool isOnTop() const { return stack->topViewController() == container; }

    std::shared_ptr<memory::ViewController> presenter = std::make_shared<memory::ViewController>();
    std::shared_ptr<memory::NavigationController> stack;
    std::shared_ptr<ZelvoraIOSViewController> container;
};

TEST_F(BackSwipeTest, OneRecogniserForTheLeftEdgeIsInstalledOnTheRootView)
{
    present();
    ASSERT_EQ(container->view().gestureRecognizers().size(), 1U);
    auto const recognizer = edgePan();
    ASSERT_TRUE(recognizer);
    EXPECT_EQ(recognizer->edges(), platform::UIRectEdge::Left);
    EXPECT_EQ(static_cast<int>(recognizer->edges()), 2);
    EXPECT_EQ(recognizer->delegate(), container);
    EXPECT_TRUE(recognizer->isEnabled());
}

TEST_F(BackSwipeTest, TheStacksOwnSwipeIsEnabledAndAsksThisController)
{
    auto const onto = makeStack();
    onto->interactivePopGestureRecognizer()->setEnabled(false);
    push(onto);
    EXPECT_TRUE(stack->interactivePopGestureRecognizer()->isEnabled());
    EXPECT_EQ(stack->interactivePopGestureRecognizer()->delegate(), container);
    EXPECT_TRUE(edgePan());
}

TEST_F(BackSwipeTest, AStackWithoutASwipeOfItsOwnStillGetsTheEdgeSwipe)
{
    push(makeStack(std::make_shared<memory::ViewController>(), memory::NavigationController::SwipeToPop::No));
    EXPECT_FALSE(stack->interactivePopGestureRecognizer());
    EXPECT_TRUE(edgePan());
}

TEST_F(BackSwipeTest, IfSwipingIsNotAllowedNothingIsInstalledAndTheStacksSwipeIsUnchanged)
{
    sdk().setAllowsSwipeBack(false);
    auto const onto = makeStack();
    onto->interactivePopGestureRecognizer()->setEnabled(false);
    push(onto);
    EXPECT_TRUE(container->view().gestureRecognizers().empty());
    EXPECT_FALSE(stack->interactivePopGestureRecognizer()->isEnabled());
    EXPECT_FALSE(stack->interactivePopGestureRecognizer()->delegate());
    EXPECT_FALSE(engine().allowsBackForwardNavigationGestures());
    EXPECT_EQ(swipe(), 0U);
    EXPECT_TRUE(isOnTop());
}

TEST_F(BackSwipeTest, AllowingSwipesAfterTheScreenWasLoadedInstallsNothing)
{
    sdk().setAllowsSwipeBack(false);
    present();
    sdk().setAllowsSwipeBack(true);
    EXPECT_TRUE(container->view().gestureRecognizers().empty());
    EXPECT_EQ(swipe(), 0U);
}

TEST_F(BackSwipeTest, WhetherAnyGestureMayBeginIsTheFlagOfTheMoment)
{
    push();
    UIGestureRecognizer other;
    EXPECT_TRUE(container->gestureRecognizerShouldBegin(*edgePan()));
    EXPECT_TRUE(container->gestureRecognizerShouldBegin(*stack->interactivePopGestureRecognizer()));
    EXPECT_TRUE(container->gestureRecognizerShouldBegin(other));
    sdk().setAllowsSwipeBack(false);
    EXPECT_FALSE(container->gestureRecognizerShouldBegin(*edgePan()));
    EXPECT_FALSE(container->gestureRecognizerShouldBegin(*stack->interactivePopGestureRecognizer()));
    EXPECT_FALSE(container->gestureRecognizerShouldBegin(other));

    EXPECT_EQ(swipe(), 0U);
    EXPECT_FALSE(memory::perform(*stack->interactivePopGestureRecognizer()));
    EXPECT_TRUE(isOnTop());
}

TEST_F(BackSwipeTest, AnyTwoGesturesMayBeRecognisedTogether)
{
    push();
    UIGestureRecognizer other;
    auto& pop = *stack->interactivePopGestureRecognizer();
    for (bool const allowed : { true, false }) {
        sdk().setAllowsSwipeBack(allowed);
        EXPECT_TRUE(container->gestureRecognizerShouldRecognizeSimultaneouslyWith(*edgePan(), pop));
        EXPECT_TRUE(container->gestureRecognizerShouldRecognizeSimultaneouslyWith(pop, *edgePan()));
        EXPECT_TRUE(container->gestureRecognizerShouldRecognizeSimultaneouslyWith(other, *edgePan()));
        EXPECT_TRUE(container->gestureRecognizerShouldRecognizeSimultaneouslyWith(other, other));
    }
}

TEST_F(BackSwipeTest, TheStacksSwipeAndTheEdgeSwipeMayBothAnswerOneGesture)
{
    auto const below = std::make_shared<memory::ViewController>();
    auto const onto = makeStack();
    onto->pushViewController(below, Animated::No);
    push(onto);
    auto const pop = stack->interactivePopGestureRecognizer();
    auto const edge = edgePan();
    ASSERT_TRUE(pop->shouldBegin());
    ASSERT_TRUE(edge->shouldBegin());
    pop->recognize(UIGestureRecognizerState::Ended);
    EXPECT_EQ(stack->topViewController(), below);
    // The controller is off the stack by now, so that its own swipe has nothing to do.
    edge->recognize(UIGestureRecognizerState::Ended);
    EXPECT_EQ(stack->topViewController(), below);
}

TEST_F(BackSwipeTest, WithWebHistoryASwipeGoesBackOnePageAndNeverLeavesTheScreen)
{
    push();
    engine().navigate(url("https://shop.example/1"));
    engine().navigate(url("https://shop.example/2"));
    auto const transitions = platform.screen().transitions();

    EXPECT_EQ(swipe(), 1U);
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop.example/1");
    EXPECT_EQ(swipe(), 1U);
    EXPECT_EQ(sdk().getCurrentUrl(), entryUrl);
    EXPECT_EQ(platform.screen().transitions(), transitions);
    EXPECT_EQ(std::ranges::count(engine().calls(), "goBack"), 2);
    EXPECT_TRUE(isOnTop());

    swipe();
    EXPECT_FALSE(isOnTop());
}

TEST_F(BackSwipeTest, APresentedContainerWithWebHistoryStaysToo)
{
    present();
    engine().navigate(url("https://shop.example/1"));
    swipe();
    EXPECT_TRUE(isPresented());
    EXPECT_EQ(sdk().getCurrentUrl(), entryUrl);
}

TEST_F(BackSwipeTest, WithoutWebHistoryAPushedContainerIsPoppedWithAnimation)
{
    push();
    swipe();
    EXPECT_EQ(stack->viewControllers().size(), 1U);
    EXPECT_EQ(
        platform.screen().transitions().back(), (memory::Transition { Kind::Pop, container.get(), Animated::Yes }));
    EXPECT_EQ(std::ranges::count(engine().calls(), "goBack"), 0);
}

TEST_F(BackSwipeTest, WithoutWebHistoryTheTopOfTheStackIsPoppedWhateverItIs)
{
    push();
    auto const above = std::make_shared<memory::ViewController>();
    stack->pushViewController(above, Animated::No);
    swipe();
    EXPECT_EQ(platform.screen().transitions().back(), (memory::Transition { Kind::Pop, above.get(), Animated::Yes }));
    EXPECT_TRUE(isOnTop());
}

TEST_F(BackSwipeTest, WithoutWebHistoryAPresentedContainerIsDismissedWithAnimation)
{
    present();
    swipe();
    EXPECT_FALSE(containerPresentedBy(*presenter));
    EXPECT_EQ(
        platform.screen().transitions().back(), (memory::Transition { Kind::Dismiss, container.get(), Animated::Yes }));
}

TEST_F(BackSwipeTest, AloneOnAPresentedStackTheContainerIsDismissedWithTheStack)
{
    auto const onto = std::make_shared<memory::NavigationController>();
    presenter->present(onto, Animated::No);
    push(onto);
    swipe();
    EXPECT_FALSE(memory::peer(*presenter).presentedViewController());
    EXPECT_EQ(
        platform.screen().transitions().back(), (memory::Transition { Kind::Dismiss, onto.get(), Animated::Yes }));
    EXPECT_TRUE(isOnTop());
}

TEST_F(BackSwipeTest, TheOnlyScreenOfAStackThatIsNotPresentedStays)
{
    push(std::make_shared<memory::NavigationController>());
    auto const transitions = platform.screen().transitions();
    swipe();
    EXPECT_TRUE(isOnTop());
    EXPECT_EQ(platform.screen().transitions(), transitions);
}

class UnfinishedSwipeTest
    : public BackSwipeTest
    , public ::testing::WithParamInterface<UIGestureRecognizerState> { };

TEST_P(UnfinishedSwipeTest, DoesNothingAndDoesNotAskTheDelegate)
{
    auto const delegate = std::make_shared<DelegateSpy>();
    sdk().setDelegate(delegate);
    present();
    engine().navigate(url("https://shop.example/1"));
    edgePan()->recognize(GetParam());
    EXPECT_TRUE(delegate->askedWith.empty());
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop.example/1");
    EXPECT_TRUE(isPresented());
}

INSTANTIATE_TEST_SUITE_P(States, UnfinishedSwipeTest,
    ::testing::Values(UIGestureRecognizerState::Possible, UIGestureRecognizerState::Began,
        UIGestureRecognizerState::Changed, UIGestureRecognizerState::Cancelled, UIGestureRecognizerState::Failed));

TEST_F(BackSwipeTest, ACancelledSwipeDoesNothing)
{
    present();
    EXPECT_EQ(swipe(memory::brokenOff()), 1U);
    EXPECT_TRUE(isPresented());
}

TEST_F(BackSwipeTest, TheEndAloneCountsHoweverShortTheSwipe)
{
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Ended), 3);
    present();
    EXPECT_EQ(swipe({ UIGestureRecognizerState::Ended }), 1U);
    EXPECT_FALSE(containerPresentedBy(*presenter));
}

TEST_F(BackSwipeTest, SwipesFromOtherEdgesAreNotTaken)
{
    present();
    for (auto const edge : { platform::UIRectEdge::Right, platform::UIRectEdge::Top, platform::UIRectEdge::Bottom })
        EXPECT_EQ(memory::edgePan(container->view(), edge), 0U);
    EXPECT_TRUE(isPresented());
}

class BackSwipeDelegateTest : public BackSwipeTest {
protected:
    BackSwipeDelegateTest() { sdk().setDelegate(delegate); }

    std::shared_ptr<DelegateSpy> delegate = std::make_shared<DelegateSpy>();
};

TEST_F(BackSwipeDelegateTest, TheHostIsAskedOncePerSwipeWithTheContainersWebView)
{
    present();
    engine().navigate(url("https://shop.example/1"));
    auto const* const webView = sdk().activeWebView().get();
    auto const created = makeContainer();
    ASSERT_NE(sdk().activeWebView().get(), webView);

    swipe();
    EXPECT_EQ(delegate->askedWith, std::vector { webView });
}

TEST_F(BackSwipeDelegateTest, TheHostIsAskedBeforeThePageGoesBack)
{
    present();
    engine().navigate(url("https://shop.example/1"));
    std::optional<std::string> urlWhenAsked;
    delegate->onAsked = [&] { urlWhenAsked = sdk().getCurrentUrl(); };
    swipe();
    EXPECT_EQ(urlWhenAsked, "https://shop.example/1");
    EXPECT_EQ(sdk().getCurrentUrl(), entryUrl);
}

TEST_F(BackSwipeDelegateTest, AVetoLeavesEvenTheWebHistoryAlone)
{
    delegate->answer = false;
    present();
    engine().navigate(url("https://shop.example/1"));
    swipe();
    EXPECT_EQ(delegate->askedWith.size(), 1U);
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop.example/1");
    EXPECT_EQ(std::ranges::count(engine().calls(), "goBack"), 0);
    EXPECT_TRUE(isPresented());
}

TEST_F(BackSwipeDelegateTest, AVetoKeepsTheScreenToo)
{
    delegate->answer = false;
    push();
    swipe();
    EXPECT_TRUE(isOnTop());
    EXPECT_EQ(delegate->dismissals, 0U);
}

TEST_F(BackSwipeDelegateTest, WithTheHostsConsentTheContainerLeavesAndSaysSo)
{
    push();
    swipe();
    EXPECT_FALSE(isOnTop());
    EXPECT_EQ(delegate->askedWith.size(), 1U);
    EXPECT_EQ(delegate->dismissals, 1U);
}

TEST_F(BackSwipeDelegateTest, AReleasedDelegateIsNotAsked)
{
    push();
    delegate.reset();
    swipe();
    EXPECT_FALSE(isOnTop());
}

TEST_F(BackSwipeDelegateTest, AHostThatLeavesByItselfAndVetoesIsLeftAtThat)
{
    delegate->answer = false;
    push();
    delegate->onAsked = [this] {
        stack->popViewController(Animated::No);
        container.reset();
    };
    auto const root = stack->viewControllers().front();
    auto const view = container->view().shared_from_this();
    memory::edgePan(*view);
    EXPECT_EQ(stack->topViewController(), root);
    EXPECT_EQ(platform.screen().transitions().back().animated, Animated::No);
}

TEST_F(BackSwipeDelegateTest, AHostThatLeavesByItselfAndConsentsDoesNotLeaveTwice)
{
    auto const onto = makeStack();
    auto const below = std::make_shared<memory::ViewController>();
    onto->pushViewController(below, Animated::No);
    push(onto);
    delegate->onAsked = [this] {
        stack->popViewController(Animated::No);
        container.reset();
    };
    auto const view = container->view().shared_from_this();
    memory::edgePan(*view);
    EXPECT_EQ(stack->topViewController(), below);
}

TEST_F(BackSwipeTest, ARecogniserThatOutlivesItsControllerDoesNothing)
{
    present();
    auto const recognizer = edgePan();
    auto const webView = platform.webViews().back();
    webView->navigate(url("https://shop.example/1"));
    presenter->dismiss(Animated::No);
    container.reset();
    recognizer->recognize(UIGestureRecognizerState::Ended);
    EXPECT_EQ(webView->url()->absoluteString(), "https://shop.example/1");
    EXPECT_FALSE(recognizer->delegate());
}

TEST_F(BackSwipeTest, TheFlagIsThatOfInitialize)
{
    sdk().setAllowsSwipeBack(false);
    initializeAndFinish({ .allowsSwipeBack = true });
    sdk().start(presenter);
    platform.runUntilIdle();
    container = containerPresentedBy(*presenter);
    ASSERT_TRUE(container);
    EXPECT_TRUE(edgePan());
    EXPECT_TRUE(engine().allowsBackForwardNavigationGestures());
}

}

}
