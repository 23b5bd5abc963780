#pragma once

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include <webkit/webkit.h>

namespace zelvora::examples {

/// The engine's web view inside one of the SDK's. The SDK's view owns it.
[[nodiscard]] WebKitWebView* engineOf(ZelvoraWebView const& view);

}
