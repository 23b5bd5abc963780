#pragma once

#include <cstdint>

namespace zelvora::platform {

/// Whether a screen comes or goes with the system's own animation or at once.
enum class Animated : std::uint8_t { No, Yes };

}
