#pragma once

#include "ZelvoraPlatform/Platform.h"
#include "tests/uikit/contract/AutoreleasePool.h"
#include "tests/uikit/live/PageServer.h"

#import <UIKit/UIKit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// The phone's adapter with a real engine behind the double of its web view, and pages from a server on loopback. Of
/// the adapter's harness it is the part that shows pages.
class LiveHarness final {
public:
    LiveHarness();
    LiveHarness(LiveHarness const&) = delete;
    LiveHarness& operator=(LiveHarness const&) = delete;
    ~LiveHarness();

    bool runUntil(std::function<bool()> const& done);
    PageServer& server() { return m_server; }

    // Pages
    void show(std::shared_ptr<platform::WKWebView> view);
    platform::URL page(std::string const& name);
    /// Serves a page with this body.
    platform::URL page(std::string const& name, std::string const& html);
    bool waitForPage(platform::WKWebView& view);
    void navigate(platform::WKWebView& view, platform::URL const& url);
    void navigateFrame(platform::WKWebView& view, platform::URL const& url);
    void post(platform::WKWebView& view, std::string const& handler, std::string const& expression,
        platform::Value const& value);
    std::vector<std::string> marks() { return m_marks; }
    std::vector<ReceivedRequest> received() const { return m_server.received(); }

private:
    class MarkHandler;

    AutoreleasePool m_pool;
    PageServer m_server;
    UIWindow* m_window = nil;
    std::vector<std::string> m_marks;
    std::unique_ptr<MarkHandler> m_markHandler;
    std::shared_ptr<platform::WKUserContentController> m_markedContent;
};

}
