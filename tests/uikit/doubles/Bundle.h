#pragma once

#include <optional>
#include <string>

namespace zelvora::doubles {

/// The main bundle's identifier. Any thread.
void setBundleIdentifier(std::optional<std::string> identifier);

}
