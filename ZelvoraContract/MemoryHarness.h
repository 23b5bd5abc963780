#pragma once

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"
#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraAdapters/memory/WebKit/WebView.h"
#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraContract/support/recorded.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// The adapter in memory, for the contracts of views, screens, gestures, pages and applications.
class MemoryHarness final {
public:
    MemoryHarness()
    {
        m_platform.application().setOpenableSchemes({ "zelvora-test" });
        m_platform.application().setApplicationState(platform::UIApplicationState::Background);
        // Nobody is there to answer.
        m_platform.trackingManager().setStatus(platform::ATTrackingAuthorizationStatus::Denied);
    }

    bool runUntil(std::function<bool()> const& done)
    {
        m_platform.runUntilIdle();
        return done();
    }

    // Screens
    platform::CGRect screenBounds() { return m_platform.screen().bounds(); }
    double safeTop() { return m_platform.screen().safeAreaInsets().top; }
    double safeBottom() { return m_platform.screen().safeAreaInsets().bottom; }
    void show(std::shared_ptr<platform::UIViewController> controller)
    {
        (void)controller->view();
        m_shown = std::move(controller);
    }
    std::shared_ptr<platform::UINavigationController> makeNavigationController(
        std::shared_ptr<platform::UIViewController> root)
    {
        auto stack = std::make_shared<memory::NavigationController>();
        stack->pushViewController(std::move(root), platform::Animated::No);
        return stack;
    }

    // Views
    std::shared_ptr<platform::UIView> makeContentView(double height)
    {
        return std::make_shared<memory::View>(memory::IntrinsicSize { .width = 60, .height = height });
    }
    platform::CGRect seenFrame(platform::UIView& view)
    {
        m_platform.layout();
        return memory::frame(view);
    }
    bool isSeen(platform::UIView& view) { return !view.isHidden(); }
    std::vector<platform::UIView const*> backToFront(platform::UIView& parent)
    {
        std::vector<platform::UIView const*> views;
        for (auto const& view : parent.subviews())
            views.push_back(view.get());
        return views;
    }

    // Fingers
    void dragFromLeftEdge(platform::UIView& view) { memory::edgePan(view); }

    // Pages
    void show(std::shared_ptr<platform::WKWebView> view)
    {
        show(std::make_shared<platform::UIViewController>());
        m_shown->view().addSubview(std::move(view));
    }
    platform::URL page(std::string const& name) { return *platform::URL::parse("https://shop.example/" + name); }
    bool waitForPage(platform::WKWebView& view)
    {
        for (auto& mark : marksIn(webView(view).userContentController().userScripts()))
            m_marks.push_back(std::move(mark));
        return true;
    }
    void navigate(platform::WKWebView& view, platform::URL const& url) { webView(view).navigate(url); }
    void navigateFrame(platform::WKWebView& view, platform::URL const& url) { webView(view).navigateFrame(url); }
    void post(platform::WKWebView& view, std::string const& handler, std::string const&, platform::Value const& value)
    {
        webView(view).postMessage(handler, value);
    }
    std::vector<std::string> marks()
    {
        auto marks = m_marks;
        for (auto const& view : m_platform.webViews()) {
            for (auto const& script : view->evaluated())
                marks.push_back(markIn(script));
        }
        return marks;
    }
    std::vector<ReceivedRequest> received()
    {
        std::vector<ReceivedRequest> received;
        for (auto const& view : m_platform.webViews()) {
            for (auto const& request : view->loadedRequests())
                received.push_back(receivedRequest(request));
        }
        return received;
    }

    // Applications
    void activate() { m_platform.application().setApplicationState(platform::UIApplicationState::Active); }
    void deactivate() { m_platform.application().setApplicationState(platform::UIApplicationState::Inactive); }
    std::vector<std::string> openedURLs()
    {
        std::vector<std::string> opened;
        for (auto const& url : m_platform.application().openedURLs())
            opened.push_back(url.absoluteString());
        return opened;
    }

private:
    static memory::WebView& webView(platform::WKWebView& view) { return static_cast<memory::WebView&>(view); }

    memory::Platform& m_platform = memory::install();
    std::shared_ptr<platform::UIViewController> m_shown;
    // Of the user scripts.
    std::vector<std::string> m_marks;
};

}
