#include "examples/developer/script/Expectations.h"

#include "ZelvoraPlatform/Foundation/NumberText.h"

#include <algorithm>

namespace zelvora::developer {

namespace {

constexpr std::size_t mostOnALine = 200;
constexpr std::size_t mostListed = 5;

bool fitsIfGiven(std::optional<Json> const& expected, Json const& found)
{
    return !expected || fits(*expected, found);
}

// The latest ones, because a script has mostly to do with them.
template<typename Record, typename Describe>
std::string listOf(std::vector<Record> const& records, Describe const& describe)
{
    if (records.empty())
        return "none";
    std::string list;
    auto const first = records.size() - std::min(records.size(), mostListed);
    for (auto i = first; i < records.size(); ++i)
        list += (list.empty() ? "" : "; ") + describe(records.at(i));
    return (first > 0 ? "…; " : "") + list;
}

// The message itself, or the answer to it.
bool isLost(MessageRecord const& message)
{
    return message.outcome.verdict == Verdict::Dropped || message.isAnswerLost;
}

std::string describe(MessageRecord const& message)
{
    auto text = message.action.empty() ? "a message" : message.action;
    auto const isDropped = message.outcome.verdict == Verdict::Dropped;
    auto const& told = message.isAnswerLost ? *message.outcome.warning : message.outcome.explanation;
    auto arguments = message.body;
    if (arguments.is_object())
        arguments.erase("action");
    if (!arguments.empty())
        text += " " + lineOf(arguments, mostOnALine);
    return text + (isDropped ? " (dropped: " : " (") + told.english + ")";
}

std::string describe(UploadRecord const& upload)
{
    if (upload.error)
        return "failed: " + *upload.error;
    auto const count = std::to_string(upload.events.size()) + (upload.events.size() == 1 ? " event" : " events");
    return count + (upload.status ? ", answered " + std::to_string(*upload.status) : ", not answered yet");
}

std::string describe(ActionRecord const& action)
{
    return action.name + (action.data ? " with " + lineOf(*action.data, mostOnALine) : " without data");
}

std::string countOf(Json const& events)
{
    return events.size() == 1 ? "1 event" : std::to_string(events.size()) + " events";
}

bool hasFittingEvent(std::optional<Json> const& expected, Json const& events)
{
    return !expected || std::ranges::any_of(events, [&expected](Json const& event) { return fits(*expected, event); });
}

bool endsAs(Step const& step, UploadRecord const& upload)
{
    if (!upload.isOver() || !hasFittingEvent(step.json, upload.events))
        return false;
    return step.number ? upload.status == static_cast<int>(*step.number) : upload.error.has_value();
}

// An action gets text, which may be the JSON of an object.
bool dataFits(std::optional<Json> const& expected, std::optional<std::string> const& data)
{
    if (!expected)
        return true;
    if (!data || expected->is_string())
        return data && *expected == *data;
    auto const parsed = Json::parse(*data, nullptr, false);
    return !parsed.is_discarded() && fits(*expected, parsed);
}

}

bool Expectations::isExpectation(Verb verb)
{
    return verb >= Verb::ExpectMessage;
}

bool Expectations::isAboutAbsence(Verb verb)
{
    return verb == Verb::ExpectNothingDropped || verb == Verb::ExpectNotStored || verb == Verb::ExpectQueue;
}

template<typename Record, typename Fits>
bool Expectations::takeNext(Verb verb, std::vector<Record> const& records, Fits const& fits)
{
    auto& taken = m_taken[verb];
    auto const found = std::find_if(records.begin() + static_cast<std::ptrdiff_t>(taken), records.end(), fits);
    if (found == records.end())
        return false;
    taken = static_cast<std::size_t>(found - records.begin()) + 1;
    return true;
}

std::optional<std::string> Expectations::check(Step const& step)
{
    switch (step.verb) {
    case Verb::ExpectNothingDropped:
        return checkNothingDropped();
    case Verb::ExpectStored:
        return checkStored(step);
    case Verb::ExpectNotStored:
        return checkNotStored(step);
    case Verb::ExpectExpiry:
        return checkExpiry(step);
    case Verb::ExpectQueue:
        return checkQueue(step);
    case Verb::ExpectEvent:
        return checkEvent(step);
    case Verb::ExpectUpload:
        return checkUpload(step);
    case Verb::ExpectPage:
        return checkPage(step);
    case Verb::ExpectAction:
        return checkAction(step);
    case Verb::ExpectFooter:
        return checkFooter(step);
    case Verb::ExpectClosed:
        return m_app.isOpen() ? Finding("the screen is open") : std::nullopt;
    default:
        return checkMessage(step);
    }
}

Expectations::Finding Expectations::checkMessage(Step const& step)
{
    auto const isMeant = [&step](MessageRecord const& message) {
        if (step.verb == Verb::ExpectAnswer)
            return message.answer && fits(*step.json, *message.answer);
        auto const isDropped = message.outcome.verdict == Verdict::Dropped;
        return message.action == step.words.at(0) && fitsIfGiven(step.json, message.body)
            && (isDropped || step.verb == Verb::ExpectMessage);
    };
    if (takeNext(step.verb, m_app.records().messages, isMeant))
        return std::nullopt;
    auto const messages = listOf(m_app.records().messages, [](auto const& message) { return describe(message); });
    return "the messages so far: " + messages;
}

Expectations::Finding Expectations::checkNothingDropped() const
{
    std::vector<MessageRecord> dropped;
    std::ranges::copy_if(m_app.records().messages, std::back_inserter(dropped),
        [](MessageRecord const& message) { return isLost(message); });
    if (dropped.empty())
        return std::nullopt;
    return listOf(dropped, [](auto const& message) { return describe(message); });
}

Expectations::Finding Expectations::checkStored(Step const& step) const
{
    auto const stored = m_app.storedValue(step.words.at(0));
    if (!stored)
        return "there is no such value";
    if (fitsIfGiven(step.json, stored->value))
        return std::nullopt;
    return "the value is " + lineOf(stored->value, mostOnALine);
}

Expectations::Finding Expectations::checkNotStored(Step const& step) const
{
    auto const stored = m_app.storedValue(step.words.at(0));
    return stored ? Finding("the value is " + lineOf(stored->value, mostOnALine)) : std::nullopt;
}

Expectations::Finding Expectations::checkExpiry(Step const& step) const
{
    auto const stored = m_app.storedValue(step.words.at(0));
    if (!stored)
        return "there is no such value";
    if (stored->expiry == step.number)
        return std::nullopt;
    return stored->expiry ? "the value is stored for " + platform::numberText(*stored->expiry) + " s"
                          : "the value does not expire";
}

Expectations::Finding Expectations::checkQueue(Step const& step) const
{
    auto const events = m_app.queuedEvents();
    if (static_cast<double>(events.size()) == *step.number)
        return std::nullopt;
    return "the queue has " + countOf(events);
}

Expectations::Finding Expectations::checkEvent(Step const& step) const
{
    auto const events = m_app.queuedEvents();
    if (hasFittingEvent(step.json, events))
        return std::nullopt;
    return "the queue has " + countOf(events) + ": " + lineOf(events, mostOnALine);
}

Expectations::Finding Expectations::checkUpload(Step const& step)
{
    auto const& uploads = m_app.records().uploads;
    if (takeNext(step.verb, uploads, [&step](UploadRecord const& upload) { return endsAs(step, upload); }))
        return std::nullopt;
    return "the uploads so far: " + listOf(uploads, [](auto const& upload) { return describe(upload); });
}

Expectations::Finding Expectations::checkPage(Step const& step)
{
    auto const& urls = m_app.records().navigations;
    if (takeNext(step.verb, urls, [&step](std::string const& url) { return url.contains(step.words.at(0)); }))
        return std::nullopt;
    return "the pages so far: " + listOf(urls, [](auto const& url) { return url; });
}

Expectations::Finding Expectations::checkAction(Step const& step)
{
    auto const& actions = m_app.records().actions;
    auto const isMeant = [&step](ActionRecord const& action) {
        return action.name == step.words.at(0) && dataFits(step.json, action.data);
    };
    if (takeNext(step.verb, actions, isMeant))
        return std::nullopt;
    return "the app's actions that were called: "
        + listOf(actions, [](auto const& action) { return describe(action); });
}

Expectations::Finding Expectations::checkFooter(Step const& step) const
{
    auto const isVisible = m_app.isFooterVisible();
    if (isVisible == (step.words.at(0) == "shown"))
        return std::nullopt;
    return isVisible ? "the footer is shown" : "the footer is hidden";
}

}
