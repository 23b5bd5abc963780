#include "tests/uikit/WindowTest.h"

#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/Tracking.h"
#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/URLSession.h"

namespace zelvora::tests {

WindowTest::WindowTest()
    : m_window([[UIWindow alloc] initWithFrame:CGRectMake(0, 0, doubles::screenWidth, doubles::screenHeight)])
{
    doubles::setApplicationState(UIApplicationStateActive);
    doubles::setTrackingStatus(ATTrackingManagerAuthorizationStatusDenied);
    doubles::network().setServer([](doubles::SentRequest const& request) -> doubles::Outcome {
        bool const isLookup = request.url.find("lookup") != std::string::npos;
        return doubles::HTTPAnswer { 200, isLookup ? R"({"data":{"shopId":"mall"}})" : "" };
    });
}

bool WindowTest::runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([&done] {
        @autoreleasepool {
            return done();
        }
    });
}

void WindowTest::settle()
{
    @autoreleasepool {
        doubles::finishTransitions();
        doubles::runMainQueue();
        doubles::finishTransitions();
    }
}

UINavigationController* WindowTest::showStack()
{
    UIViewController* home = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    UINavigationController* stack = [[UINavigationController alloc] initWithRootViewController:home];
    m_window.rootViewController = stack;
    [m_window makeKeyAndVisible];
    return stack;
}

UIView* WindowTest::viewIn(UIView* view, Class wanted)
{
    for (UIView* child in view.subviews) {
        if ([child isKindOfClass:wanted])
            return child;
    }
    return nil;
}

WKWebView* WindowTest::pageIn(UIView* view)
{
    return static_cast<WKWebView*>(viewIn(view, [WKWebView class]));
}

}
