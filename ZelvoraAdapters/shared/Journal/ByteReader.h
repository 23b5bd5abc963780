#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zelvora::shared {

/// Takes numbers and runs of bytes from the front of bytes that nobody vouches for: what is not there in full is
/// absent, and no length is believed beyond what is there.
class ByteReader final {
public:
    explicit ByteReader(std::string_view bytes) : m_rest(bytes) { }

    [[nodiscard]] std::size_t remaining() const { return m_rest.size(); }
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

    [[nodiscard]] std::optional<std::uint8_t> byte();
    [[nodiscard]] std::optional<std::uint32_t> fixed32();
    [[nodiscard]] std::optional<std::uint64_t> fixed64();
    /// As `appendLength` wrote it.
    [[nodiscard]] std::optional<std::uint64_t> length();
    [[nodiscard]] std::optional<std::string_view> bytes(std::uint64_t count);
    /// A length and so many bytes.
    [[nodiscard]] std::optional<std::string_view> run();

private:
    std::string_view m_rest;
};

}
