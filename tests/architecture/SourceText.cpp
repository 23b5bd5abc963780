#include "tests/architecture/SourceText.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <regex>
#include <sstream>

namespace zelvora::architecture {

namespace {

enum class Literals : std::uint8_t { Keep, Empty };

bool isWordCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

// Replaces everything that is not code with blanks, but keeps the line breaks, so that line numbers stay right.
class Blanker {
public:
    Blanker(std::string_view source, Literals literals) : m_text(source), m_literals(literals) { }

    std::string run() &&
    {
        while (m_at < m_text.size())
            step();
        return std::move(m_text);
    }

private:
    void step()
    {
        if (startsWith("//"))
            blankUntil(m_text.find('\n', m_at));
        else if (startsWith("/*"))
            blankUntil(after("*/", m_at + 2));
        else if (startsWith("R\"") && !followsWord())
            passLiteral(endOfRawString());
        else if (m_text[m_at] == '"')
            passLiteral(endOfQuoted('"'));
        // A quote inside a number is a digit separator.
        else if (m_text[m_at] == '\'' && !followsWord())
            passLiteral(endOfQuoted('\''));
        else
            ++m_at;
    }

    bool startsWith(std::string_view start) const { return std::string_view(m_text).substr(m_at).starts_with(start); }
    bool followsWord() const { return m_at > 0 && isWordCharacter(m_text[m_at - 1]); }

    std::size_t after(std::string_view end, std::size_t from) const
    {
        auto const found = m_text.find(end, from);
        return found == std::string::npos ? m_text.size() : found + end.size();
    }

    std::size_t endOfRawString() const
    {
        auto const open = m_text.find('(', m_at);
        if (open == std::string::npos)
            return m_text.size();
        return after(")" + m_text.substr(m_at + 2, open - m_at - 2) + "\"", open);
    }

    std::size_t endOfQuoted(char quote) const
    {
        auto at = m_at + 1;
        while (at < m_text.size() && m_text[at] != quote && m_text[at] != '\n')
            at += m_text[at] == '\\' ? 2 : 1;
        return std::min(at + 1, m_text.size());
    }

    void passLiteral(std::size_t end)
    {
        if (m_literals == Literals::Keep) {
            m_at = end;
            return;
        }
        ++m_at;
        blankUntil(end - 1);
        m_at = end;
    }

    void blankUntil(std::size_t end)
    {
        end = std::min(end, m_text.size());
        for (; m_at < end; ++m_at) {
            if (m_text[m_at] != '\n')
                m_text[m_at] = ' ';
        }
    }

    std::string m_text;
    Literals m_literals;
    std::size_t m_at = 0;
};

std::string withoutDirectives(std::string const& text)
{
    std::string result;
    bool inDirective = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line); result += '\n') {
        auto const first = line.find_first_not_of(" \t");
        inDirective = inDirective || (first != std::string::npos && line[first] == '#');
        if (!inDirective)
            result += line;
        inDirective = inDirective && line.ends_with('\\');
    }
    return result;
}

std::string withSingleBlanks(std::string const& text)
{
    std::string result;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        result += (result.empty() ? "" : " ") + word;
    return result;
}

}

std::vector<Include> includesOf(std::string_view source)
{
    static std::regex const directive(R"(^\s*#\s*(?:include|import)\b\s*(.*?)\s*$)");
    static std::regex const quoted(R"re("([^"]*)".*)re");
    static std::regex const angled(R"(<([^>]*)>.*)");

    std::vector<Include> includes;
    std::istringstream lines(Blanker(source, Literals::Keep).run());
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::smatch match;
        if (!std::regex_match(line, match, directive))
            continue;
        std::string const operand = match[1];
        if (std::regex_match(operand, match, quoted))
            includes.push_back({ Include::Kind::Quoted, match[1], number });
        else if (std::regex_match(operand, match, angled))
            includes.push_back({ Include::Kind::Angled, match[1], number });
        else
            includes.push_back({ Include::Kind::Computed, operand, number });
    }
    return includes;
}

std::vector<GlobalDeclaration> globalDeclarationsOf(std::string_view source)
{
    std::vector<GlobalDeclaration> declarations;
    std::string head;
    int depth = 0;
    int line = 1;
    int headLine = 1;
    auto const end = [&](GlobalDeclaration::Ending ending) {
        if (auto text = withSingleBlanks(head); !text.empty())
            declarations.push_back({ ending, std::move(text), headLine });
        head.clear();
    };
    for (char const character : withoutDirectives(Blanker(source, Literals::Empty).run())) {
        if (character == '{' && depth++ == 0)
            end(GlobalDeclaration::Ending::Brace);
        else if (character == '}')
            --depth;
        else if (character == ';' && depth == 0)
            end(GlobalDeclaration::Ending::Semicolon);
        else if (depth == 0 && character != '{') {
            if (head.find_first_not_of(" \n") == std::string::npos)
                headLine = line;
            head += character;
        }
        line += character == '\n' ? 1 : 0;
    }
    end(GlobalDeclaration::Ending::Semicolon);
    return declarations;
}

}
