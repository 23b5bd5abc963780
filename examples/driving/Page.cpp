#include "examples/driving/Page.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

struct Evaluation {
    bool isDone = false;
    std::optional<std::string> result;
};

void didEvaluate(GObject* webView, GAsyncResult* result, gpointer data)
{
    // Shared with the caller, who may have stopped waiting.
    std::unique_ptr<std::shared_ptr<Evaluation>> const evaluation(static_cast<std::shared_ptr<Evaluation>*>(data));
    auto const value =
        gtk::adopt(webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(webView), result, nullptr));
    if (value) {
        gtk::GTextPointer const text(jsc_value_to_string(value.get()));
        (*evaluation)->result = text.get();
    }
    (*evaluation)->isDone = true;
}

}

Page::Page(WebKitWebView* webView) : m_webView(gtk::retain(webView)) { }

std::string Page::literal(std::string const& text)
{
    return nlohmann::json(text).dump();
}

std::optional<std::string> Page::evaluate(std::string const& expression)
{
    auto const script = "JSON.stringify(" + expression + ") ?? 'null'";
    auto const evaluation = std::make_shared<Evaluation>();
    webkit_web_view_evaluate_javascript(m_webView.get(), script.c_str(), -1, nullptr, nullptr, nullptr, &didEvaluate,
        std::make_unique<std::shared_ptr<Evaluation>>(evaluation).release());
    (void)gtk::runMainLoopUntil([&] { return evaluation->isDone; });
    return evaluation->result;
}

bool Page::waitFor(std::string const& expression, double seconds)
{
    auto const deadline = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
    while (g_get_monotonic_time() < deadline) {
        if (evaluate("Boolean(" + expression + ")") == "true")
            return true;
        (void)gtk::runMainLoopUntil([] { return false; }, 0.05);
    }
    return false;
}

bool Page::click(std::string const& id)
{
    auto const element = "document.getElementById(" + literal(id) + ")";
    if (!waitFor(element))
        return false;
    return evaluate("(" + element + ".scrollIntoView({ block: 'center' }), " + element + ".click(), true)") == "true";
}

bool Page::waitUntilPainted()
{
    // The callback of the second frame runs after the first frame has been drawn.
    (void)evaluate("(window.drivingPainted = false, requestAnimationFrame(() => requestAnimationFrame("
                   "() => { window.drivingPainted = true; })), true)");
    return waitFor("window.drivingPainted");
}

bool Page::waitUntilReady(std::string const& pathEnd)
{
    return waitFor("document.body.dataset.state === 'ready' && location.pathname.endsWith(" + literal(pathEnd) + ")");
}

}
