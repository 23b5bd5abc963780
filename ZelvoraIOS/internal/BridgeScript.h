#pragma once

#include "ZelvoraPlatform/WebKit/WKUserScript.h"

#include <string>

namespace zelvora::internal {

/// The text of the script that defines `window.ZelvoraSDKBridge`, with a function for each custom action that is
/// registered at this moment.
[[nodiscard]] std::string bridgeScriptSource();

/// That script as it is injected: into every frame of a page, subframes included, before any script of the page runs.
[[nodiscard]] platform::WKUserScript bridgeScript();

}
