#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/module/SurfaceTest.h"

namespace zelvora::tests {

namespace {

class DelegateTest : public SurfaceTest {
protected:
    void open()
    {
        @autoreleasepool {
            m_stack = showStack();
            m_container = openShop(m_stack);
            m_webView = webViewIn(m_container.view);
        }
    }
    void goTo(NSString* url)
    {
        @autoreleasepool {
            [pageIn(m_webView) doubleNavigateTo:[NSURL URLWithString:url]];
            EXPECT_EQ(textOf(m_webView.currentUrl), textOf(url));
        }
    }
    void swipe()
    {
        @autoreleasepool {
            // The stack's own swipe recognizes the same drag.
            EXPECT_GT([m_container.view doubleDragFromLeftEdge], 0U);
        }
        settle();
    }

    UINavigationController* m_stack = nil;
    ZelvoraIOSViewController* m_container = nil;
    ZelvoraWebView* m_webView = nil;
};

TEST_F(DelegateTest, IsReferencedWeakly)
{
    @autoreleasepool {
        RecordingDelegate* delegate = [[RecordingDelegate alloc] init];
        m_sdk.delegate = delegate;
        EXPECT_EQ(m_sdk.delegate, delegate);
    }
    EXPECT_EQ(m_sdk.delegate, nil);
}

TEST_F(DelegateTest, IsAskedWithTheContainersWebViewAndMayVeto)
{
    RecordingDelegate* const delegate = [[RecordingDelegate alloc] init];
    delegate.mayGoBack = NO;
    makeReady({ .delegate = delegate });
    open();
    goTo(@"https://mall.example/cart");
    swipe();

    EXPECT_EQ(delegate.askedCount, 1);
    EXPECT_EQ(delegate.askedWith, m_webView);
    EXPECT_EQ(textOf(m_webView.currentUrl), "https://mall.example/cart");
}

TEST_F(DelegateTest, LetsTheContainerGoBackInThePagesHistory)
{
    RecordingDelegate* const delegate = [[RecordingDelegate alloc] init];
    makeReady({ .delegate = delegate });
    open();
    goTo(@"https://mall.example/cart");
    swipe();
    EXPECT_NE(textOf(m_webView.currentUrl), "https://mall.example/cart");
}

TEST_F(DelegateTest, HearsThatTheContainerDisappears)
{
    RecordingDelegate* const delegate = [[RecordingDelegate alloc] init];
    makeReady({ .delegate = delegate });
    open();
    [m_stack popViewControllerAnimated:NO];
    settle();
    EXPECT_EQ(delegate.dismissalCount, 1);
}

TEST_F(DelegateTest, OnceItIsGoneTheContainerBehavesAsWithoutOne)
{
    @autoreleasepool {
        RecordingDelegate* delegate = [[RecordingDelegate alloc] init];
        delegate.mayGoBack = NO;
        makeReady({ .delegate = delegate });
    }
    open();
    EXPECT_EQ(m_sdk.delegate, nil);
    goTo(@"https://mall.example/cart");
    swipe();
    EXPECT_NE(textOf(m_webView.currentUrl), "https://mall.example/cart");
}

TEST_F(DelegateTest, AHolderIsKeptUntilAnotherIsSet)
{
    __weak RecordingDelegate* weak = nil;
    @autoreleasepool {
        RecordingDelegate* holder = [[RecordingDelegate alloc] init];
        weak = holder;
        m_sdk.delegateHolder = holder;
    }
    @autoreleasepool {
        EXPECT_NE(weak, nil);
        EXPECT_EQ(m_sdk.delegateHolder, weak);
        EXPECT_EQ(m_sdk.delegate, weak);
    }
    @autoreleasepool {
        m_sdk.delegateHolder = nil;
    }
    EXPECT_EQ(weak, nil);
    EXPECT_EQ(m_sdk.delegate, nil);
}

TEST_F(DelegateTest, ADelegateThatIsNotKeptIsNoHolder)
{
    RecordingDelegate* const delegate = [[RecordingDelegate alloc] init];
    m_sdk.delegate = delegate;
    EXPECT_EQ(m_sdk.delegateHolder, nil);
}

TEST_F(DelegateTest, AHolderIsAskedLikeADelegate)
{
    makeReady();
    RecordingDelegate* const holder = [[RecordingDelegate alloc] init];
    m_sdk.delegateHolder = holder;
    open();
    swipe();
    EXPECT_EQ(holder.askedCount, 1);
    EXPECT_EQ(holder.dismissalCount, 1);
    EXPECT_EQ(m_stack.viewControllers.count, 1U);
}

}

}
