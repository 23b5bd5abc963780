#pragma once

#include <cstdint>
#include <string_view>

namespace zelvora::shared {

/// CRC-32C of the bytes, continued from the checksum of those before them (0 at the start). Uses the processor's
/// instruction for it if there is one.
[[nodiscard]] std::uint32_t checksum(std::uint32_t before, std::string_view bytes);

/// The same in plain C++, for processors without such an instruction.
[[nodiscard]] std::uint32_t portableChecksum(std::uint32_t before, std::string_view bytes);

}
