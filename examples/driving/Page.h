#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace zelvora::examples {

/// Drives a page as its user would, by clicking what it shows. Main thread; every call turns the main loop while it
/// waits.
class Page final {
public:
    /// Holds the web view, so that it may be asked even after the container has gone.
    explicit Page(WebKitWebView* webView);

    /// What the expression gives, as JSON; absent where it throws.
    [[nodiscard]] std::optional<std::string> evaluate(std::string const& expression);

    /// Waits until the expression is true; an expression that throws is not yet.
    [[nodiscard]] bool waitFor(std::string const& expression, double seconds = 20);

    /// Clicks the element with this id, as soon as there is one. False where none comes.
    bool click(std::string const& id);
    /// Waits until a page whose path ends so says that it is complete.
    [[nodiscard]] bool waitUntilReady(std::string const& pathEnd);

    /// Waits until what the page shows now has been drawn.
    [[nodiscard]] bool waitUntilPainted();

    /// The text of a JavaScript string literal.
    [[nodiscard]] static std::string literal(std::string const& text);

private:
    gtk::GObjectPointer<WebKitWebView> m_webView;
};

}
