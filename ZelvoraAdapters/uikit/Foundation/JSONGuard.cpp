#include "ZelvoraAdapters/uikit/Foundation/JSONGuard.h"

#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace zelvora::uikit {

namespace {

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

class Scanner final {
public:
    explicit Scanner(std::string_view text) : m_text(text) { }

    bool scan()
    {
        while (m_at < m_text.size()) {
            if (!step(m_text[m_at++]))
                return false;
        }
        return true;
    }

private:
    bool step(char character)
    {
        if (m_isClosed)
            return isBlank(character);
        switch (character) {
        case '[':
        case '{':
            return ++m_depth <= platform::Value::maximumNesting;
        case ']':
        case '}':
            if (m_depth == 0)
                return false;
            m_isClosed = --m_depth == 0;
            return true;
        case '"':
            return skipText();
        default:
            return true;
        }
    }

    bool skipText()
    {
        while (m_at < m_text.size()) {
            char const character = m_text[m_at++];
            if (character == '"')
                return true;
            if (character == '\\' && !skipEscape())
                return false;
        }
        return false;
    }

    bool skipEscape()
    {
        if (m_at < m_text.size() && m_text[m_at] != 'u') {
            ++m_at;
            return true;
        }
        auto const unit = readUnit();
        if (!unit || (*unit >= 0xdc00 && *unit < 0xe000))
            return false;
        if (*unit < 0xd800 || *unit >= 0xe000)
            return true;
        bool const isFollowed = m_at < m_text.size() && m_text[m_at++] == '\\';
        auto const low = isFollowed ? readUnit() : std::nullopt;
        return low && *low >= 0xdc00 && *low < 0xe000;
    }

    // "u" and four hexadecimal digits.
    std::optional<std::uint16_t> readUnit()
    {
        constexpr std::size_t length = 5;
        auto const escape = m_text.substr(m_at, length);
        m_at += escape.size();
        if (escape.size() < length || escape.front() != 'u')
            return std::nullopt;
        std::uint16_t unit = 0;
        auto const* const end = escape.data() + length;
        auto const result = std::from_chars(escape.data() + 1, end, unit, 16);
        return result.ec == std::errc() && result.ptr == end ? std::optional(unit) : std::nullopt;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_depth = 0;
    bool m_isClosed = false;
};

}

bool isSafeToReadAsJSON(std::string_view bytes)
{
    return platform::isValidUTF8(bytes) && Scanner(bytes).scan();
}

}
