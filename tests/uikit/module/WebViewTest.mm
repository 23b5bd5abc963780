#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/doubles/WebKitObjects.h"
#include "tests/uikit/module/SurfaceTest.h"

namespace zelvora::tests {

namespace {

class WebViewTest : public SurfaceTest {
protected:
    static ZelvoraWebView* madeByHost(NSString* url = @"https://shop.example/")
    {
        return [[ZelvoraWebView alloc] initWithFrame:CGRectMake(1, 2, 300, 400) urlString:url allowsSwipeBack:YES];
    }
    /// The answer about a navigation, by default one without a request, and so without a URL.
    static NSString* answerOf(ZelvoraWebView* view, WKNavigationAction* action = nil)
    {
        __block NSString* answer = nil;
        [view webView:pageIn(view)
            decidePolicyForNavigationAction:action
                            decisionHandler:^(WKNavigationActionPolicy policy) {
                                EXPECT_EQ(answer, nil);
                                answer = policy == WKNavigationActionPolicyAllow ? @"allow" : @"cancel";
                            }];
        return answer;
    }
    /// The web view of a container that has been left, which the host still holds.
    ZelvoraWebView* leftView()
    {
        makeReady();
        ZelvoraWebView* view = nil;
        @autoreleasepool {
            UINavigationController* const stack = showStack();
            view = webViewIn(openShop(stack).view);
            [stack popViewControllerAnimated:NO];
        }
        settle();
        return view;
    }
};

TEST_F(WebViewTest, OneThatTheHostMakesLoadsItsAddressAndIsFilledByItsPage)
{
    ZelvoraWebView* const view = madeByHost();
    EXPECT_EQ(view.frame.size.width, 300);
    WKWebView* const page = pageIn(view);
    ASSERT_NE(page, nil);
    auto const requests = doubles::loadedRequests(page);
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(textOf(requests[0].URL.absoluteString), "https://shop.example/");
    EXPECT_TRUE(page.allowsBackForwardNavigationGestures);
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/");
}

TEST_F(WebViewTest, OneThatTheHostMakesEndsWhenTheHostLetsGo)
{
    __weak ZelvoraWebView* view = nil;
    __weak WKWebView* page = nil;
    @autoreleasepool {
        ZelvoraWebView* const made = madeByHost();
        view = made;
        page = pageIn(made);
        EXPECT_NE(page, nil);
    }
    settle();
    EXPECT_EQ(view, nil);
    EXPECT_EQ(page, nil);
}

TEST_F(WebViewTest, GoesBackInThePagesHistory)
{
    ZelvoraWebView* const view = madeByHost();
    EXPECT_FALSE(view.canGoBack);
    [view goBack];
    [pageIn(view) doubleNavigateTo:[NSURL URLWithString:@"https://shop.example/cart"]];
    EXPECT_TRUE(view.canGoBack);
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/cart");
    [view goBack];
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/");
}

TEST_F(WebViewTest, DoesNotKeepItsParent)
{
    ZelvoraWebView* const view = madeByHost();
    EXPECT_EQ(view.parentViewController, nil);
    @autoreleasepool {
        UIViewController* parent = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        view.parentViewController = parent;
        EXPECT_EQ(view.parentViewController, parent);
    }
    EXPECT_EQ(view.parentViewController, nil);
}

TEST_F(WebViewTest, APagesCloseDismissesTheParent)
{
    UINavigationController* const stack = showStack();
    UIViewController* const shop = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    ZelvoraWebView* const view = madeByHost();
    [shop.view addSubview:view];
    view.parentViewController = shop;
    [stack presentViewController:shop animated:NO completion:nil];
    EXPECT_EQ(stack.presentedViewController, shop);

    [pageIn(view) doublePost:@ { @"action" : @"close" } toHandler:@"zelvora"];
    settle();
    EXPECT_EQ(stack.presentedViewController, nil);
}

TEST_F(WebViewTest, FollowsLinksOfTheWebAndOpensOthers)
{
    doubles::setOpenableSchemes({ "tel" });
    ZelvoraWebView* const view = madeByHost();
    WKWebView* const page = pageIn(view);
    [page doubleNavigateTo:[NSURL URLWithString:@"https://shop.example/cart"]];
    [page doubleNavigateTo:[NSURL URLWithString:@"tel:1"]];
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/cart");
    EXPECT_EQ(doubles::openedURLs(), std::vector<std::string> { "tel:1" });
}

TEST_F(WebViewTest, ADelegateCallOfTheHostsIsAnsweredOnce)
{
    ZelvoraWebView* const view = madeByHost();
    EXPECT_EQ(textOf(answerOf(view)), "allow");
    NSURL* const link = [NSURL URLWithString:@"tel:1"];
    EXPECT_EQ(textOf(answerOf(view, [WKNavigationAction doubleActionTo:link])), "cancel");
    [view webView:pageIn(view) didStartProvisionalNavigation:nil];
}

TEST_F(WebViewTest, HandlesTheMessagesOfAnotherPageOfTheHosts)
{
    ZelvoraWebView* const view = madeByHost();
    WKWebViewConfiguration* const configuration = [[WKWebViewConfiguration alloc] init];
    [configuration.userContentController addScriptMessageHandler:view name:@"zelvora"];
    WKWebView* const page = [[WKWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1) configuration:configuration];
    [page doublePost:@ { @"action" : @"setItem", @"key" : @"theme", @"value" : @"light" } toHandler:@"zelvora"];
    EXPECT_EQ(textOf([ZelvoraStorage getStringForKey:@"theme"]), "light");
}

TEST_F(WebViewTest, OnceTheSDKHasLetGoOfItEveryCallDoesNothing)
{
    ZelvoraWebView* const view = leftView();
    ASSERT_NE(view, nil);
    EXPECT_EQ(view.currentUrl, nil);
    EXPECT_FALSE(view.canGoBack);
    [view goBack];
    UIViewController* const screen = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    view.parentViewController = screen;
    EXPECT_EQ(view.parentViewController, nil);
    EXPECT_EQ(textOf(answerOf(view)), "cancel");
    [view webView:pageIn(view) didStartProvisionalNavigation:nil];
    WKScriptMessage* message = nil;
    [view userContentController:pageIn(view).configuration.userContentController didReceiveScriptMessage:message];
    m_sdk.activeWebView = view;
    EXPECT_EQ(m_sdk.activeWebView, nil);
}

class WebViewDeathTest : public WebViewTest {
protected:
    // The queues have threads, which a fork would not have.
    WebViewDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(WebViewDeathTest, AFrameAloneStopsTheProcess)
{
    EXPECT_DEATH((void)[static_cast<UIView*>([ZelvoraWebView alloc]) initWithFrame:CGRectMake(0, 0, 1, 1)],
        "Use of unimplemented initializer 'init\\(frame:\\)' for class 'ZelvoraIOS.ZelvoraWebView'");
}

TEST_F(WebViewDeathTest, AnArchiveStopsTheProcess)
{
    NSCoder* nothing = nil;
    EXPECT_DEATH((void)[static_cast<UIView*>([ZelvoraWebView alloc]) initWithCoder:nothing],
        "init\\(coder:\\) has not been implemented");
}

}

}
