#pragma once

#include <filesystem>

namespace zelvora::examples {

/// Saves what the program "zelvora-accessibility" prints about this app and its pages. Runs the main loop, because the
/// program asks this app. False if the program fails or takes long.
[[nodiscard]] bool saveTree(std::filesystem::path const& program, std::filesystem::path const& file);

}
