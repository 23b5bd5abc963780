#include "tests/uikit/life/PhoneTest.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/Tracking.h"
#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/URLSession.h"

namespace zelvora::tests {

namespace {

ZelvoraSDK& installedSDK()
{
    uikit::install();
    return ZelvoraSDK::shared();
}

}

PhoneTest::PhoneTest()
    : m_sdk(installedSDK())
    , m_window([[UIWindow alloc] initWithFrame:CGRectMake(0, 0, doubles::screenWidth, doubles::screenHeight)])
{
    doubles::setApplicationState(UIApplicationStateActive);
    doubles::setTrackingStatus(ATTrackingManagerAuthorizationStatusDenied);
    doubles::setOpenableSchemes({ "tel" });
    doubles::network().setServer([](doubles::SentRequest const& request) -> doubles::Outcome {
        bool const isLookup = request.url.find("lookup") != std::string::npos;
        return doubles::HTTPAnswer { 200, isLookup ? R"({"data":{"shopId":"mall"}})" : "" };
    });
}

PhoneTest::~PhoneTest()
{
    doubles::network().setServer(nullptr);
}

void PhoneTest::initialize()
{
    @autoreleasepool {
        auto const provideFooter = [this](platform::UIViewController&) { return uikit::wrap(m_footer); };
        auto const keepError = [this](auto const& error) { m_errors.emplace_back(error->code()); };
        auto const result =
            m_sdk.initialize("user", "key", true, false, true, nullptr, provideFooter, m_delegate, keepError);
        EXPECT_TRUE(result);
    }
}

void PhoneTest::makeReady()
{
    initialize();
    // A start during the initialization is carried out at its end.
    __weak UIViewController* weak = nil;
    @autoreleasepool {
        UIViewController* presenter = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        weak = presenter;
        EXPECT_TRUE(m_sdk.start(uikit::retain(presenter)));
    }
    EXPECT_TRUE(runUntil([&weak] { return weak == nil; }));
    settle();
}

bool PhoneTest::runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([&done] {
        @autoreleasepool {
            return done();
        }
    });
}

void PhoneTest::settle()
{
    @autoreleasepool {
        doubles::finishTransitions();
        doubles::runMainQueue();
        doubles::finishTransitions();
    }
}

UINavigationController* PhoneTest::showStack()
{
    UIViewController* home = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    UINavigationController* stack = [[UINavigationController alloc] initWithNibName:nil bundle:nil];
    stack.viewControllers = @[ home ];
    m_window.rootViewController = stack;
    [m_window makeKeyAndVisible];
    return stack;
}

UIViewController* PhoneTest::showScreen()
{
    UIViewController* screen = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    m_window.rootViewController = screen;
    [m_window makeKeyAndVisible];
    return screen;
}

::ZelvoraWebView* PhoneTest::webViewIn(UIView* view)
{
    for (UIView* child in view.subviews) {
        if ([child isKindOfClass:[::ZelvoraWebView class]])
            return static_cast<::ZelvoraWebView*>(child);
    }
    return nil;
}

WKWebView* PhoneTest::pageIn(UIView* view)
{
    for (UIView* child in view.subviews) {
        if ([child isKindOfClass:[WKWebView class]])
            return static_cast<WKWebView*>(child);
    }
    return nil;
}

std::vector<std::string> PhoneTest::requests()
{
    std::vector<std::string> urls;
    for (auto const& request : doubles::network().requests())
        urls.push_back(request.url);
    return urls;
}

}
