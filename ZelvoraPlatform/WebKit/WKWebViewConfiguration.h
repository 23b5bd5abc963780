#pragma once

#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#include <memory>

namespace zelvora::platform {

struct WKWebViewConfiguration {
    std::shared_ptr<WKUserContentController> userContentController;
};

}
