#pragma once

#include "ZelvoraAdapters/gtk/Host.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// The adapter for GTK with a window of a phone's size on an X display, driven by a real pointer. It needs "xdotool";
/// without a display it stops the process and says so. The user's own folders are a temporary one, in which an app is
/// registered for the scheme "zelvora-test".
class GtkHarness final {
public:
    using Configure = std::function<void(gtk::HostOptions&)>;

    GtkHarness() : GtkHarness([](gtk::HostOptions&) { }) { }
    /// With other options than a host has as a rule.
    explicit GtkHarness(Configure const& configure);
    GtkHarness(GtkHarness const&) = delete;
    GtkHarness& operator=(GtkHarness const&) = delete;
    ~GtkHarness();

    bool runUntil(std::function<bool()> const& done);

    /// The folder that stands for the user's own.
    std::filesystem::path const& directory() const { return m_directory.path(); }
    GtkWindow* window();
    /// The window has been destroyed by others.
    void forgetWindow() { m_window = nullptr; }

    // Screens
    platform::CGRect screenBounds();
    double safeTop() { return 44; }
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
    /// Presses, moves through the points and releases, and lets the window take it all in.
    void drag(std::vector<std::pair<int, int>> const& points);
    /// Lets `xdotool` act on the display.
    void act(std::vector<std::string> const& arguments);

    // Pages
    void show(std::shared_ptr<platform::WKWebView> view);
    platform::URL page(std::string const& name);
    /// A page with this in its body.
    platform::URL page(std::string const& name, std::string const& html);
    bool waitForPage(platform::WKWebView& view);
    void navigate(platform::WKWebView& view, platform::URL const& url);
    void navigateFrame(platform::WKWebView& view, platform::URL const& url);
    void post(platform::WKWebView& view, std::string const& handler, std::string const& expression,
        platform::Value const& value);
    std::vector<std::string> marks() { return m_marks; }
    /// By the server of the pages.
    std::vector<ReceivedRequest> received() const { return m_server->received(); }

    // Applications
    void activate();
    void deactivate();
    std::vector<std::string> openedURLs();

private:
    class MarkHandler;

    void registerHandler();

    TemporaryDirectory m_directory;
    GtkWindow* m_window = nullptr;
    std::shared_ptr<platform::UIViewController> m_shown;
    std::unique_ptr<LoopbackServer> m_server;
    std::vector<std::string> m_marks;
    std::unique_ptr<MarkHandler> m_markHandler;
    std::shared_ptr<platform::WKUserContentController> m_markedContent;
};

}
