#pragma once

#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "tests/uikit/contract/AutoreleasePool.h"

#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// The phone's adapter on doubles of its frameworks, with a window of 390 by 844 points.
class PhoneHarness final {
public:
    PhoneHarness();
    PhoneHarness(PhoneHarness const&) = delete;
    PhoneHarness& operator=(PhoneHarness const&) = delete;
    ~PhoneHarness();

    bool runUntil(std::function<bool()> const& done);

    // Screens
    platform::CGRect screenBounds() { return { 0, 0, 390, 844 }; }
    double safeTop() { return 47; }
    double safeBottom() { return 34; }
    void show(std::shared_ptr<platform::UIViewController> controller);
    std::shared_ptr<platform::UINavigationController> makeNavigationController(
        std::shared_ptr<platform::UIViewController> root);

    // Views
    std::shared_ptr<platform::UIView> makeContentView(double height);
    platform::CGRect seenFrame(platform::UIView& view);
    bool isSeen(platform::UIView& view);
    std::vector<platform::UIView const*> backToFront(platform::UIView& parent);

    // Fingers
    void dragFromLeftEdge(platform::UIView& view);

    // Pages
    void show(std::shared_ptr<platform::WKWebView> view);
    platform::URL page(std::string const& name) { return *platform::URL::parse("https://shop.example/" + name); }
    bool waitForPage(platform::WKWebView& view);
    void navigate(platform::WKWebView& view, platform::URL const& url);
    void navigateFrame(platform::WKWebView& view, platform::URL const& url);
    void post(platform::WKWebView& view, std::string const& handler, std::string const& expression,
        platform::Value const& value);
    std::vector<std::string> marks();
    std::vector<ReceivedRequest> received();

    // Applications
    void activate();
    void deactivate();
    std::vector<std::string> openedURLs();

private:
    AutoreleasePool m_pool;
    UIWindow* m_window;
    WKWebView* m_shownWebView = nil;
    // Of the user scripts.
    std::vector<std::string> m_marks;
};

}
