#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"

#include <optional>
#include <string>

namespace zelvora::internal {

/// The address of the page in the active web view: the one that was created last, by a container or for the host.
/// Absent if that view no longer exists or shows no page. Main thread.
[[nodiscard]] std::optional<std::string> getCurrentUrl(GuardedProperties const& properties);

}
