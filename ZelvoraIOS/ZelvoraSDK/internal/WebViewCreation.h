#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"

#include <memory>

namespace zelvora::internal {

/// A web view on the site for the host to place. It becomes the active web view. Logs an error and returns nullptr if a
/// key is missing. Main thread.
[[nodiscard]] std::shared_ptr<ZelvoraWebView> createWebView(GuardedProperties& properties);

}
