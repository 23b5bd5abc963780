#include "examples/developer/script/Script.h"

#include "examples/developer/script/ScriptLine.h"
#include "examples/developer/script/Switches.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace zelvora::developer {

namespace {

struct Form {
    Verb verb;
    /// Words in lower case stand for themselves, and one of several that "|" separates; those in capitals for what they
    /// name; what is in brackets may be left out.
    std::string_view text;
};

// Of two forms that a line may have, the first one counts.
constexpr std::array<Form, 31> forms { {
    { Verb::Open, "open [PAGE]" },
    { Verb::WaitForText, "wait for text TEXT" },
    { Verb::WaitForElement, "wait for SELECTOR" },
    { Verb::WaitUntil, "wait until JAVASCRIPT" },
    { Verb::Tap, "tap SELECTOR" },
    { Verb::Type, "type TEXT into SELECTOR" },
    { Verb::Run, "run JAVASCRIPT" },
    { Verb::SwipeBack, "swipe back" },
    { Verb::Upload, "upload" },
    { Verb::Reload, "reload" },
    { Verb::KillPage, "kill page" },
    { Verb::Footer, "footer on|off" },
    { Verb::Switch, "switch service|network|language|look|size PLACE" },
    { Verb::Pass, "pass DURATION" },
    { Verb::Patience, "patience DURATION" },
    { Verb::Show, "show values|events|uploads|notices" },
    { Verb::Picture, "picture NAME" },
    { Verb::ExpectMessage, "expect message ACTION [JSON]" },
    { Verb::ExpectDropped, "expect dropped ACTION [JSON]" },
    { Verb::ExpectNothingDropped, "expect nothing dropped" },
    { Verb::ExpectAnswer, "expect answer JSON" },
    { Verb::ExpectNotStored, "expect nothing stored KEY" },
    { Verb::ExpectStored, "expect stored KEY [JSON]" },
    { Verb::ExpectExpiry, "expect expiry KEY DURATION|never" },
    { Verb::ExpectQueue, "expect queue NUMBER" },
    { Verb::ExpectEvent, "expect event JSON" },
    { Verb::ExpectUpload, "expect upload STATUS|failed [JSON]" },
    { Verb::ExpectPage, "expect page URL" },
    { Verb::ExpectAction, "expect action NAME [JSON]" },
    { Verb::ExpectFooter, "expect footer shown|hidden" },
    { Verb::ExpectClosed, "expect closed" },
} };

std::vector<std::string> wordsOf(std::string_view text)
{
    std::istringstream stream { std::string(text) };
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::string join(std::vector<std::string> const& texts, std::string_view between)
{
    std::string joined;
    for (auto const& text : texts)
        joined += (joined.empty() ? "" : std::string(between)) + text;
    return joined;
}

/// How far a form agrees with a line, and why no further.
struct Attempt {
    Step step;
    std::size_t agreed = 0;
    std::string complaint;
};

Attempt attempt(Form const& form, std::string_view source)
{
    Attempt attempt;
    attempt.step.verb = form.verb;
    ScriptLine line(source);
    for (auto const& part : wordsOf(form.text)) {
        if (auto const read = line.read(part, attempt.step); !read) {
            attempt.complaint = read.error();
            return attempt;
        }
        ++attempt.agreed;
    }
    if (!line.isAtEnd())
        attempt.complaint = "\"" + std::string(line.rest()) + "\" is too much";
    return attempt;
}

std::string commands()
{
    std::vector<std::string> names;
    for (auto const& form : forms) {
        auto const name = wordsOf(form.text).front();
        if (std::ranges::find(names, name) == names.end())
            names.push_back(name);
    }
    return join(names, ", ");
}

std::expected<Step, std::string> readStep(std::string_view source)
{
    std::vector<Attempt> closest;
    std::vector<std::string> closestForms;
    for (auto const& form : forms) {
        auto tried = attempt(form, source);
        if (tried.complaint.empty())
            return tried.step;
        if (!closest.empty() && tried.agreed < closest.front().agreed)
            continue;
        if (!closest.empty() && tried.agreed > closest.front().agreed) {
            closest.clear();
            closestForms.clear();
        }
        closest.push_back(std::move(tried));
        closestForms.emplace_back(form.text);
    }
    if (closest.front().agreed == 0)
        return std::unexpected("there is no command \"" + wordsOf(source).front() + "\"; there are " + commands());
    auto const known = "write \"" + join(closestForms, "\" or \"") + "\"";
    return std::unexpected(closest.size() == 1 ? closest.front().complaint + "; " + known : known);
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view space = " \t\r";
    auto const first = text.find_first_not_of(space);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

// What a form alone does not tell: the places of a switch, and a text that would pass for the name of an element.
std::optional<std::string> complaintAbout(Step const& step)
{
    if (step.verb == Verb::WaitForElement && (step.words.at(0) + " ").starts_with("text "))
        return "the text has to be in double quotes; write \"wait for text TEXT\"";
    if (step.verb != Verb::Switch || switched({}, step.words.at(0), step.words.at(1)))
        return std::nullopt;
    return "\"" + step.words.at(1)
        + "\" is no place of this switch; write \"switch service works|refuses\", "
          "\"switch network on|slow|off\", \"switch language ko|en\", \"switch look light|dark\" or "
          "\"switch size phone|tablet|WIDTHxHEIGHT\"";
}

}

std::expected<Script, ScriptError> readScript(std::string_view text)
{
    Script script;
    // Some editors begin a file with it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    std::istringstream lines { std::string(text) };
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        auto const source = trimmed(line);
        if (source.empty() || source.starts_with('#'))
            continue;
        auto step = readStep(source);
        if (!step)
            return std::unexpected(ScriptError { number, step.error() });
        if (auto const complaint = complaintAbout(*step))
            return std::unexpected(ScriptError { number, *complaint });
        step->line = number;
        step->source = source;
        script.push_back(*std::move(step));
    }
    return script;
}

std::vector<std::string_view> scriptForms()
{
    std::vector<std::string_view> texts;
    for (auto const& form : forms)
        texts.push_back(form.text);
    return texts;
}

}
