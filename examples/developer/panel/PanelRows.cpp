#include "examples/developer/panel/PanelRows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <ranges>
#include <string_view>

namespace zelvora::developer {

namespace {

constexpr std::size_t mostInARow = 160;
constexpr std::size_t mostDetailed = 4000;

std::string say(Language language, char const* korean, char const* english)
{
    return language == Language::Korean ? korean : english;
}

std::string detailsOf(Json const& json)
{
    constexpr int indent = 2;
    return shortened(json.dump(indent, ' ', false, Json::error_handler_t::replace), mostDetailed);
}

// Local time, as the developer's own clock has it.
std::string clockText(platform::Date date)
{
    auto const whole = static_cast<std::time_t>(std::floor(date.timeIntervalSince1970));
    std::tm parts {};
    if (!localtime_r(&whole, &parts))
        return {};
    constexpr std::size_t longest = 32;
    std::string text(longest, '\0');
    text.resize(std::strftime(text.data(), text.size(), "%H:%M:%S", &parts));
    return text;
}

// The name of what the message is about, as a person would call it.
std::string subjectOf(MessageRecord const& message)
{
    for (auto const* const name : { "key", "name" }) {
        if (message.body.is_object() && message.body.contains(name) && message.body.at(name).is_string())
            return " " + message.body.at(name).get<std::string>();
    }
    return {};
}

PanelRow rowOf(MessageRecord const& message, Language language)
{
    auto const& outcome = message.outcome;
    PanelRow row { .title = (message.action.empty() ? "—" : message.action) + subjectOf(message) };
    switch (outcome.verdict) {
    case Verdict::Done:
        row.mark = say(language, "완료", "done");
        row.look = Mark::Good;
        break;
    case Verdict::Answered:
        row.mark = say(language, "응답", "answered");
        row.look = Mark::Answer;
        break;
    case Verdict::Dropped:
        row.mark = say(language, "무시됨", "dropped");
        row.look = Mark::Bad;
        break;
    }
    row.note = clockText(message.time) + "  " + outcome.explanation.in(language);
    row.warning = outcome.warning ? outcome.warning->in(language) : "";
    row.details = detailsOf(message.body);
    if (message.answer)
        row.details += say(language, "\n\n응답: ", "\n\nanswer: ") + detailsOf(*message.answer);
    return row;
}

PanelRow rowOf(StoredValue const& value, Language language)
{
    auto const isExpired = value.secondsLeft && *value.secondsLeft < 0;
    auto const isOwn = value.key == "shop_id" || value.key == "adid";
    PanelRow row { .title = value.key, .mark = timeLeftText(value).in(language) };
    row.look = isExpired ? Mark::Bad : value.secondsLeft ? Mark::Waiting : Mark::None;
    row.note = (isOwn ? say(language, "SDK의 값  ", "the SDK's own  ") : "") + lineOf(value.value, mostInARow);
    row.details = detailsOf(value.value);
    return row;
}

PanelRow rowOf(std::size_t number, Json const& event)
{
    auto const id = event.find("eventId");
    auto const name = id == event.end() ? std::string("—") : id->is_string() ? id->get<std::string>() : id->dump();
    return {
        .title = std::to_string(number) + ". " + name, .note = lineOf(event, mostInARow), .details = detailsOf(event)
    };
}

PanelRow rowOf(UploadRecord const& upload, Language language)
{
    constexpr int firstSuccess = 200;
    constexpr int lastSuccess = 299;
    auto const count = std::to_string(upload.events.size());
    PanelRow row { .title = clockText(upload.time) + "  "
            + (language == Language::Korean     ? "이벤트 " + count + "개"
                    : upload.events.size() == 1 ? "1 event"
                                                : count + " events") };
    if (upload.status) {
        auto const isAccepted = *upload.status >= firstSuccess && *upload.status <= lastSuccess;
        row.mark = std::to_string(*upload.status);
        row.look = isAccepted ? Mark::Good : Mark::Bad;
        row.note = isAccepted ? say(language, "받았습니다", "accepted")
                              : say(language, "거절: 이벤트가 대기열에 남습니다", "refused: the events stay queued");
        if (!upload.body.empty())
            row.note += "  " + shortened(upload.body, mostInARow);
    } else if (upload.error) {
        row.mark = say(language, "실패", "failed");
        row.look = Mark::Bad;
        row.note = say(language, "이벤트가 대기열에 남습니다: ", "the events stay queued: ") + *upload.error;
    } else {
        row.mark = say(language, "보내는 중", "on its way");
        row.look = Mark::Waiting;
    }
    row.details = detailsOf(upload.events);
    return row;
}

// The newest of the records, newest first.
template<typename Record, typename MakeRow>
std::vector<PanelRow> newest(std::vector<Record> const& records, MakeRow const& makeRow)
{
    std::vector<PanelRow> rows;
    for (auto const& record : records | std::views::reverse | std::views::take(mostPanelRows))
        rows.push_back(makeRow(record));
    return rows;
}

}

std::vector<PanelRow> messageRows(Records const& records, Language language)
{
    return newest(records.messages, [language](auto const& message) { return rowOf(message, language); });
}

std::vector<PanelRow> valueRows(std::vector<StoredValue> const& values, Language language)
{
    std::vector<PanelRow> rows;
    for (auto const& value : values | std::views::take(mostPanelRows))
        rows.push_back(rowOf(value, language));
    return rows;
}

std::vector<PanelRow> eventRows(Json const& events, Language language)
{
    std::vector<PanelRow> rows;
    for (auto const& event : events) {
        if (rows.size() == mostPanelRows)
            break;
        rows.push_back(rowOf(rows.size() + 1, event));
    }
    if (events.size() > rows.size()) {
        auto const more = std::to_string(events.size() - rows.size());
        rows.push_back({ .title = language == Language::Korean ? "그 밖에 " + more + "개" : "and " + more + " more" });
    }
    return rows;
}

std::vector<PanelRow> uploadRows(Records const& records, Language language)
{
    return newest(records.uploads, [language](auto const& upload) { return rowOf(upload, language); });
}

std::vector<PanelRow> navigationRows(Records const& records, Language language)
{
    auto rows = newest(records.complaints, [language](std::string const& line) {
        return PanelRow { .title = shortened(line, mostInARow),
            .mark = say(language, "오류", "error"),
            .look = Mark::Bad,
            .details = line };
    });
    std::ranges::move(
        newest(records.navigations, [](std::string const& url) { return PanelRow { .title = url, .details = url }; }),
        std::back_inserter(rows));
    return rows;
}

}
