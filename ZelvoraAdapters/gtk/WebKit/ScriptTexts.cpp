#include "ZelvoraAdapters/gtk/WebKit/ScriptTexts.h"

#include <algorithm>
#include <cstdint>

namespace zelvora::gtk {

namespace {

bool continuesACharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// How many UTF-16 units begin with this byte.
std::uint8_t unitsOf(char byte)
{
    constexpr unsigned char firstOfFour = 0xf0;
    return static_cast<std::uint8_t>(
        (continuesACharacter(byte) ? 0 : 1) + (static_cast<unsigned char>(byte) < firstOfFour ? 0 : 1));
}

std::size_t bytesOf(std::string_view text, std::size_t length)
{
    // A block has at most one unit more than bytes, if it ends with the first byte of four. Its sum is a byte, so that
    // the compiler adds many at once: texts can be long.
    constexpr std::size_t block = 64;
    std::size_t bytes = 0;
    std::size_t units = 0;
    while (length - units > block && text.size() - bytes >= block) {
        std::uint8_t sum = 0;
        for (auto const byte : text.substr(bytes, block))
            sum = static_cast<std::uint8_t>(sum + unitsOf(byte));
        units += sum;
        bytes += block;
    }
    for (; bytes < text.size() && (units < length || continuesACharacter(text[bytes])); ++bytes)
        units += unitsOf(text[bytes]);
    return bytes;
}

}

std::string_view ScriptTexts::take(std::size_t length)
{
    auto const text = m_rest.substr(0, bytesOf(m_rest, length));
    m_rest.remove_prefix(std::min(text.size() + 1, m_rest.size()));
    return text;
}

}
