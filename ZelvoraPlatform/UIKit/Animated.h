#pragma once

#include <cstdint>

namespace zelvora::platform {

enum class Animated : std::uint8_t { No, Yes };

}
