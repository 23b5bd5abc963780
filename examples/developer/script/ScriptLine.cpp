#include "examples/developer/script/ScriptLine.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>

namespace zelvora::developer {

namespace {

struct DurationUnit {
    std::string_view name;
    double seconds;
};

constexpr std::array<DurationUnit, 5> durationUnits { {
    { "ms", 0.001 },
    { "s", 1 },
    { "min", 60 },
    { "h", 3'600 },
    { "d", 86'400 },
} };

bool isLiteral(std::string_view part)
{
    return std::ranges::all_of(part, [](char letter) { return (letter >= 'a' && letter <= 'z'); });
}

// The length of the text in quotes at the beginning; 0 if it does not end.
std::size_t quotedLength(std::string_view text)
{
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            return i + 1;
    }
    return 0;
}

// How long a number without sign and exponent is at the beginning.
std::size_t numberLength(std::string_view text)
{
    auto const end = text.find_first_not_of("0123456789.");
    return end == std::string_view::npos ? text.size() : end;
}

std::optional<double> readDecimal(std::string_view text)
{
    // JSON's numbers do not depend on the C locale.
    auto const number = Json::parse(text, nullptr, false);
    return number.is_number() ? std::optional(number.get<double>()) : std::nullopt;
}

std::string quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

}

ScriptLine::Result ScriptLine::read(std::string_view part, Step& step)
{
    if (part.starts_with('[')) {
        if (isAtEnd())
            return {};
        return read(part.substr(1, part.size() - 2), step);
    }
    if (part.contains('|'))
        return readOneOf(part, step);
    if (isLiteral(part)) {
        if (nextWord() != part)
            return std::unexpected(
                isAtEnd() ? quoted(part) + " is missing" : quoted(nextWord()) + " is not " + quoted(part));
        advance(part.size());
        return {};
    }
    if (isAtEnd())
        return std::unexpected(std::string(part) + " is missing");
    if (part == "TEXT")
        return readText(step);
    if (part == "JSON")
        return readJson(step);
    if (part == "NUMBER" || part == "STATUS")
        return readNumber(step);
    if (part == "DURATION")
        return readDuration(step);
    if (part == "SELECTOR" || part == "JAVASCRIPT" || part == "PAGE" || part == "URL")
        return readRest(part, step);
    return readName(part, step);
}

std::string_view ScriptLine::nextWord() const
{
    return m_rest.substr(0, m_rest.find_first_of(" \t"));
}

void ScriptLine::advance(std::size_t count)
{
    m_rest.remove_prefix(count);
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
}

bool ScriptLine::readChoice(std::string_view choice, Step& step)
{
    if (!isLiteral(choice))
        return !isAtEnd() && read(choice, step).has_value();
    if (nextWord() != choice)
        return false;
    step.words.emplace_back(choice);
    advance(choice.size());
    return true;
}

ScriptLine::Result ScriptLine::readOneOf(std::string_view choices, Step& step)
{
    for (auto left = choices; !left.empty();) {
        auto const bar = std::min(left.find('|'), left.size());
        if (readChoice(left.substr(0, bar), step))
            return {};
        left.remove_prefix(std::min(bar + 1, left.size()));
    }
    auto const found = isAtEnd() ? "nothing" : quoted(nextWord());
    return std::unexpected(found + " is none of " + std::string(choices));
}

ScriptLine::Result ScriptLine::readName(std::string_view, Step& step)
{
    if (m_rest.starts_with('"'))
        return readText(step);
    auto const word = nextWord();
    step.words.emplace_back(word);
    advance(word.size());
    return {};
}

ScriptLine::Result ScriptLine::readText(Step& step)
{
    if (!m_rest.starts_with('"'))
        return std::unexpected("the text has to be in double quotes");
    auto const length = quotedLength(m_rest);
    auto const text =
        length > 0 ? Json::parse(m_rest.substr(0, length), nullptr, false) : Json(Json::value_t::discarded);
    if (!text.is_string())
        return std::unexpected("the text in double quotes does not end, or is not written as in JSON");
    step.words.push_back(text.get<std::string>());
    advance(length);
    return {};
}

ScriptLine::Result ScriptLine::readRest(std::string_view, Step& step)
{
    step.words.emplace_back(m_rest);
    m_rest = {};
    return {};
}

ScriptLine::Result ScriptLine::readJson(Step& step)
{
    auto json = Json::parse(m_rest, nullptr, false);
    if (json.is_discarded())
        return std::unexpected("this is not JSON: " + std::string(m_rest));
    step.json = std::move(json);
    m_rest = {};
    return {};
}

ScriptLine::Result ScriptLine::readNumber(Step& step)
{
    auto const word = nextWord();
    auto const isWhole = std::ranges::all_of(word, [](char letter) { return letter >= '0' && letter <= '9'; });
    auto const number = isWhole ? readDecimal(word) : std::nullopt;
    if (!number)
        return std::unexpected(quoted(word) + " is no number");
    step.number = number;
    advance(word.size());
    return {};
}

ScriptLine::Result ScriptLine::readDuration(Step& step)
{
    auto const complaint = std::unexpected("a duration is a number and ms, s, min, h or d, such as 10 s");
    auto const length = numberLength(m_rest);
    auto const number = readDecimal(m_rest.substr(0, length));
    if (!number)
        return complaint;
    auto const saved = m_rest;
    advance(length);
    auto const name = nextWord();
    auto const* const unit = std::ranges::find(durationUnits, name, &DurationUnit::name);
    if (unit == durationUnits.end()) {
        m_rest = saved;
        return complaint;
    }
    step.number = *number * unit->seconds;
    advance(name.size());
    return {};
}

}
