#pragma once

#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#include <memory>

namespace zelvora::platform {

/// What a web view is made with.
struct WKWebViewConfiguration {
    /// Required: made by the same platform as the web view.
    std::shared_ptr<WKUserContentController> userContentController;
};

}
