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

PhoneTest::PhoneTest() : m_sdk(installedSDK())
{
    doubles::setOpenableSchemes({ "tel" });
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

UIViewController* PhoneTest::showScreen()
{
    UIViewController* screen = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    m_window.rootViewController = screen;
    [m_window makeKeyAndVisible];
    return screen;
}

::ZelvoraWebView* PhoneTest::webViewIn(UIView* view)
{
    return static_cast<::ZelvoraWebView*>(viewIn(view, [::ZelvoraWebView class]));
}

std::vector<std::string> PhoneTest::requests()
{
    std::vector<std::string> urls;
    for (auto const& request : doubles::network().requests())
        urls.push_back(request.url);
    return urls;
}

}
