#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// Little-endian on every processor.
template<typename Number>
void putFixed(char* target, Number number)
{
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        target[i] = static_cast<char>(static_cast<unsigned char>(number >> (8U * i)));
}

template<typename Number>
void appendFixed(std::string& out, Number number)
{
    char bytes[sizeof(Number)]; // NOLINT(*-avoid-c-arrays)
    putFixed(bytes, number);
    out.append(bytes, sizeof bytes);
}

/// Seven bits per byte, the lowest first; the highest bit of a byte says that more follow.
inline void appendVarint(std::string& out, std::uint64_t number)
{
    while (number >= 0x80U) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(number | 0x80U)));
        number >>= 7U;
    }
    out.push_back(static_cast<char>(static_cast<unsigned char>(number)));
}

/// The number of bytes as a varint, and the bytes.
inline void appendLengthPrefixed(std::string& out, std::string_view bytes)
{
    appendVarint(out, bytes.size());
    out.append(bytes);
}

}
