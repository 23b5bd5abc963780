#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace zelvora::examples {

/// Drives a page as its user would, by clicking elements. Main thread; calls that wait run the main loop.
class Page final {
public:
    /// Keeps a reference to the web view, so that it may be used after its container is gone.
    explicit Page(WebKitWebView* webView);

    /// The value of the expression as JSON; absent if it throws.
    [[nodiscard]] std::optional<std::string> evaluate(std::string const& expression);

    /// Waits until the expression is true; false if it is not after `seconds`. An expression that throws counts as
    /// false.
    [[nodiscard]] bool waitFor(std::string const& expression, double seconds = 20);

    /// Waits for an element with this id and clicks it; false if none appears.
    bool click(std::string const& id);
    /// Waits until a page whose path ends like this reports that it is complete; false if none does.
    [[nodiscard]] bool waitUntilReady(std::string const& pathEnd);

    /// Waits until the page's current state has been drawn.
    [[nodiscard]] bool waitUntilPainted();

    /// The text as a JavaScript string literal.
    [[nodiscard]] static std::string literal(std::string const& text);

private:
    gtk::GObjectPointer<WebKitWebView> m_webView;
};

}
