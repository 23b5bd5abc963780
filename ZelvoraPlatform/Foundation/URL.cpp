#include "ZelvoraPlatform/Foundation/URL.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zelvora::platform {

namespace {

bool isAlpha(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// RFC 3986, "unreserved" and "sub-delims".
bool isCommon(char c)
{
    constexpr std::string_view others = "-._~!$&'()*+,;=";
    return isAlpha(c) || isDigit(c) || others.find(c) != std::string_view::npos;
}

enum class Component : std::uint8_t { UserInfo, Host, FirstSegment, Path, QueryOrFragment };

bool isAllowed(char c, Component component)
{
    if (isCommon(c))
        return true;
    switch (component) {
    case Component::Host:
        return false;
    case Component::UserInfo:
        return c == ':';
    case Component::FirstSegment:
        return c == '@';
    case Component::Path:
        return c == ':' || c == '@' || c == '/';
    case Component::QueryOrFragment:
        return c == ':' || c == '@' || c == '/' || c == '?';
    }
    return false;
}

bool isEscape(std::string_view text, std::size_t at)
{
    return at + 2 < text.size() && text[at] == '%' && isHexDigit(text[at + 1]) && isHexDigit(text[at + 2]);
}

// Existing escapes are kept. If any "%" begins none, the text was not encoded, and every "%" is a plain character.
std::string encode(std::string_view text, Component component)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    auto escapesAreValid = true;
    for (std::size_t i = 0; i < text.size(); ++i)
        escapesAreValid = escapesAreValid && (text[i] != '%' || isEscape(text, i));

    std::string result;
    for (auto const c : text) {
        if (isAllowed(c, component) || (c == '%' && escapesAreValid)) {
            result += c;
            continue;
        }
        auto const byte = static_cast<unsigned char>(c);
        result += '%';
        result += digits[byte >> 4U];
        result += digits[byte & 0x0FU];
    }
    return result;
}

std::size_t schemeLength(std::string_view text)
{
    auto const colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isAlpha(text.front()))
        return 0;
    auto const scheme = text.substr(0, colon);
    auto const isSchemeCharacter = [](char c) { return isAlpha(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; };
    return std::ranges::all_of(scheme, isSchemeCharacter) ? colon : 0;
}

// Removes the text before the first delimiter from the front and returns it.
std::string_view takeUntil(std::string_view& text, std::string_view delimiters)
{
    auto const end = std::min(text.find_first_of(delimiters), text.size());
    auto const taken = text.substr(0, end);
    text.remove_prefix(end);
    return taken;
}

bool isPort(std::string_view text)
{
    constexpr std::size_t mostDigits = 5;
    return text.size() <= mostDigits && std::ranges::all_of(text, isDigit);
}

std::optional<std::string> encodeHostAndPort(std::string_view text)
{
    if (text.starts_with('[')) {
        auto const end = text.find(']');
        if (end == std::string_view::npos)
            return std::nullopt;
        auto const address = text.substr(1, end - 1);
        auto const port = text.substr(end + 1);
        auto const isAddressCharacter = [](char c) { return isHexDigit(c) || c == ':' || c == '.'; };
        if (address.empty() || !std::ranges::all_of(address, isAddressCharacter))
            return std::nullopt;
        if (!port.empty() && (port.front() != ':' || !isPort(port.substr(1))))
            return std::nullopt;
        return std::string(text);
    }
    auto const colon = std::min(text.find(':'), text.size());
    auto const port = text.substr(colon);
    if (!port.empty() && !isPort(port.substr(1)))
        return std::nullopt;
    return encode(text.substr(0, colon), Component::Host) + std::string(port);
}

std::optional<std::string> encodeAuthority(std::string_view text)
{
    auto const at = text.rfind('@');
    if (at == std::string_view::npos)
        return encodeHostAndPort(text);
    auto const rest = encodeHostAndPort(text.substr(at + 1));
    if (!rest)
        return std::nullopt;
    return encode(text.substr(0, at), Component::UserInfo) + "@" + *rest;
}

}

std::optional<URL> URL::verbatim(std::string_view text)
{
    return text.empty() ? std::nullopt : std::optional(URL(std::string(text)));
}

std::optional<URL> URL::parse(std::string_view text)
{
    if (text.empty())
        return std::nullopt;

    std::string result;
    if (auto const length = schemeLength(text)) {
        result = text.substr(0, length + 1);
        text.remove_prefix(length + 1);
    }
    auto const isRelative = result.empty();
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        auto const authority = encodeAuthority(takeUntil(text, "/?#"));
        if (!authority)
            return std::nullopt;
        result += "//";
        result += *authority;
    } else if (isRelative) {
        // An unencoded colon here would turn the segment into a scheme.
        result += encode(takeUntil(text, "/?#"), Component::FirstSegment);
    }
    result += encode(takeUntil(text, "?#"), Component::Path);
    if (text.starts_with('?')) {
        text.remove_prefix(1);
        result += '?';
        result += encode(takeUntil(text, "#"), Component::QueryOrFragment);
    }
    if (text.starts_with('#')) {
        result += '#';
        result += encode(text.substr(1), Component::QueryOrFragment);
    }
    return URL(std::move(result));
}

std::optional<std::string> URL::scheme() const
{
    auto const length = schemeLength(m_absoluteString);
    return length == 0 ? std::nullopt : std::optional(m_absoluteString.substr(0, length));
}

}
