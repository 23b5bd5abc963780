#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"

#include <cstdint>
#include <filesystem>

namespace zelvora::examples {

/// The options of a host that uses the local service instead of the real one: its addresses and its certificates, which
/// are in the given folder. The host adds its own names and its data folder.
[[nodiscard]] gtk::HostOptions localServiceOptions(std::uint16_t port, std::filesystem::path const& certificates);

}
