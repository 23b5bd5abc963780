#pragma once

#include <cstdint>
#include <string_view>

namespace zelvora::shared {

/// CRC-32C of the bytes, going on from the checksum of what came before them (0 at the start). Uses the processor's
/// own instruction where there is one.
[[nodiscard]] std::uint32_t checksum(std::uint32_t before, std::string_view bytes);

/// The same in plain C++: what runs where the processor has no instruction for it.
[[nodiscard]] std::uint32_t portableChecksum(std::uint32_t before, std::string_view bytes);

}
