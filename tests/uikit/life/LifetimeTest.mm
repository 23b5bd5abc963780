#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/life/PhoneTest.h"

namespace zelvora::tests {

namespace {

class LifetimeTest : public PhoneTest {
protected:
    LifetimeTest() { makeReady(); }

    void expectNothingIsLeft()
    {
        settle();
        EXPECT_EQ([::ZelvoraIOSViewController liveCount], 0);
        EXPECT_EQ([::ZelvoraWebView liveCount], 0);
        EXPECT_EQ(m_sdk.activeWebView(), nullptr);
    }
};

constexpr int manyTimes = 100;
NSString* const entryPage = @"https://mall.shop.zelvora.example/";

}

TEST_F(LifetimeTest, ContainersThatAreOpenedAndPoppedManyTimesLeaveNothing)
{
    UINavigationController* stack = showStack();
    for (int round = 0; round < manyTimes; ++round) {
        @autoreleasepool {
            ASSERT_TRUE(m_sdk.start(uikit::retain(stack)));
            doubles::runMainQueue();
            ASSERT_EQ(stack.viewControllers.count, 2U);
            EXPECT_EQ([::ZelvoraIOSViewController liveCount], 1);
            [stack popViewControllerAnimated:round % 2 == 0];
        }
        settle();
        ASSERT_EQ([::ZelvoraIOSViewController liveCount], 0) << round;
    }
    EXPECT_EQ(m_delegate->dismissals, manyTimes);
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, ContainersThatArePresentedAndDismissedManyTimesLeaveNothing)
{
    UIViewController* screen = showScreen();
    for (int round = 0; round < manyTimes; ++round) {
        @autoreleasepool {
            ASSERT_TRUE(m_sdk.start(uikit::retain(screen)));
            doubles::runMainQueue();
            ASSERT_TRUE(screen.presentedViewController != nil);
            EXPECT_EQ(screen.presentedViewController.modalPresentationStyle, UIModalPresentationFullScreen);
            [screen dismissViewControllerAnimated:round % 2 == 0 completion:nil];
        }
        settle();
        ASSERT_EQ([::ZelvoraIOSViewController liveCount], 0) << round;
    }
    EXPECT_EQ(m_delegate->dismissals, manyTimes);
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, ThePageClosesAPresentedContainer)
{
    UIViewController* screen = showScreen();
    @autoreleasepool {
        ASSERT_TRUE(m_sdk.start(uikit::retain(screen)));
        doubles::runMainQueue();
        WKWebView* page = pageIn(webViewIn(screen.presentedViewController.view));
        EXPECT_TRUE([page doublePost:@ { @"action" : @"close" } toHandler:@"zelvora"]);
    }
    settle();
    EXPECT_TRUE(screen.presentedViewController == nil);
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AViewThatTheHostPlacesLivesAsLongAsTheHostKeepsIt)
{
    UIViewController* screen = showScreen();
    for (int round = 0; round < manyTimes; ++round) {
        __weak UIView* weak = nil;
        @autoreleasepool {
            UIView* native = uikit::nativeOf(*m_sdk.createWebView());
            weak = native;
            ASSERT_TRUE([native isKindOfClass:[::ZelvoraWebView class]]);
            [screen.view addSubview:native];
        }
        settle();
        ASSERT_NE(m_sdk.activeWebView(), nullptr);
        EXPECT_TRUE(m_sdk.getCurrentUrl());
        @autoreleasepool {
            [weak removeFromSuperview];
        }
        settle();
        ASSERT_TRUE(weak == nil);
    }
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AViewThatTheHostMakesEndsWithTheHostsReference)
{
    for (int round = 0; round < manyTimes; ++round) {
        __weak WKWebView* weak = nil;
        @autoreleasepool {
            ::ZelvoraWebView* native = [[::ZelvoraWebView alloc] initForHostWithURL:entryPage];
            WKWebView* page = pageIn(native);
            ASSERT_TRUE(page != nil);
            weak = page;
            EXPECT_NE(uikit::ownerOf(native), nullptr);
            EXPECT_EQ(uikit::wrap(native), uikit::ownerOf(native));
            EXPECT_EQ(doubles::loadedRequests(page).size(), 1U);
            EXPECT_EQ(page.configuration.userContentController.doubleHandlerCount, 1U);
        }
        settle();
        ASSERT_TRUE(weak == nil);
        ASSERT_EQ([::ZelvoraWebView liveCount], 0);
    }
}

TEST_F(LifetimeTest, AContainerThatTheHostMakesCanBePushedAndPresented)
{
    UINavigationController* stack = showStack();
    for (int round = 0; round < manyTimes; ++round) {
        @autoreleasepool {
            UIViewController* made = [[::ZelvoraIOSViewController alloc] initForHostWithURL:entryPage];
            bool const isPushed = round % 2 == 0;
            if (isPushed)
                [stack pushViewController:made animated:NO];
            else
                [stack presentViewController:made animated:NO completion:nil];
            ASSERT_TRUE(pageIn(webViewIn(made.view)) != nil);
            if (isPushed)
                [stack popViewControllerAnimated:NO];
            else
                [stack dismissViewControllerAnimated:NO completion:nil];
        }
        settle();
        ASSERT_EQ([::ZelvoraIOSViewController liveCount], 0) << round;
    }
    EXPECT_EQ(m_delegate->dismissals, manyTimes);
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AContainerThatIsNeverShownEndsWithTheHostsReference)
{
    @autoreleasepool {
        UIViewController* made = [[::ZelvoraIOSViewController alloc] initForHostWithURL:entryPage];
        EXPECT_FALSE(made.isViewLoaded);
        EXPECT_EQ([::ZelvoraIOSViewController liveCount], 1);
    }
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AContainerThatIsPushedAgainWorksAgain)
{
    UINavigationController* stack = showStack();
    @autoreleasepool {
        UIViewController* made = [[::ZelvoraIOSViewController alloc] initForHostWithURL:entryPage];
        for (int round = 0; round < 2; ++round) {
            [stack pushViewController:made animated:NO];
            EXPECT_TRUE(pageIn(webViewIn(made.view)) != nil);
            [stack popViewControllerAnimated:NO];
        }
        EXPECT_EQ(m_delegate->dismissals, 2);
    }
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AViewThatTheHostKeepsBeyondItsContainerStillWorks)
{
    UINavigationController* stack = showStack();
    UIView* kept = nil;
    @autoreleasepool {
        ASSERT_TRUE(m_sdk.start(uikit::retain(stack)));
        doubles::runMainQueue();
        kept = uikit::nativeOf(*m_sdk.activeWebView());
        [stack popViewControllerAnimated:NO];
    }
    settle();
    EXPECT_EQ([::ZelvoraIOSViewController liveCount], 0);
    EXPECT_EQ([::ZelvoraWebView liveCount], 1);
    @autoreleasepool {
        WKWebView* page = pageIn(kept);
        ASSERT_TRUE(page != nil);
        EXPECT_TRUE([page doublePost:@ { @"action" : @"close" } toHandler:@"zelvora"]);
        settle();
        auto const owner = std::dynamic_pointer_cast<zelvora::ZelvoraWebView>(uikit::ownerOf(kept));
        ASSERT_NE(owner, nullptr);
        EXPECT_EQ(owner->parentViewController(), nullptr);
    }
    kept = nil;
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AnInnerWebViewThatTheHostKeepsReachesNothingOfTheSDK)
{
    UINavigationController* stack = showStack();
    WKWebView* kept = nil;
    @autoreleasepool {
        ASSERT_TRUE(m_sdk.start(uikit::retain(stack)));
        doubles::runMainQueue();
        kept = pageIn(webViewIn(stack.topViewController.view));
        [stack popViewControllerAnimated:NO];
    }
    expectNothingIsLeft();
    @autoreleasepool {
        EXPECT_EQ(kept.configuration.userContentController.doubleHandlerCount, 0U);
        EXPECT_FALSE([kept doublePost:@ { @"action" : @"close" } toHandler:@"zelvora"]);
        [kept doubleNavigateTo:[NSURL URLWithString:@"https://elsewhere.example/"]];
        [kept doubleTerminateProcess];
        EXPECT_EQ(doubles::reloadCount(kept), 0);
        EXPECT_EQ(uikit::ownerOf(kept), nullptr);
    }
}

TEST_F(LifetimeTest, APresenterThatTheHostLetsGoOfMeanwhileIsKeptUntilTheLaunch)
{
    __weak UIViewController* weak = nil;
    @autoreleasepool {
        UIViewController* presenter = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        weak = presenter;
        ASSERT_TRUE(m_sdk.start(uikit::retain(presenter)));
    }
    EXPECT_TRUE(weak != nil);
    settle();
    EXPECT_TRUE(weak == nil);
    expectNothingIsLeft();
}

TEST_F(LifetimeTest, AWrappedPresenterIsNotKept)
{
    std::weak_ptr<platform::UIViewController> wrapped;
    std::shared_ptr<platform::UIViewController> held;
    @autoreleasepool {
        UIViewController* presenter = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        wrapped = uikit::wrap(presenter);
        held = uikit::wrap(presenter);
        EXPECT_EQ(wrapped.lock(), held);
        EXPECT_EQ(uikit::retain(presenter), held);
    }
    // The native controller is gone, so every call does nothing.
    EXPECT_TRUE(uikit::nativeOf(*held) == nil);
    held->present(std::make_shared<platform::UIViewController>(), platform::Animated::No);
    held->dismiss(platform::Animated::No);
    held->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    EXPECT_EQ(held->navigationController(), nullptr);
    EXPECT_EQ(held->view().bounds(), (platform::CGRect {}));
    held.reset();
    EXPECT_TRUE(wrapped.expired());
}

}
