#include "ZelvoraAdapters/uikit/Host.h"

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Platform.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/UIKit.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

/// A view class of a surface's.
@interface ZLVNamedView : UIView <ZLVView>
@property (nonatomic) BOOL isForOwner;
@end

@implementation ZLVNamedView

@synthesize isForOwner = _isForOwner;

- (instancetype)initForOwnerWithFrame:(CGRect)frame
{
    if ((self = [super initWithFrame:frame]))
        _isForOwner = YES;
    return self;
}

@end

namespace zelvora::tests {

using platform::CGRect;
using platform::UIView;

namespace {

constexpr CGRect frame { 1, 2, 3, 4 };

class HostTest : public testing::Test {
protected:
    HostTest() { uikit::install(); }
};

::UIView* plainView()
{
    return [[::UIView alloc] initWithFrame:CGRectMake(0, 0, 30, 40)];
}

// Enough of them to see two threads meet.
constexpr std::size_t manyTimes = 1000;

/// Runs `work` many times on two threads, which begin each round at the same time as far as a machine can.
void runTogether(std::function<void(std::size_t round, std::size_t thread)> const& work)
{
    std::atomic<std::size_t> arrived = 0;
    runOnThreads(2, [&](int thread) {
        for (std::size_t round = 0; round < manyTimes; ++round) {
            for (++arrived; arrived < 2 * (round + 1);)
                std::this_thread::yield();
            @autoreleasepool {
                work(round, static_cast<std::size_t>(thread));
            }
        }
    });
}

}

TEST_F(HostTest, InstallingAgainDoesNothing)
{
    auto const* const installed = &platform::Platform::current();
    uikit::install();
    EXPECT_EQ(&platform::Platform::current(), installed);
}

TEST_F(HostTest, NilIsNothing)
{
    EXPECT_EQ(uikit::wrap(static_cast<::UIView*>(nil)), nullptr);
    EXPECT_EQ(uikit::wrap(static_cast<WKWebView*>(nil)), nullptr);
    EXPECT_EQ(uikit::wrap(static_cast<::UIViewController*>(nil)), nullptr);
    EXPECT_EQ(uikit::retain(nil), nullptr);
    EXPECT_EQ(uikit::ownerOf(static_cast<::UIView*>(nil)), nullptr);
    EXPECT_EQ(uikit::ownerOf(static_cast<::UIViewController*>(nil)), nullptr);
    uikit::viewDidLoad(nil);
    uikit::viewWillDisappear(nil, true);
}

TEST_F(HostTest, AWrappedViewKeepsItsNativeOneAndIsTheSameWhileItLives)
{
    __weak ::UIView* weak = nil;
    std::shared_ptr<UIView> wrapped;
    @autoreleasepool {
        ::UIView* native = plainView();
        weak = native;
        wrapped = uikit::wrap(native);
        EXPECT_EQ(uikit::wrap(native), wrapped);
        EXPECT_EQ(uikit::ownerOf(native), wrapped);
    }
    @autoreleasepool {
        EXPECT_EQ(wrapped->bounds(), (CGRect { 0, 0, 30, 40 }));
        wrapped.reset();
    }
    EXPECT_TRUE(weak == nil);
}

TEST_F(HostTest, ANativeViewOutlivesItsWrapperAndCanBeWrappedAgain)
{
    @autoreleasepool {
        ::UIView* native = plainView();
        EXPECT_NE(uikit::wrap(native), nullptr);
        EXPECT_EQ(uikit::ownerOf(native), nullptr);
        EXPECT_NE(uikit::wrap(native), nullptr);
    }
}

TEST_F(HostTest, AViewThatWasHandedOverEndsWithItsNativeOne)
{
    std::weak_ptr<UIView> watched;
    @autoreleasepool {
        auto view = std::make_shared<UIView>(frame);
        watched = view;
        ::UIView* native = uikit::nativeOf(*view);
        EXPECT_EQ(uikit::nativeOf(*view), native);
        view.reset();
        EXPECT_FALSE(watched.expired());
        EXPECT_EQ(uikit::wrap(native), watched.lock());
    }
    EXPECT_TRUE(watched.expired());
}

TEST_F(HostTest, AViewWhoseNativeOneIsGoneDoesNothing)
{
    std::shared_ptr<UIView> view;
    auto const child = std::make_shared<UIView>();
    @autoreleasepool {
        view = std::make_shared<UIView>(frame);
        EXPECT_TRUE(uikit::nativeOf(*view) != nil);
    }
    EXPECT_TRUE(uikit::nativeOf(*view) == nil);
    view->addSubview(child);
    view->bringSubviewToFront(*child);
    view->setHidden(true);
    view->setBackgroundColor(platform::UIColor::white());
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    child->topAnchor().constraintEqualTo(view->topAnchor()).setActive(true);
    view->layoutIfNeeded();
    child->removeFromSuperview();
    EXPECT_EQ(view->bounds(), (CGRect {}));
}

TEST_F(HostTest, AViewOfANamedClassIsMadeThroughItsInitializerForTheSDK)
{
    @autoreleasepool {
        auto const view = std::make_shared<UIView>(frame, "ZLVNamedView");
        ::UIView* native = uikit::nativeOf(*view);
        ASSERT_TRUE([native isKindOfClass:[ZLVNamedView class]]);
        EXPECT_TRUE(static_cast<ZLVNamedView*>(native).isForOwner);
        EXPECT_EQ(native.frame.size.height, 4);
        auto const unknown = std::make_shared<UIView>(frame, "ZLVNoSuchView");
        EXPECT_TRUE([uikit::nativeOf(*unknown) isMemberOfClass:[::UIView class]]);
    }
}

TEST_F(HostTest, AnAdoptedViewStandsForTheNextViewOfItsClassAlone)
{
    @autoreleasepool {
        ZLVNamedView* native = [[ZLVNamedView alloc] initWithFrame:CGRectMake(0, 0, 0, 0)];
        uikit::adoptNext(native);
        auto const plain = std::make_shared<UIView>();
        EXPECT_NE(uikit::nativeOf(*plain), native);
        auto const named = std::make_shared<UIView>(frame, "ZLVNamedView");
        EXPECT_EQ(uikit::nativeOf(*named), native);
        auto const next = std::make_shared<UIView>(frame, "ZLVNamedView");
        EXPECT_NE(uikit::nativeOf(*next), native);
    }
}

TEST_F(HostTest, AViewThatIsElsewhereMoves)
{
    @autoreleasepool {
        ::UIView* elsewhere = plainView();
        ::UIView* header = plainView();
        [elsewhere addSubview:header];
        auto const root = std::make_shared<UIView>(frame);
        root->addSubview(uikit::wrap(header));
        EXPECT_EQ(elsewhere.subviews.count, 0U);
        EXPECT_EQ(header.superview, uikit::nativeOf(*root));
        // The host takes it away again; the SDK does not take it from there.
        [elsewhere addSubview:header];
        root->subviews().front()->removeFromSuperview();
        EXPECT_EQ(header.superview, elsewhere);
    }
}

TEST_F(HostTest, TwoThreadsThatMeetAControllerForTheFirstTimeShareWhatStandsForIt)
{
    std::vector<::UIViewController*> natives;
    for (std::size_t round = 0; round < manyTimes; ++round)
        natives.push_back([[::UIViewController alloc] initWithNibName:nil bundle:nil]);
    std::vector<std::array<std::shared_ptr<platform::UIViewController>, 2>> met(manyTimes);
    runTogether([&](std::size_t round, std::size_t thread) { met[round][thread] = uikit::retain(natives[round]); });
    for (auto const& [first, second] : met)
        ASSERT_EQ(first, second);
}

TEST_F(HostTest, AControllerIsLetGoOfOnTheMainThread)
{
    __weak ::UIViewController* weak = nil;
    std::shared_ptr<platform::UIViewController> retained;
    @autoreleasepool {
        ::UIViewController* native = [[::UIViewController alloc] initWithNibName:nil bundle:nil];
        weak = native;
        retained = uikit::retain(native);
    }
    runOnThreads(1, [&retained](int) {
        @autoreleasepool {
            retained.reset();
        }
    });
    @autoreleasepool {
        EXPECT_TRUE(weak != nil);
        doubles::runMainQueue();
    }
    EXPECT_TRUE(weak == nil);
}

TEST_F(HostTest, AnimationsRunBeforeTheCallReturns)
{
    bool hasRun = false;
    UIView::animate(0.3, [&hasRun] { hasRun = true; });
    EXPECT_TRUE(hasRun);
    doubles::finishTransitions();
}

}
