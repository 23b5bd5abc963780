#include "tests/uikit/doubles/URLSession.h"
#include "tests/uikit/module/SurfaceTest.h"

#include <atomic>

namespace zelvora::tests {

namespace {

class InitializeTest : public SurfaceTest {
protected:
    static ZelvoraViewProvider makeProvider(UIView* view)
    {
        return ^UIView*(UIViewController*) { return view; };
    }

    UIView* m_view = [[UIView alloc] initWithFrame:CGRectMake(0, 0, 0, 40)];
    RecordingDelegate* m_delegate = [[RecordingDelegate alloc] init];
};

TEST_F(InitializeTest, KeepsWhatTheHostGaveAsItGaveIt)
{
    auto const header = makeProvider(m_view);
    auto const footer = makeProvider(m_view);
    EXPECT_EQ(initialize({ .headerViewProvider = header, .footerViewProvider = footer, .delegate = m_delegate }), nil);

    EXPECT_EQ(m_sdk.headerViewProvider, header);
    EXPECT_EQ(m_sdk.footerViewProvider, footer);
    EXPECT_EQ(m_sdk.delegate, m_delegate);
    EXPECT_TRUE(m_sdk.allowsSwipeBack);
}

TEST_F(InitializeTest, ARefusedSecondCallLeavesProvidersDelegateAndSwipeAsTheyWere)
{
    auto const header = makeProvider(m_view);
    auto const footer = makeProvider(m_view);
    EXPECT_EQ(initialize({ .headerViewProvider = header, .footerViewProvider = footer, .delegate = m_delegate }), nil);

    RecordingDelegate* const other = [[RecordingDelegate alloc] init];
    NSError* const refused = initialize({ .allowsSwipeBack = NO,
        .headerViewProvider = makeProvider(nil),
        .footerViewProvider = makeProvider(nil),
        .delegate = other });

    EXPECT_EQ(refused.code, ZelvoraSDKErrorInitializing);
    EXPECT_EQ(m_sdk.headerViewProvider, header);
    EXPECT_EQ(m_sdk.footerViewProvider, footer);
    EXPECT_EQ(m_sdk.delegate, m_delegate);
    EXPECT_TRUE(m_sdk.allowsSwipeBack);
}

TEST_F(InitializeTest, ARefusedSecondCallIsReportedToTheFirstCaller)
{
    NSMutableArray<NSError*>* const first = [NSMutableArray arrayWithCapacity:1];
    __block int secondCount = 0;
    ZelvoraCompletionHandler const keepFirst = ^(NSError* error) { [first addObject:error]; };
    ZelvoraCompletionHandler const countSecond = ^(NSError*) { ++secondCount; };
    EXPECT_EQ(initialize({ .completionHandler = keepFirst }), nil);
    NSError* const refused = initialize({ .completionHandler = countSecond });

    EXPECT_EQ(textOf(refused.userInfo[ZelvoraSDKErrorCodeKey]), "E004");
    ASSERT_EQ(first.count, 1U);
    EXPECT_EQ([first objectAtIndex:0].code, ZelvoraSDKErrorInitializing);
    EXPECT_EQ(secondCount, 0);
}

TEST_F(InitializeTest, ALaterCallReplacesEverythingWithNilToo)
{
    makeReady({ .headerViewProvider = makeProvider(m_view),
        .footerViewProvider = makeProvider(m_view),
        .delegate = m_delegate });
    EXPECT_EQ(initialize({ .allowsSwipeBack = NO }), nil);

    EXPECT_EQ(m_sdk.headerViewProvider, nil);
    EXPECT_EQ(m_sdk.footerViewProvider, nil);
    EXPECT_EQ(m_sdk.delegate, nil);
    EXPECT_FALSE(m_sdk.allowsSwipeBack);
}

TEST_F(InitializeTest, AnErrorOfTheLookupArrivesInTheBackgroundWithItsDetail)
{
    doubles::network().setServer([](auto const&) -> doubles::Outcome { return doubles::HTTPAnswer { 500, "oops" }; });
    static std::atomic<bool> isReported = false;
    __block BOOL wasOnMainThread = YES;
    __block NSError* reported = nil;
    ZelvoraCompletionHandler const keepError = ^(NSError* error) {
        reported = error;
        wasOnMainThread = NSThread.isMainThread;
        isReported = true;
    };
    EXPECT_EQ(initialize({ .completionHandler = keepError }), nil);

    EXPECT_TRUE(runUntil([] { return isReported.load(); }));
    EXPECT_FALSE(wasOnMainThread);
    EXPECT_EQ(reported.code, ZelvoraSDKErrorInternalApiError);
    EXPECT_EQ(textOf(reported.userInfo[ZelvoraSDKErrorDetailKey]), "fetchShopId - 500");
}

TEST_F(InitializeTest, SuccessIsNotReported)
{
    __block int reports = 0;
    ZelvoraCompletionHandler const countError = ^(NSError*) { ++reports; };
    makeReady({ .completionHandler = countError });
    EXPECT_EQ(reports, 0);
}

}

}
