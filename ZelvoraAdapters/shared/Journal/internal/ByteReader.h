#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zelvora::shared {

/// Reads numbers and strings from the front of untrusted bytes. A result is absent if it is not there in full; a length
/// is never trusted beyond the bytes that remain. In the header, because a long queue is read number by number.
class ByteReader final {
public:
    explicit ByteReader(std::string_view bytes) : m_rest(bytes) { }

    [[nodiscard]] std::size_t remaining() const { return m_rest.size(); }
    [[nodiscard]] std::string_view rest() const { return m_rest; }
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

    [[nodiscard]] std::optional<std::uint8_t> byte()
    {
        if (m_rest.empty())
            return std::nullopt;
        auto const first = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return first;
    }
    [[nodiscard]] std::optional<std::uint32_t> fixed32() { return fixed<std::uint32_t>(); }
    [[nodiscard]] std::optional<std::uint64_t> fixed64() { return fixed<std::uint64_t>(); }
    /// See `appendVarint`.
    [[nodiscard]] std::optional<std::uint64_t> varint()
    {
        std::uint64_t number = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            auto const next = byte();
            if (!next)
                return std::nullopt;
            number |= static_cast<std::uint64_t>(*next & 0x7FU) << shift;
            if ((*next & 0x80U) == 0)
                return number;
        }
        return std::nullopt;
    }
    [[nodiscard]] std::optional<std::string_view> bytes(std::uint64_t count)
    {
        if (count > m_rest.size())
            return std::nullopt;
        auto const taken = m_rest.substr(0, static_cast<std::size_t>(count));
        m_rest.remove_prefix(taken.size());
        return taken;
    }
    /// See `appendLengthPrefixed`.
    [[nodiscard]] std::optional<std::string_view> lengthPrefixed()
    {
        auto const count = varint();
        if (!count)
            return std::nullopt;
        return bytes(*count);
    }

private:
    template<typename Number>
    std::optional<Number> fixed()
    {
        auto const taken = bytes(sizeof(Number));
        if (!taken)
            return std::nullopt;
        Number number = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            number |= static_cast<Number>(static_cast<unsigned char>((*taken)[i])) << (8U * i);
        return number;
    }

    std::string_view m_rest;
};

}
