#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zelvora::shared {

/// Reads numbers and strings from the front of untrusted bytes. A result is absent if it is not there in full; a length
/// is never trusted beyond the bytes that remain.
class ByteReader final {
public:
    explicit ByteReader(std::string_view bytes) : m_rest(bytes) { }

    [[nodiscard]] std::size_t remaining() const { return m_rest.size(); }
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

    [[nodiscard]] std::optional<std::uint8_t> byte();
    [[nodiscard]] std::optional<std::uint32_t> fixed32();
    [[nodiscard]] std::optional<std::uint64_t> fixed64();
    /// See `appendVarint`.
    [[nodiscard]] std::optional<std::uint64_t> varint();
    [[nodiscard]] std::optional<std::string_view> bytes(std::uint64_t count);
    /// See `appendLengthPrefixed`.
    [[nodiscard]] std::optional<std::string_view> lengthPrefixed();

private:
    std::string_view m_rest;
};

}
