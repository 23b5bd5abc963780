#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <memory>
#include <optional>
#include <string>

namespace zelvora::internal {

/// Answers a page: calls its function with the value as a JavaScript literal. `callback` is any expression that names
/// a function and is inserted unchanged. The call is queued to the main queue and keeps the web view alive until then;
/// without a web view it is only logged. Results and script errors are ignored.
void sendCallback(std::shared_ptr<platform::WKWebView> const& webView, std::string const& callback,
    std::optional<platform::Value> const& value);

}
