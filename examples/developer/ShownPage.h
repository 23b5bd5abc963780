#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/driving/Page.h"

#include <webkit/webkit.h>

#include <expected>
#include <string>

namespace zelvora::developer {

/// The page that the app shows now, as a script uses it. Main thread; calls that wait run the main loop.
class ShownPage final {
public:
    using Result = std::expected<void, std::string>;

    explicit ShownPage(WebKitWebView* engine) : m_engine(gtk::retain(engine)), m_page(engine) { }

    [[nodiscard]] Result load(std::string const& address, double seconds);
    [[nodiscard]] Result reload(double seconds);
    /// Waits until the page is complete. The error says what the server answered instead.
    [[nodiscard]] Result waitUntilLoaded(double seconds);

    /// Runs a script to its end. What it posted has been handled then.
    [[nodiscard]] Result run(std::string const& script);
    [[nodiscard]] bool waitUntilTrue(std::string const& expression, double seconds);
    void waitUntilPainted() { (void)m_page.waitUntilPainted(); }

private:
    gtk::GObjectPointer<WebKitWebView> m_engine;
    examples::Page m_page;
};

}
