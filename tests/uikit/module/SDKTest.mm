#include "tests/uikit/doubles/Log.h"
#include "tests/uikit/doubles/URLSession.h"
#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/module/SurfaceTest.h"

#include <thread>

namespace zelvora::tests {

namespace {

class SDKTest : public SurfaceTest {
protected:
    ZelvoraWebView* createdView()
    {
        ZelvoraWebView* view = [m_sdk createWebView];
        EXPECT_NE(view, nil);
        return view;
    }
    static std::vector<std::string> bodiesSentTo(std::string const& host)
    {
        std::vector<std::string> bodies;
        for (auto const& request : doubles::network().requests()) {
            if (request.url.find(host) != std::string::npos)
                bodies.push_back(request.body);
        }
        return bodies;
    }
};

TEST_F(SDKTest, ThereIsOneInstance)
{
    EXPECT_EQ(ZelvoraSDK.sharedInstance, m_sdk);
    EXPECT_NE(m_sdk, nil);
}

TEST_F(SDKTest, ANewInstallShowsFootersAndHasNothingSet)
{
    EXPECT_TRUE(m_sdk.isFooterVisible);
    EXPECT_FALSE(m_sdk.allowsSwipeBack);
    EXPECT_EQ(m_sdk.headerViewProvider, nil);
    EXPECT_EQ(m_sdk.footerViewProvider, nil);
    EXPECT_EQ(m_sdk.onPageNavigation, nil);
    EXPECT_EQ(m_sdk.delegate, nil);
    EXPECT_EQ(m_sdk.activeWebView, nil);
    EXPECT_EQ([m_sdk getCurrentUrl], nil);
    EXPECT_EQ([m_sdk getCustomActions].count, 0U);
}

TEST_F(SDKTest, AGetterGivesBackTheVeryBlockThatWasSet)
{
    NSString* const captured = [NSString stringWithFormat:@"%d", 7];
    ZelvoraViewProvider const header = ^UIView*(UIViewController*) { return captured ? nil : nil; };
    ZelvoraViewProvider const footer = ^UIView*(UIViewController*) { return captured ? nil : nil; };
    ZelvoraPageNavigationHandler const navigation = ^(NSString*) { (void)captured; };
    ZelvoraCustomAction const action = ^(NSString*) { (void)captured; };
    m_sdk.headerViewProvider = header;
    m_sdk.footerViewProvider = footer;
    m_sdk.onPageNavigation = navigation;
    [m_sdk addCustomActionWithFunctionName:@"share" action:action];

    EXPECT_EQ(m_sdk.headerViewProvider, header);
    EXPECT_EQ(m_sdk.footerViewProvider, footer);
    EXPECT_EQ(m_sdk.onPageNavigation, navigation);
    EXPECT_EQ([m_sdk getCustomActions][@"share"], action);
}

TEST_F(SDKTest, ABlockThatIsReplacedIsLetGo)
{
    __weak NSObject* weak = nil;
    @autoreleasepool {
        NSObject* captured = [[NSObject alloc] init];
        weak = captured;
        m_sdk.onPageNavigation = ^(NSString*) { (void)captured; };
    }
    EXPECT_NE(weak, nil);
    @autoreleasepool {
        m_sdk.onPageNavigation = nil;
    }
    EXPECT_EQ(weak, nil);
}

TEST_F(SDKTest, TheTableOfActionsIsACopyInWhichTheLastOfANameCounts)
{
    __block std::string called;
    [m_sdk addCustomActionWithFunctionName:@"share" action:^(NSString*) { called += "first"; }];
    NSDictionary<NSString*, ZelvoraCustomAction>* const before = [m_sdk getCustomActions];
    [m_sdk addCustomActionWithFunctionName:@"share" action:^(NSString* data) { called += textOf(data); }];
    [m_sdk addCustomActionWithFunctionName:@"공유" action:^(NSString*) {}];

    EXPECT_EQ(before.count, 1U);
    EXPECT_EQ([m_sdk getCustomActions].count, 2U);
    EXPECT_NE([m_sdk getCustomActions][@"공유"], nil);
    [m_sdk getCustomActions][@"share"](@"second");
    EXPECT_EQ(called, "second");
}

TEST_F(SDKTest, StartWithoutAShopReturnsTheErrorAndReportsIt)
{
    doubles::network().setServer([](auto const&) -> doubles::Outcome { return doubles::HTTPAnswer { 200, "{}" }; });
    NSMutableArray<NSError*>* const reported = [NSMutableArray arrayWithCapacity:1];
    ZelvoraCompletionHandler const keepError = ^(NSError* error) { [reported addObject:error]; };
    makeReady({ .completionHandler = keepError });
    // The start that waited for the end of the initialization.
    EXPECT_EQ(reported.count, 1U);

    NSError* const error = [m_sdk startFromViewController:showStack()];
    EXPECT_EQ(error.code, ZelvoraSDKErrorShopIdNotInitialized);
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorCodeKey]), "E001");
    ASSERT_EQ(reported.count, 2U);
    EXPECT_EQ([reported objectAtIndex:1].code, ZelvoraSDKErrorShopIdNotInitialized);
}

TEST_F(SDKTest, APresenterIsKeptUntilItHasPresented)
{
    __weak UIViewController* weak = nil;
    @autoreleasepool {
        EXPECT_EQ(initialize(), nil);
        UIViewController* presenter = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        EXPECT_EQ([m_sdk startFromViewController:presenter], nil);
        weak = presenter;
    }
    EXPECT_NE(weak, nil);
    EXPECT_TRUE(runUntil([&weak] { return weak == nil; }));
}

TEST_F(SDKTest, StartMayBeCalledOnAnyThread)
{
    makeReady();
    UINavigationController* const stack = showStack();
    UIViewController* const home = stack.topViewController;
    std::thread([this, home] {
        @autoreleasepool {
            EXPECT_EQ([m_sdk startFromViewController:home], nil);
        }
    }).join();
    EXPECT_EQ(stack.viewControllers.count, 1U);
    EXPECT_TRUE(runUntil([stack] { return stack.viewControllers.count == 2; }));
}

TEST_F(SDKTest, InitializingOffTheMainThreadIsToldInTheLog)
{
    std::thread([this] {
        @autoreleasepool {
            EXPECT_EQ(initialize(), nil);
        }
    }).join();
    std::vector<std::string> told;
    for (auto const& entry : doubles::logEntries()) {
        if (entry.category == "Host")
            told.push_back(entry.text);
    }
    EXPECT_EQ(
        told, (std::vector<std::string> { "[ZelvoraSDK] ZelvoraSDK::initialize was called off the main thread." }));
    waitUntilReady();
}

TEST_F(SDKTest, ACreatedWebViewIsTheActiveOneAndTheHosts)
{
    makeReady();
    __weak ZelvoraWebView* weak = nil;
    @autoreleasepool {
        ZelvoraWebView* const view = createdView();
        weak = view;
        EXPECT_TRUE([view isKindOfClass:[ZelvoraWebView class]]);
        EXPECT_EQ(m_sdk.activeWebView, view);
        EXPECT_EQ(
            textOf([m_sdk getCurrentUrl]), "https://mall.shop.zelvora.example/v1/?adid=unknown&uKey=user&rid=M-AD-SDK");
        EXPECT_EQ(view.parentViewController, nil);
    }
    settle();
    EXPECT_EQ(weak, nil);
    @autoreleasepool {
        EXPECT_EQ(m_sdk.activeWebView, nil);
        EXPECT_EQ([m_sdk getCurrentUrl], nil);
    }
}

TEST_F(SDKTest, WithoutAShopThereIsNoWebViewButAnErrorLine)
{
    errorLines();
    EXPECT_EQ([m_sdk createWebView], nil);
    EXPECT_EQ(errorLines(), std::vector<std::string> { "SDK not fully initialized to get view" });
}

TEST_F(SDKTest, TheHostMayChooseTheActiveWebView)
{
    makeReady();
    ZelvoraWebView* const first = createdView();
    ZelvoraWebView* const second = createdView();
    EXPECT_EQ(m_sdk.activeWebView, second);
    m_sdk.activeWebView = first;
    EXPECT_EQ(m_sdk.activeWebView, first);
    m_sdk.activeWebView = nil;
    EXPECT_EQ(m_sdk.activeWebView, nil);
}

TEST_F(SDKTest, EveryNewURLOfAPageIsReported)
{
    makeReady();
    NSMutableArray<NSString*>* const urls = [NSMutableArray arrayWithCapacity:1];
    ZelvoraWebView* const view = createdView();
    m_sdk.onPageNavigation = ^(NSString* url) { [urls addObject:url]; };
    [pageIn(view) doubleNavigateTo:[NSURL URLWithString:@"https://mall.example/cart"]];
    settle();

    ASSERT_EQ(urls.count, 1U);
    EXPECT_EQ(textOf([urls objectAtIndex:0]), "https://mall.example/cart");
}

TEST_F(SDKTest, APageCallsAnActionWithItsTextOrWithout)
{
    makeReady();
    NSMutableArray<NSString*>* const calls = [NSMutableArray arrayWithCapacity:2];
    [m_sdk addCustomActionWithFunctionName:@"share"
                                    action:^(NSString* data) { [calls addObject:data ? data : @"nothing"]; }];
    WKWebView* const page = pageIn(createdView());
    NSDictionary* const message = @ { @"action" : @"invokeCustomAction", @"name" : @"share", @"data" : @"{\"id\":1}" };
    [page doublePost:message toHandler:@"zelvora"];
    [page doublePost:@ { @"action" : @"invokeCustomAction", @"name" : @"share" } toHandler:@"zelvora"];

    ASSERT_EQ(calls.count, 2U);
    EXPECT_EQ(textOf([calls objectAtIndex:0]), "{\"id\":1}");
    EXPECT_EQ(textOf([calls objectAtIndex:1]), "nothing");
}

TEST_F(SDKTest, TheFooterIsShownAndHidden)
{
    [m_sdk setFooterVisible:NO];
    EXPECT_FALSE(m_sdk.isFooterVisible);
    [m_sdk setFooterVisible:YES];
    EXPECT_TRUE(m_sdk.isFooterVisible);
}

TEST_F(SDKTest, QueuedEventsAreUploaded)
{
    makeReady();
    [ZelvoraStorage saveEventTrackingData:@ { @"eventId" : @"cart" }];
    [m_sdk sendTrackingData];
    EXPECT_TRUE(runUntil([] { return [ZelvoraStorage getEventTrackingData].count == 0; }));
    auto bodies = bodiesSentTo("collector");
    ASSERT_EQ(bodies.size(), 1U);
    // Writers differ in blanks.
    std::erase(bodies[0], ' ');
    EXPECT_NE(bodies[0].find(R"("eventId":"cart")"), std::string::npos) << bodies[0];
}

TEST_F(SDKTest, AnUploadThatTheSystemRefusesIsLoggedAndItsEventsAreKept)
{
    makeReady();
    // What the loader reports for a tracking domain while the user has not allowed tracking.
    doubles::network().setServer([](auto const&) -> doubles::Outcome { return doubles::LoaderError { -1022 }; });
    [ZelvoraStorage saveEventTrackingData:@ { @"eventId" : @"cart" }];
    errorLines();
    [m_sdk sendTrackingData];
    std::vector<std::string> lines;
    EXPECT_TRUE(runUntil([&] {
        auto const more = errorLines();
        lines.insert(lines.end(), more.begin(), more.end());
        return !lines.empty();
    }));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("sendTrackingData Network Error: ")) << lines[0];
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 1U);
}

TEST_F(SDKTest, HasItsVersion)
{
    EXPECT_EQ(ZelvoraIOSVersionNumber, 1.0);
    EXPECT_EQ(textOf(ZelvoraSDK.versionString), ZelvoraIOSVersionString);
}

}

}
