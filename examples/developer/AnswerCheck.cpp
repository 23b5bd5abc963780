#include "examples/developer/AnswerCheck.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <algorithm>
#include <memory>

namespace zelvora::developer {

namespace {

using Handler = std::function<void()>;

// Any other text may do something when it is evaluated.
bool isPath(std::string const& text)
{
    return !text.empty() && std::ranges::all_of(text, [](char letter) {
        return g_ascii_isalnum(letter) || letter == '_' || letter == '$' || letter == '.';
    });
}

void didAnswer(GObject* engine, GAsyncResult* result, gpointer data)
{
    std::unique_ptr<Handler> const onLost(static_cast<Handler*>(data));
    auto const isThere =
        gtk::adopt(webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(engine), result, nullptr));
    if (isThere && jsc_value_is_boolean(isThere.get()) && !jsc_value_to_boolean(isThere.get()))
        (*onLost)();
}

}

void checkAnswer(WebKitWebView* engine, std::string const& callback, std::function<void()> onLost)
{
    if (!isPath(callback))
        return;
    auto const script =
        "(() => { try { return typeof (" + callback + ") === 'function'; } catch { return false; } })()";
    webkit_web_view_evaluate_javascript(engine, script.c_str(), -1, nullptr, nullptr, nullptr, &didAnswer,
        std::make_unique<Handler>(std::move(onLost)).release());
}

}
