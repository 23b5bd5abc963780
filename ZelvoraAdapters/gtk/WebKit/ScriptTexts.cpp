#include "ZelvoraAdapters/gtk/WebKit/ScriptTexts.h"

#include <algorithm>

namespace zelvora::gtk {

namespace {

struct Character {
    std::size_t bytes = 1;
    std::size_t units = 1;
};

Character beginningWith(unsigned char byte)
{
    if (byte < 0x80)
        return { 1, 1 };
    if (byte < 0xE0)
        return { 2, 1 };
    if (byte < 0xF0)
        return { 3, 1 };
    return { 4, 2 };
}

}

ScriptTexts::ScriptTexts(std::string_view joined, std::size_t length)
    : m_rest(joined)
    , m_hasOneByteForEachUnit(joined.size() == length)
{
}

std::string_view ScriptTexts::take(std::size_t length)
{
    auto const bytes = m_hasOneByteForEachUnit ? std::min(length, m_rest.size()) : bytesOf(length);
    auto const text = m_rest.substr(0, bytes);
    m_rest.remove_prefix(std::min(bytes + 1, m_rest.size()));
    return text;
}

std::size_t ScriptTexts::bytesOf(std::size_t length) const
{
    std::size_t bytes = 0;
    for (std::size_t units = 0; units < length && bytes < m_rest.size();) {
        auto const character = beginningWith(static_cast<unsigned char>(m_rest[bytes]));
        bytes += character.bytes;
        units += character.units;
    }
    return std::min(bytes, m_rest.size());
}

}
