#pragma once

#include "ZelvoraAdapters/gtk/Host.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// The GTK adapter with a phone-sized window on an X display, driven by the display's pointer through xdotool. Without
/// a display it prints a message and stops the process. The user's folders are replaced by a temporary one, in which
/// another app is registered for the scheme "zelvora-test".
class GtkHarness final {
public:
    using Configure = std::function<void(gtk::HostOptions&)>;

    GtkHarness() : GtkHarness([](gtk::HostOptions&) { }) { }
    /// `configure` changes the options before the adapter is installed.
    explicit GtkHarness(Configure const& configure);
    GtkHarness(GtkHarness const&) = delete;
    GtkHarness& operator=(GtkHarness const&) = delete;
    ~GtkHarness();

    bool runUntil(std::function<bool()> const& done);

    /// The temporary folder that replaces the user's folders.
    std::filesystem::path const& directory() const { return m_directory.path(); }
    GtkWindow* window();
    /// Call this if the test has destroyed the window.
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
    /// Presses the button at the first point, moves through the others, releases, and waits until the window has seen
    /// the release.
    void drag(std::vector<std::pair<int, int>> const& points);
    /// Runs xdotool with these arguments.
    void act(std::vector<std::string> const& arguments);

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
    /// The requests that the pages' server has received.
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
