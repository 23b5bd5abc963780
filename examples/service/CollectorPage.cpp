#include "examples/service/CollectorPage.h"

#include "examples/service/CollectorStore.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <ranges>
#include <string_view>

namespace zelvora::examples {

namespace {

// A page that lists every event ever received would soon be too long to read; /events.json has them all.
constexpr std::size_t s_shownEvents = 200;

struct Words {
    std::string_view language;
    std::string_view title;
    std::string_view nothing;
    std::string_view batches;
    std::string_view events;
    std::string_view batch;
    std::string_view more;
    std::string_view otherLanguage;
    std::string_view otherLanguageQuery;
};

constexpr Words s_korean { .language = "ko",
    .title = "수집된 이벤트",
    .nothing = "아직 받은 이벤트가 없습니다.",
    .batches = "묶음",
    .events = "이벤트",
    .batch = "묶음",
    .more = "이전 이벤트는 /events.json 에서 볼 수 있습니다.",
    .otherLanguage = "English",
    .otherLanguageQuery = "en" };

constexpr Words s_english { .language = "en",
    .title = "Collected events",
    .nothing = "No events have arrived yet.",
    .batches = "Batches",
    .events = "Events",
    .batch = "Batch",
    .more = "Older events are listed at /events.json.",
    .otherLanguage = "한국어",
    .otherLanguageQuery = "ko" };

constexpr std::string_view s_style = R"css(
    :root { color-scheme: light; }
    body { margin: 0; padding: 20px 16px 40px; background: #f6f4ef; color: #23211c;
           font: 15px/1.5 "Nanum Gothic", "NanumGothic", sans-serif; }
    main { max-width: 760px; margin: 0 auto; }
    header { display: flex; align-items: baseline; justify-content: space-between; }
    h1 { font-size: 22px; margin: 0; }
    a { color: #a4432a; }
    .totals { display: flex; gap: 10px; margin: 14px 0 22px; }
    .totals div { flex: 1; background: #fff; border-radius: 12px; padding: 10px 14px; }
    .totals b { display: block; font-size: 24px; }
    section { background: #fff; border-radius: 12px; padding: 12px 14px; margin-bottom: 14px; }
    h2 { font-size: 15px; margin: 0 0 8px; display: flex; flex-wrap: wrap; gap: 8px; align-items: center; }
    h2 time { color: #77726a; font-weight: normal; font-size: 13px; }
    .profile { background: #2f5d50; color: #fff; border-radius: 999px; padding: 0 9px; font-size: 12px; }
    .event { display: flex; gap: 10px; border-top: 1px solid #eee9df; padding: 8px 0; }
    .event b { color: #77726a; min-width: 2em; text-align: right; }
    code { font: 13px/1.45 "Nanum Gothic Coding", "NanumGothicCoding", monospace; overflow-wrap: anywhere; }
    .name { display: block; font-weight: 700; }
)css";

std::string escaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (auto const letter : text) {
        if (letter == '&')
            result += "&amp;";
        else if (letter == '<')
            result += "&lt;";
        else if (letter == '>')
            result += "&gt;";
        else if (letter == '"')
            result += "&quot;";
        else
            result += letter;
    }
    return result;
}

std::string nameOf(std::string const& event)
{
    auto const json = nlohmann::json::parse(event, nullptr, false);
    if (!json.is_object() || !json.contains("eventId"))
        return {};
    auto const& name = json.at("eventId");
    return name.is_string() ? name.get<std::string>() : name.dump();
}

void appendBatch(std::string& page, CollectedBatch const& batch, std::size_t shown, Words const& words)
{
    page.append("<section><h2>").append(words.batch).append(" ").append(std::to_string(batch.number));
    page.append(R"( <span class="profile">)").append(escaped(batch.profile)).append("</span>");
    page.append(" <time>").append(escaped(batch.receivedAt)).append("</time></h2>");
    for (std::size_t i = 0; i < shown; ++i) {
        auto const& event = batch.events[i];
        page.append(R"(<div class="event"><b>)")
            .append(std::to_string(i + 1))
            .append(R"(</b><div><span class="name">)");
        page.append(escaped(nameOf(event)))
            .append("</span><code>")
            .append(escaped(event))
            .append("</code></div></div>");
    }
    page += "</section>";
}

void appendNewestBatches(std::string& page, std::vector<CollectedBatch> const& batches, Words const& words)
{
    std::size_t room = s_shownEvents;
    for (auto const& batch : batches | std::views::reverse) {
        auto const shown = std::min(room, batch.events.size());
        appendBatch(page, batch, shown, words);
        room -= shown;
        if (room == 0)
            return;
    }
}

void appendTotal(std::string& page, std::string_view what, std::size_t count)
{
    page.append("<div>").append(what).append("<b>").append(std::to_string(count)).append("</b></div>");
}

} // namespace

std::string collectorPage(std::vector<CollectedBatch> const& batches, Language language)
{
    auto const& words = language == Language::English ? s_english : s_korean;
    std::size_t events = 0;
    for (auto const& batch : batches)
        events += batch.events.size();

    std::string page = R"(<!DOCTYPE html><html lang=")";
    page.append(words.language).append(R"("><head><meta charset="utf-8"><title>)").append(words.title);
    page.append(R"(</title><meta name="viewport" content="width=device-width, initial-scale=1"><style>)");
    page.append(s_style).append("</style></head><body><main><header><h1>").append(words.title);
    page.append(R"(</h1><a href="?lang=)").append(words.otherLanguageQuery).append(R"(">)").append(words.otherLanguage);
    page.append(R"(</a></header><div class="totals">)");
    appendTotal(page, words.batches, batches.size());
    appendTotal(page, words.events, events);
    page += "</div>";
    if (batches.empty())
        page.append("<p>").append(words.nothing).append("</p>");
    appendNewestBatches(page, batches, words);
    if (events > s_shownEvents)
        page.append("<p>").append(words.more).append("</p>");
    return page + "</main></body></html>\n";
}

} // namespace zelvora::examples
