#include "tests/uikit/contract/PhoneHarness.h"

#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"
#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraContract/support/recorded.h"
#include "tests/uikit/contract/leaveOut.h"
#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/UIKit.h"
#include "tests/uikit/doubles/WebKit.h"

#include <utility>

/// A host's view with a height of its own.
@interface ZLVContentView : UIView {
@public
    double _height;
}
@end

@implementation ZLVContentView

- (CGSize)intrinsicContentSize
{
    return CGSize { 60, _height };
}

@end

namespace zelvora::tests {

PhoneHarness::PhoneHarness()
{
    auto const raisesItself = "the phone's system raises an exception by itself, the doubles do not always";
    leaveOut({ { "ATreeThatChangedIsLaidOutWithoutBeingAsked", "the doubles have no main loop that lays trees out" },
        { "PushingNothingOrWhatHasAPlaceStopsTheProcess", raisesItself },
        { "PresentingNothingOrWhatHasAPlaceStopsTheProcess", raisesItself } });
    uikit::install();
    m_window = [[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 390, 844)];
    doubles::setOpenableSchemes({ "zelvora-test" });
    doubles::setApplicationState(UIApplicationStateBackground);
}

PhoneHarness::~PhoneHarness()
{
    m_window.rootViewController = nil;
}

bool PhoneHarness::runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([this, &done] {
        doubles::finishTransitions();
        m_pool.drain();
        return done();
    });
}

void PhoneHarness::show(std::shared_ptr<platform::UIViewController> controller)
{
    @autoreleasepool {
        m_window.rootViewController = uikit::nativeOf(*controller);
        [m_window makeKeyAndVisible];
    }
}

std::shared_ptr<platform::UINavigationController> PhoneHarness::makeNavigationController(
    std::shared_ptr<platform::UIViewController> root)
{
    @autoreleasepool {
        UINavigationController* native = [[UINavigationController alloc] initWithNibName:nil bundle:nil];
        native.viewControllers = @[ uikit::nativeOf(*root) ];
        return std::dynamic_pointer_cast<platform::UINavigationController>(uikit::retain(native));
    }
}

std::shared_ptr<platform::UIView> PhoneHarness::makeContentView(double height)
{
    ZLVContentView* native = [[ZLVContentView alloc] initWithFrame:CGRectMake(0, 0, 0, 0)];
    native->_height = height;
    return uikit::wrap(native);
}

platform::CGRect PhoneHarness::seenFrame(platform::UIView& view)
{
    CGRect const frame = uikit::nativeOf(view).frame;
    return { frame.origin.x, frame.origin.y, frame.size.width, frame.size.height };
}

bool PhoneHarness::isSeen(platform::UIView& view)
{
    UIView* native = uikit::nativeOf(view);
    return native.superview && !native.hidden;
}

std::vector<platform::UIView const*> PhoneHarness::backToFront(platform::UIView& parent)
{
    std::vector<platform::UIView const*> views;
    for (UIView* native in uikit::nativeOf(parent).subviews)
        views.push_back(uikit::ownerOf(native).get());
    return views;
}

void PhoneHarness::dragFromLeftEdge(platform::UIView& view)
{
    [uikit::nativeOf(view) doubleDragFromLeftEdge];
}

void PhoneHarness::show(std::shared_ptr<platform::WKWebView> view)
{
    m_shownWebView = static_cast<WKWebView*>(uikit::nativeOf(*view));
    auto const controller = std::make_shared<platform::UIViewController>();
    show(controller);
    controller->view().addSubview(std::move(view));
}

bool PhoneHarness::waitForPage(platform::WKWebView&)
{
    std::vector<platform::WKUserScript> scripts;
    for (WKUserScript* script in m_shownWebView.configuration.userContentController.userScripts) {
        bool const isAtEnd = script.injectionTime == WKUserScriptInjectionTimeAtDocumentEnd;
        using Time = platform::WKUserScriptInjectionTime;
        scripts.push_back({ .source = uikit::textOf(script.source),
            .injectionTime = isAtEnd ? Time::AtDocumentEnd : Time::AtDocumentStart });
    }
    for (auto& mark : marksIn(scripts))
        m_marks.push_back(std::move(mark));
    return true;
}

void PhoneHarness::navigate(platform::WKWebView& view, platform::URL const& url)
{
    [static_cast<WKWebView*>(uikit::nativeOf(view)) doubleNavigateTo:uikit::nativeURL(url)];
}

void PhoneHarness::navigateFrame(platform::WKWebView& view, platform::URL const& url)
{
    [static_cast<WKWebView*>(uikit::nativeOf(view)) doubleNavigateFrameTo:uikit::nativeURL(url)];
}

void PhoneHarness::post(
    platform::WKWebView& view, std::string const& handler, std::string const&, platform::Value const& value)
{
    [static_cast<WKWebView*>(uikit::nativeOf(view)) doublePost:uikit::objectOf(value)
                                                     toHandler:uikit::stringOf(handler)];
}

std::vector<std::string> PhoneHarness::marks()
{
    auto marks = m_marks;
    for (auto const& script : doubles::evaluatedScripts(m_shownWebView))
        marks.push_back(markIn(script));
    return marks;
}

std::vector<ReceivedRequest> PhoneHarness::received()
{
    std::vector<ReceivedRequest> received;
    for (NSURLRequest* native : doubles::loadedRequests(m_shownWebView)) {
        platform::URLRequest request { .url = *uikit::urlOf(native.URL) };
        NSDictionary* fields = native.allHTTPHeaderFields;
        for (NSString* name in fields)
            request.httpHeaderFields[uikit::textOf(name)] = uikit::textOf([fields objectForKey:name]);
        received.push_back(receivedRequest(request));
    }
    return received;
}

void PhoneHarness::activate()
{
    doubles::setApplicationState(UIApplicationStateActive);
}

void PhoneHarness::deactivate()
{
    doubles::setApplicationState(UIApplicationStateInactive);
}

std::vector<std::string> PhoneHarness::openedURLs()
{
    return doubles::openedURLs();
}

}
