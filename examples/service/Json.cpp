#include "examples/service/Json.h"

#include <cstddef>

namespace zelvora::examples {

namespace {

constexpr int s_deepestNesting = 200;

/// Steps over JSON text that is known to be valid.
class Cursor {
public:
    explicit Cursor(std::string_view text, std::size_t position = 0) : m_text(text), m_position(position)
    {
        skipSpace();
    }

    bool atEnd() const { return m_position >= m_text.size(); }
    char peek() const { return m_text[m_position]; }

    void skip()
    {
        ++m_position;
        skipSpace();
    }

    std::string_view value()
    {
        auto const start = m_position;
        int depth = 0;
        do {
            if (peek() == '{' || peek() == '[')
                ++depth;
            else if (peek() == '}' || peek() == ']')
                --depth;
            m_position = endOfToken();
            if (depth > 0)
                skipSpace();
        } while (depth > 0);
        auto const text = m_text.substr(start, m_position - start);
        skipSpace();
        return text;
    }

private:
    std::size_t endOfToken() const
    {
        if (peek() == '"')
            return endOfString();
        if (std::string_view("{}[],:").contains(peek()))
            return m_position + 1;
        return std::min(m_text.find_first_of("{}[],:\" \t\r\n", m_position), m_text.size());
    }

    std::size_t endOfString() const
    {
        auto position = m_position + 1;
        while (m_text[position] != '"')
            position += m_text[position] == '\\' ? 2 : 1;
        return position + 1;
    }

    void skipSpace() { m_position = std::min(m_text.find_first_not_of(" \t\r\n", m_position), m_text.size()); }

    std::string_view m_text;
    std::size_t m_position;
};

bool isTooDeep(std::string_view text)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const letter = text[i];
        if (inString && letter == '\\')
            ++i;
        else if (letter == '"')
            inString = !inString;
        else if (!inString && (letter == '{' || letter == '['))
            ++depth;
        else if (!inString && (letter == '}' || letter == ']'))
            --depth;
        if (depth > s_deepestNesting)
            return true;
    }
    return false;
}

std::string_view memberText(std::string_view object, std::string_view member)
{
    std::string_view found;
    Cursor cursor(object);
    cursor.skip();
    while (cursor.peek() != '}') {
        auto const name = nlohmann::json::parse(cursor.value());
        cursor.skip();
        auto const value = cursor.value();
        // A name may come twice; the parser keeps the last one, so this does too.
        if (name.get<std::string>() == member)
            found = value;
        if (cursor.peek() == ',')
            cursor.skip();
    }
    return found;
}

} // namespace

std::optional<nlohmann::json> parseJson(std::string_view text)
{
    if (isTooDeep(text))
        return std::nullopt;
    auto value = nlohmann::json::parse(text, nullptr, false);
    if (value.is_discarded())
        return std::nullopt;
    return value;
}

std::vector<std::string> rawElements(std::string_view object, std::string_view member)
{
    std::vector<std::string> elements;
    Cursor cursor(memberText(object, member));
    cursor.skip();
    while (cursor.peek() != ']') {
        elements.emplace_back(cursor.value());
        if (cursor.peek() == ',')
            cursor.skip();
    }
    return elements;
}

} // namespace zelvora::examples
