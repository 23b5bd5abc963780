#pragma once

#include "ZelvoraAdapters/skeleton/Platform.h"
#include "ZelvoraAdapters/skeleton/UIKit/NavigationController.h"
#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/support/ReceivedRequest.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

using skeleton::missing;

/// Views, screens, gestures, pages and the application.
class SkeletonScreen final {
public:
    SkeletonScreen() { platform::Platform::install(std::make_unique<skeleton::Platform>()); }

    bool runUntil(std::function<bool()> const&) { missing("SkeletonScreen::runUntil"); }

    // Screens
    platform::CGRect screenBounds() { missing("SkeletonScreen::screenBounds"); }
    double safeTop() { missing("SkeletonScreen::safeTop"); }
    double safeBottom() { missing("SkeletonScreen::safeBottom"); }
    void show(std::shared_ptr<platform::UIViewController>) { missing("SkeletonScreen::show, a controller"); }
    std::shared_ptr<platform::UINavigationController> makeNavigationController(
        std::shared_ptr<platform::UIViewController> root)
    {
        auto stack = std::make_shared<skeleton::NavigationController>();
        stack->pushViewController(std::move(root), platform::Animated::No);
        return stack;
    }

    // Views
    std::shared_ptr<platform::UIView> makeContentView(double) { missing("SkeletonScreen::makeContentView"); }
    platform::CGRect seenFrame(platform::UIView&) { missing("SkeletonScreen::seenFrame"); }
    bool isSeen(platform::UIView&) { missing("SkeletonScreen::isSeen"); }
    std::vector<platform::UIView const*> backToFront(platform::UIView&) { missing("SkeletonScreen::backToFront"); }

    // Fingers
    void dragFromLeftEdge(platform::UIView&) { missing("SkeletonScreen::dragFromLeftEdge"); }

    // Pages
    void show(std::shared_ptr<platform::WKWebView>) { missing("SkeletonScreen::show, a page"); }
    platform::URL page(std::string const&) { missing("SkeletonScreen::page"); }
    bool waitForPage(platform::WKWebView&) { missing("SkeletonScreen::waitForPage"); }
    void navigate(platform::WKWebView&, platform::URL const&) { missing("SkeletonScreen::navigate"); }
    void navigateFrame(platform::WKWebView&, platform::URL const&) { missing("SkeletonScreen::navigateFrame"); }
    void post(platform::WKWebView&, std::string const&, std::string const&, platform::Value const&)
    {
        missing("SkeletonScreen::post");
    }
    std::vector<std::string> marks() { missing("SkeletonScreen::marks"); }
    std::vector<ReceivedRequest> received() { missing("SkeletonScreen::received"); }

    // Applications
    void activate() { missing("SkeletonScreen::activate"); }
    void deactivate() { missing("SkeletonScreen::deactivate"); }
    std::vector<std::string> openedURLs() { missing("SkeletonScreen::openedURLs"); }
};

}
