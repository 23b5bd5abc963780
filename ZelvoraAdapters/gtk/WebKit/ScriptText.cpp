#include "ZelvoraAdapters/gtk/WebKit/ScriptText.h"

#include <glib.h>

#include <array>
#include <charconv>
#include <cstdint>

namespace zelvora::gtk {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

bool isHighSurrogate(std::uint32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void append(std::string& text, std::uint32_t character)
{
    std::array<char, 6> encoded {};
    auto const length = g_unichar_to_utf8(character, encoded.data());
    text.append(encoded.data(), static_cast<std::size_t>(length));
}

/// Consumes the four digits of a `\u` escape.
std::uint32_t takeUnit(std::string_view& rest)
{
    std::uint32_t unit = replacement;
    auto const digits = rest.substr(0, 4);
    std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
    rest.remove_prefix(digits.size());
    return unit;
}

std::uint32_t takeEscapedCharacter(std::string_view& rest)
{
    auto const unit = takeUnit(rest);
    if (isHighSurrogate(unit) && rest.starts_with("\\u")) {
        auto following = rest.substr(2);
        if (auto const low = takeUnit(following); isLowSurrogate(low)) {
            rest = following;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? replacement : unit;
}

char plainEscape(char letter)
{
    switch (letter) {
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return letter;
    }
}

}

double scriptNumber(std::string_view text)
{
    return g_ascii_strtod(std::string(text).c_str(), nullptr);
}

std::string unquoteScriptText(std::string_view literal)
{
    auto rest = literal.substr(1, literal.size() - 2);
    std::string text;
    text.reserve(rest.size());
    while (!rest.empty()) {
        auto const plain = std::min(rest.find('\\'), rest.size());
        text.append(rest.substr(0, plain));
        rest.remove_prefix(plain);
        if (rest.empty())
            break;
        char const letter = rest[1];
        rest.remove_prefix(2);
        if (letter == 'u')
            append(text, takeEscapedCharacter(rest));
        else
            text.push_back(plainEscape(letter));
    }
    return text;
}

}
