#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace zelvora::developer {

/// Asks the page whether its main frame has the function that is to be called with an answer, and calls `onLost` if it
/// has not. The page is asked in its turn: ask before the answer is given. A callback that is no plain path, such as an
/// expression, is not asked about. Main thread.
void checkAnswer(WebKitWebView* engine, std::string const& callback, std::function<void()> onLost);

}
