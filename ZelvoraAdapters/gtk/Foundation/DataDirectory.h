#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zelvora::gtk {

/// The folder for the app's persistent data: in $XDG_DATA_HOME, named after the bundle identifier or, without one,
/// after the program. It may not exist yet.
[[nodiscard]] std::filesystem::path dataDirectory(std::optional<std::string> const& bundleIdentifier);

/// Creates the folder and its parents, accessible to this user only. Returns false with the reason in `errno` if that
/// fails.
[[nodiscard]] bool ensureDataDirectory(std::filesystem::path const& directory);

}
