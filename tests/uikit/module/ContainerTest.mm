#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/module/SurfaceTest.h"

namespace zelvora::tests {

namespace {

class ContainerTest : public SurfaceTest {
protected:
    static ZelvoraIOSViewController* madeByHost()
    {
        return [[ZelvoraIOSViewController alloc] initWithUrlString:@"https://shop.example/"];
    }
    void provideHeader(UIView* header)
    {
        m_sdk.headerViewProvider = ^UIView*(UIViewController*) { return header; };
    }

    UINavigationController* m_stack = showStack();
};

TEST_F(ContainerTest, OneThatTheSDKMakesIsOfThePublicClasses)
{
    makeReady();
    ZelvoraIOSViewController* const container = openShop(m_stack);
    ZelvoraWebView* const view = webViewIn(container.view);
    ASSERT_NE(view, nil);
    EXPECT_EQ(view.parentViewController, container);
    EXPECT_EQ(m_sdk.activeWebView, view);
}

TEST_F(ContainerTest, OneThatTheHostMakesShowsItsAddress)
{
    ZelvoraIOSViewController* const container = madeByHost();
    [m_stack pushViewController:container animated:NO];
    settle();
    WKWebView* const page = pageIn(webViewIn(container.view));
    ASSERT_NE(page, nil);
    EXPECT_EQ(textOf(page.URL.absoluteString), "https://shop.example/");
    [container.view layoutIfNeeded];
    EXPECT_EQ(page.frame.size.width, doubles::screenWidth);
}

TEST_F(ContainerTest, OneThatTheHostMakesEndsWhenItIsLeft)
{
    __weak UIViewController* container = nil;
    __weak UIView* view = nil;
    @autoreleasepool {
        ZelvoraIOSViewController* const made = madeByHost();
        [m_stack pushViewController:made animated:NO];
        container = made;
        view = webViewIn(made.view);
        EXPECT_NE(view, nil);
    }
    settle();
    EXPECT_NE(container, nil);
    @autoreleasepool {
        [m_stack popViewControllerAnimated:NO];
    }
    settle();
    EXPECT_EQ(container, nil);
    EXPECT_EQ(view, nil);
}

TEST_F(ContainerTest, AProviderIsGivenTheContainerItself)
{
    NSMutableArray<UIViewController*>* const given = [NSMutableArray arrayWithCapacity:2];
    ZelvoraViewProvider const provider = ^UIView*(UIViewController* container) {
        [given addObject:container];
        return nil;
    };
    m_sdk.headerViewProvider = provider;
    m_sdk.footerViewProvider = provider;
    ZelvoraIOSViewController* const container = madeByHost();
    [m_stack pushViewController:container animated:NO];
    settle();
    ASSERT_EQ(given.count, 2U);
    EXPECT_EQ([given objectAtIndex:0], container);
    EXPECT_EQ([given objectAtIndex:1], container);
}

TEST_F(ContainerTest, AHeaderThatIsElsewhereMoves)
{
    UIView* const header = [[UIView alloc] initWithFrame:CGRectMake(0, 0, 10, 10)];
    [m_stack.topViewController.view addSubview:header];
    provideHeader(header);
    ZelvoraIOSViewController* const container = madeByHost();
    [m_stack pushViewController:container animated:NO];
    settle();
    EXPECT_EQ(header.superview, container.view);
    EXPECT_EQ([m_stack.viewControllers objectAtIndex:0].view.subviews.count, 0U);
}

TEST_F(ContainerTest, AHeaderThatAnotherContainerShowsMoves)
{
    UIView* const header = [[UIView alloc] initWithFrame:CGRectMake(0, 0, 10, 10)];
    provideHeader(header);
    ZelvoraIOSViewController* const first = madeByHost();
    [m_stack pushViewController:first animated:NO];
    settle();
    EXPECT_EQ(header.superview, first.view);

    ZelvoraIOSViewController* const second = madeByHost();
    [m_stack pushViewController:second animated:NO];
    settle();
    EXPECT_EQ(header.superview, second.view);
}

TEST_F(ContainerTest, ItsGesturesFollowTheSDK)
{
    ZelvoraIOSViewController* const container = madeByHost();
    UIGestureRecognizer* const pan = [[UIScreenEdgePanGestureRecognizer alloc] initWithTarget:nil action:nil];
    m_sdk.allowsSwipeBack = NO;
    EXPECT_FALSE([container gestureRecognizerShouldBegin:pan]);
    m_sdk.allowsSwipeBack = YES;
    EXPECT_TRUE([container gestureRecognizerShouldBegin:pan]);
    EXPECT_TRUE([container gestureRecognizer:pan shouldRecognizeSimultaneouslyWithGestureRecognizer:pan]);
}

TEST_F(ContainerTest, LeavingItUploadsTheEvents)
{
    makeReady();
    ZelvoraIOSViewController* const container = madeByHost();
    [m_stack pushViewController:container animated:NO];
    settle();
    [ZelvoraStorage saveEventTrackingData:@ { @"eventId" : @"cart" }];
    [m_stack popViewControllerAnimated:NO];
    EXPECT_TRUE(runUntil([] { return [ZelvoraStorage getEventTrackingData].count == 0; }));
}

class ContainerDeathTest : public ContainerTest {
protected:
    // The queues have threads, which a fork would not have.
    ContainerDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(ContainerDeathTest, ANibStopsTheProcess)
{
    EXPECT_DEATH((void)[static_cast<UIViewController*>([ZelvoraIOSViewController alloc]) initWithNibName:nil
                                                                                                  bundle:nil],
        "Use of unimplemented initializer 'init\\(nibName:bundle:\\)' for class "
        "'ZelvoraIOS.ZelvoraIOSViewController'");
}

TEST_F(ContainerDeathTest, AnArchiveStopsTheProcess)
{
    NSCoder* nothing = nil;
    EXPECT_DEATH((void)[static_cast<UIViewController*>([ZelvoraIOSViewController alloc]) initWithCoder:nothing],
        "init\\(coder:\\) has not been implemented");
}

}

}
