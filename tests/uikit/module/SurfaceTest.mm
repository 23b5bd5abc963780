#include "tests/uikit/module/SurfaceTest.h"

#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/Log.h"
#include "tests/uikit/doubles/Tracking.h"
#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/URLSession.h"

#include <os/log.h>

@implementation RecordingDelegate

- (instancetype)init
{
    self = [super init];
    _mayGoBack = YES;
    return self;
}

- (BOOL)zelvoraSDKShouldHandleBackAction:(ZelvoraWebView*)webView
{
    ++_askedCount;
    _askedWith = webView;
    return _mayGoBack;
}

- (void)zelvoraSDKWillDismiss
{
    ++_dismissalCount;
}

@end

namespace zelvora::tests {

SurfaceTest::SurfaceTest() : m_sdk(ZelvoraSDK.sharedInstance) { }

SurfaceTest::~SurfaceTest()
{
    // Its threads must not outlive the process's own objects.
    if (m_isInitializing)
        waitUntilReady();
}

NSError* SurfaceTest::initialize(Configuration const& configuration)
{
    m_isInitializing = true;
    return [m_sdk initializeWithUserKey:@"user"
                                 apiKey:@"key"
                      isTrackingEnabled:YES
                                  isDev:NO
                        allowsSwipeBack:configuration.allowsSwipeBack
                     headerViewProvider:configuration.headerViewProvider
                     footerViewProvider:configuration.footerViewProvider
                               delegate:configuration.delegate
                     completion_handler:configuration.completionHandler];
}

void SurfaceTest::makeReady(Configuration const& configuration)
{
    @autoreleasepool {
        EXPECT_EQ(initialize(configuration), nil);
    }
    waitUntilReady();
}

void SurfaceTest::waitUntilReady()
{
    __weak UIViewController* waiting = nil;
    @autoreleasepool {
        // A start during the initialization is carried out at its end, and the SDK then lets go of the presenter.
        UIViewController* presenter = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        (void)[m_sdk startFromViewController:presenter];
        waiting = presenter;
    }
    EXPECT_TRUE(runUntil([&waiting] { return waiting == nil; }));
    settle();
    m_isInitializing = false;
}

ZelvoraIOSViewController* SurfaceTest::openShop(UINavigationController* stack)
{
    EXPECT_EQ([m_sdk startFromViewController:stack.topViewController], nil);
    EXPECT_TRUE(runUntil([stack] { return stack.viewControllers.count == 2; }));
    settle();
    UIViewController* container = stack.topViewController;
    EXPECT_TRUE([container isKindOfClass:[ZelvoraIOSViewController class]]);
    return static_cast<ZelvoraIOSViewController*>(container);
}

ZelvoraWebView* SurfaceTest::webViewIn(UIView* view)
{
    return static_cast<ZelvoraWebView*>(viewIn(view, [ZelvoraWebView class]));
}

std::vector<std::string> SurfaceTest::errorLines()
{
    static constexpr std::string_view prefix = "[ZelvoraSDK] ";
    std::vector<std::string> lines;
    for (auto const& entry : doubles::logEntries()) {
        if (entry.type == OS_LOG_TYPE_ERROR)
            lines.push_back(entry.text.substr(prefix.size()));
    }
    doubles::clearLog();
    return lines;
}

std::string textOf(NSString* text)
{
    return text ? std::string(text.UTF8String) : "nil";
}

}
