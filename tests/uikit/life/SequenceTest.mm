#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/life/PhoneTest.h"

#include <algorithm>

namespace zelvora::tests {

namespace {

/// A container that was opened from a stack, while the SDK was still being initialized.
class SequenceTest : public PhoneTest {
protected:
    SequenceTest()
    {
        @autoreleasepool {
            m_footer = [[UIView alloc] initWithFrame:CGRectMake(0, 0, 0, 0)];
            m_stack = showStack();
            initialize();
            EXPECT_TRUE(m_sdk.start(uikit::retain(m_stack.topViewController)));
            EXPECT_EQ(m_stack.viewControllers.count, 1U);
            EXPECT_TRUE(runUntil([this] { return m_stack.viewControllers.count == 2; }));
            UIViewController* container = m_stack.topViewController;
            ::ZelvoraWebView* webView = webViewIn(container.view);
            m_container = container;
            m_webView = webView;
            m_page = pageIn(webView);
        }
        settle();
    }

    void post(NSDictionary* message)
    {
        @autoreleasepool {
            EXPECT_TRUE([m_page doublePost:message toHandler:@"zelvora"]);
        }
        settle();
    }
    void navigateTo(NSString* url)
    {
        @autoreleasepool {
            [m_page doubleNavigateTo:[NSURL URLWithString:url]];
        }
    }
    void swipe()
    {
        @autoreleasepool {
            UIViewController* container = m_container;
            [container.view doubleDragFromLeftEdge];
        }
        settle();
    }
    std::string lastScript() { return doubles::evaluatedScripts(m_page).back(); }

    UINavigationController* m_stack;
    __weak UIViewController* m_container = nil;
    __weak ::ZelvoraWebView* m_webView = nil;
    __weak WKWebView* m_page = nil;
};

}

TEST_F(SequenceTest, ADeferredStartPushesAContainerOnTheEntryPage)
{
    @autoreleasepool {
        WKWebView* page = m_page;
        EXPECT_TRUE([m_container isKindOfClass:[::ZelvoraIOSViewController class]]);
        EXPECT_TRUE(m_errors.empty());
        auto const requests = doubles::loadedRequests(page);
        ASSERT_EQ(requests.size(), 1U);
        EXPECT_STREQ(requests.front().URL.absoluteString.UTF8String,
            "https://mall.shop.zelvora.example/v1/?adid=unknown&uKey=user&rid=M-AD-SDK");
        EXPECT_EQ(requests.front().timeoutInterval, 60);
        EXPECT_TRUE(page.inspectable);
        EXPECT_TRUE(page.allowsBackForwardNavigationGestures);
        EXPECT_EQ(page.configuration.userContentController.userScripts.count, 1U);
    }
}

TEST_F(SequenceTest, ThePageStoresAndReadsThroughTheBridge)
{
    NSDictionary* const read = @ { @"action" : @"getItem", @"key" : @"k", @"callback" : @"answer" };
    post(@ { @"action" : @"setItem", @"key" : @"k", @"value" : @"it's" });
    post(read);
    EXPECT_EQ(lastScript(), "answer(\"it's\");");
    post(@{@"action" : @"setItem", @"key" : @"k", @"value" : @YES});
    post(read);
    EXPECT_EQ(lastScript(), "answer(true);");
    post(@{@"action" : @"setItem", @"key" : @"k", @"value" : @1});
    post(read);
    EXPECT_EQ(lastScript(), "answer(1);");
}

TEST_F(SequenceTest, AnEventIsUploadedWhenThePageClosesTheContainer)
{
    auto const uploads = [] {
        return std::ranges::count_if(
            requests(), [](std::string const& url) { return url.find("collector") != std::string::npos; });
    };
    auto const before = uploads();
    post(@{@"action" : @"saveEvent", @"data" : @ { @"eventId" : @"cart_add" }});
    post(@ { @"action" : @"close" });
    EXPECT_TRUE(runUntil([&] { return uploads() > before; }));
}

TEST_F(SequenceTest, TheHostHearsOnceOfEachPage)
{
    std::vector<std::string> pages;
    m_sdk.setOnPageNavigation([&pages](std::string const& url) { pages.push_back(url); });
    navigateTo(@"https://mall.shop.zelvora.example/cart");
    @autoreleasepool {
        [m_page doubleTellURLAgain];
    }
    EXPECT_EQ(pages, (std::vector<std::string> { "https://mall.shop.zelvora.example/cart" }));
    m_sdk.setOnPageNavigation(nullptr);
}

TEST_F(SequenceTest, AnExternalSchemeIsOpenedInItsApp)
{
    navigateTo(@"tel:1");
    navigateTo(@"unknown:2");
    EXPECT_EQ(doubles::openedURLs(), (std::vector<std::string> { "tel:1" }));
    auto const decisions = doubles::decisions(m_page);
    ASSERT_GE(decisions.size(), 2U);
    EXPECT_EQ(decisions[decisions.size() - 2], "cancel tel:1");
    EXPECT_EQ(decisions.back(), "cancel unknown:2");
}

TEST_F(SequenceTest, ANavigationWithoutAURLIsAllowed)
{
    @autoreleasepool {
        [m_page doubleNavigateFrameTo:nil];
    }
    EXPECT_EQ(doubles::decisions(m_page).back(), "allow none");
}

TEST_F(SequenceTest, ThePageHidesAndShowsTheFooter)
{
    EXPECT_FALSE(m_footer.hidden);
    post(@{@"action" : @"setFooterVisible", @"visible" : @NO});
    EXPECT_TRUE(m_footer.hidden);
    // A number is no boolean.
    post(@{@"action" : @"setFooterVisible", @"visible" : @1});
    EXPECT_TRUE(m_footer.hidden);
    post(@{@"action" : @"setFooterVisible", @"visible" : @YES});
    EXPECT_FALSE(m_footer.hidden);
}

TEST_F(SequenceTest, ASwipeGoesBackOrLeavesUnlessTheHostVetoesIt)
{
    // It would leave at the same swipe.
    m_stack.interactivePopGestureRecognizer.enabled = NO;
    navigateTo(@"https://mall.shop.zelvora.example/cart");
    EXPECT_TRUE(m_page.canGoBack);
    m_delegate->mayGoBack = false;
    swipe();
    EXPECT_EQ(m_delegate->asked, 1);
    EXPECT_TRUE(m_page.canGoBack);
    m_delegate->mayGoBack = true;
    swipe();
    EXPECT_FALSE(m_page.canGoBack);
    EXPECT_EQ(m_stack.viewControllers.count, 2U);
    swipe();
    EXPECT_EQ(m_stack.viewControllers.count, 1U);
    EXPECT_EQ(m_delegate->dismissals, 1);
}

TEST_F(SequenceTest, TheStacksOwnSwipeAsksTheContainer)
{
    @autoreleasepool {
        UIGestureRecognizer* pop = m_stack.interactivePopGestureRecognizer;
        ASSERT_TRUE(pop.delegate != nil);
        EXPECT_TRUE(pop.enabled);
        EXPECT_TRUE([pop.delegate gestureRecognizerShouldBegin:pop]);
        m_sdk.setAllowsSwipeBack(false);
        EXPECT_FALSE([pop.delegate gestureRecognizerShouldBegin:pop]);
    }
}

TEST_F(SequenceTest, NothingIsLeftOfAContainerThatWasPopped)
{
    @autoreleasepool {
        [m_stack popViewControllerAnimated:YES];
    }
    settle();
    EXPECT_TRUE(m_container == nil);
    EXPECT_TRUE(m_webView == nil);
    EXPECT_TRUE(m_page == nil);
    EXPECT_EQ([::ZelvoraIOSViewController liveCount], 0);
    EXPECT_EQ([::ZelvoraWebView liveCount], 0);
    EXPECT_EQ(m_sdk.activeWebView(), nullptr);
    EXPECT_TRUE(m_footer.superview == nil);
}

}
