#include "tests/uikit/doubles/UIKit.h"
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
        }
    }
    void swipe()
    {
        @autoreleasepool {
            EXPECT_EQ([m_container.view doubleDragFromLeftEdge] > 0, true);
        }
        settle();
    }

    UINavigationController* m_stack = nil;
    ZelvoraIOSViewController* m_container = nil;
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
    swipe();

    EXPECT_EQ(delegate.askedCount, 1);
    EXPECT_EQ(delegate.askedWith, webViewIn(m_container.view));
    EXPECT_EQ(m_stack.viewControllers.count, 2U);
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
    swipe();
    EXPECT_EQ(m_stack.viewControllers.count, 1U);
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
