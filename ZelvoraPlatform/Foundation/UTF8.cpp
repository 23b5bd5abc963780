#include "ZelvoraPlatform/Foundation/UTF8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zelvora::platform {

namespace {

struct Lead {
    std::size_t length;
    std::uint32_t bits;
    std::uint32_t smallest;
};

std::optional<Lead> readLead(unsigned char byte)
{
    if (byte < 0x80)
        return Lead { 1, byte, 0 };
    if (byte >= 0xC2 && byte < 0xE0)
        return Lead { 2, byte & 0x1FU, 0x80 };
    if (byte >= 0xE0 && byte < 0xF0)
        return Lead { 3, byte & 0x0FU, 0x800 };
    if (byte >= 0xF0 && byte < 0xF5)
        return Lead { 4, byte & 0x07U, 0x10000 };
    return std::nullopt;
}

bool isScalar(std::uint32_t code)
{
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// The length of the well-formed sequence at the start, or 0.
std::size_t sequenceLength(std::string_view bytes)
{
    auto const lead = readLead(static_cast<unsigned char>(bytes.front()));
    if (!lead || lead->length > bytes.size())
        return 0;
    auto code = lead->bits;
    for (std::size_t i = 1; i < lead->length; ++i) {
        auto const byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0U) != 0x80)
            return 0;
        code = (code << 6U) | (byte & 0x3FU);
    }
    return code >= lead->smallest && isScalar(code) ? lead->length : 0;
}

}

bool isValidUTF8(std::string_view bytes)
{
    // Most text is ASCII, or has long runs of it.
    constexpr std::uint64_t highBits = 0x8080808080808080;
    while (!bytes.empty()) {
        std::uint64_t word = 0;
        if (bytes.size() >= sizeof word) {
            std::memcpy(&word, bytes.data(), sizeof word);
            if ((word & highBits) == 0) {
                bytes.remove_prefix(sizeof word);
                continue;
            }
        }
        auto const length = sequenceLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> decodeUTF8(std::string_view bytes)
{
    if (!isValidUTF8(bytes))
        return std::nullopt;
    return std::string(bytes);
}

}
