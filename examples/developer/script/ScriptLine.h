#pragma once

#include "examples/developer/script/Script.h"

#include <expected>
#include <string>
#include <string_view>

namespace zelvora::developer {

/// A line of a script that is read part by part, as a form of a line prescribes it.
class ScriptLine final {
public:
    explicit ScriptLine(std::string_view text) : m_rest(text) { }

    /// Reads what one word of a form stands for and puts it into the step. If the line has something else there, the
    /// error says what is wrong with it, and nothing is read.
    [[nodiscard]] std::expected<void, std::string> read(std::string_view part, Step& step);

    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }
    [[nodiscard]] std::string_view rest() const { return m_rest; }

private:
    using Result = std::expected<void, std::string>;

    [[nodiscard]] std::string_view nextWord() const;
    void advance(std::size_t count);
    [[nodiscard]] Result readOneOf(std::string_view choices, Step& step);
    [[nodiscard]] bool readChoice(std::string_view choice, Step& step);
    [[nodiscard]] Result readName(std::string_view part, Step& step);
    [[nodiscard]] Result readText(Step& step);
    [[nodiscard]] Result readRest(std::string_view part, Step& step);
    [[nodiscard]] Result readJson(Step& step);
    [[nodiscard]] Result readNumber(Step& step);
    [[nodiscard]] Result readDuration(Step& step);

    std::string_view m_rest;
};

}
