#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zelvora::gtk {

/// Where the app keeps what it must not lose: the folder named as the app's bundle identifier, or as the program where
/// there is none, in $XDG_DATA_HOME. The folder may not exist yet.
[[nodiscard]] std::filesystem::path dataDirectory(std::optional<std::string> const& bundleIdentifier);

/// Makes the folder with what is above it, for this user alone. False where that cannot be; the reason is then in
/// `errno`.
[[nodiscard]] bool ensureDataDirectory(std::filesystem::path const& directory);

}
