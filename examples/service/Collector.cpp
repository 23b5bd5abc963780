#include "examples/service/Collector.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/service/CollectorStore.h"
#include "examples/service/Site.h"

#include <algorithm>
#include <ranges>
#include <string_view>

namespace zelvora::examples {

namespace {

// A page of all events would soon be too long to read; /events.json has them all.
constexpr std::size_t mostShownEvents = 200;

bool isUpload(Json const& json)
{
    return json.is_object() && json.size() == 2 && json.contains("data") && json.contains("profile")
        && isBatch(json.at("profile"), json.at("data"));
}

Reply collect(CollectorStore& store, Request const& request)
{
    auto const batch = readPost(request, "/v1/events");
    if (!batch)
        return batch.error();
    if (!isUpload(*batch))
        return errorReply(400, "the body must be an object of data (an array of objects) and profile (dev or prd)");
    auto const& events = batch->at("data");
    if (!store.add(batch->at("profile").get<std::string>(), events))
        return errorReply(503, "the events could not be kept");
    return jsonReply(200, { { "received", events.size() } });
}

std::string escaped(std::string_view text)
{
    return gtk::GTextPointer(g_markup_escape_text(text.data(), static_cast<gssize>(text.size()))).get();
}

std::string nameOf(Json const& event)
{
    auto const id = event.find("eventId");
    if (id == event.end())
        return {};
    return id->is_string() ? id->get<std::string>() : id->dump();
}

std::string eventRow(std::size_t number, Json const& event)
{
    return "<div class=event><b>" + std::to_string(number) + "</b><div><span class=name>" + escaped(nameOf(event))
        + "</span><code>" + escaped(event.dump()) + "</code></div></div>\n";
}

// The newest batch first.
std::string batchSections(Json const& batches, std::string const& title)
{
    std::string sections;
    auto room = mostShownEvents;
    for (auto const& batch : batches | std::views::reverse) {
        if (room == 0)
            break;
        sections += "<section><h2>" + title + " " + batch.at("number").dump() + " <span class=profile>"
            + batch.at("profile").get<std::string>() + "</span> <time>" + batch.at("receivedAt").get<std::string>()
            + "</time></h2>\n";
        auto const& events = batch.at("events");
        auto const shown = std::min(room, events.size());
        for (std::size_t i = 0; i < shown; ++i)
            sections += eventRow(i + 1, events.at(i));
        sections += "</section>\n";
        room -= shown;
    }
    return sections;
}

std::string page(Json const& batches, bool isEnglish)
{
    auto const say = [isEnglish](char const* korean, char const* english) -> std::string {
        return isEnglish ? english : korean;
    };
    auto const title = say("수집된 이벤트", "Collected events");
    std::size_t events = 0;
    for (auto const& batch : batches)
        events += batch.at("events").size();

    auto page = "<!DOCTYPE html>\n<html lang=" + say("ko", "en") + "><head><meta charset=utf-8><title>" + title
        + "</title><meta name=viewport content='width=device-width, initial-scale=1'>"
          "<link rel=stylesheet href=style.css></head><body><main><header><h1>"
        + title + "</h1>" + say("<a href='?lang=en'>English</a>", "<a href='?lang=ko'>한국어</a>")
        + "</header>\n<div class=totals><div>" + say("묶음", "Batches") + "<b>" + std::to_string(batches.size())
        + "</b></div><div>" + say("이벤트", "Events") + "<b>" + std::to_string(events) + "</b></div></div>\n";
    if (batches.empty())
        page += "<p>" + say("아직 받은 이벤트가 없습니다.", "No events have arrived yet.") + "</p>\n";
    page += batchSections(batches, say("묶음", "Batch"));
    if (events > mostShownEvents)
        page += "<p>"
            + say("이전 이벤트는 /events.json 에서 볼 수 있습니다.", "Older events are listed at /events.json.")
            + "</p>\n";
    return page + "</main></body></html>\n";
}

}

Reply answerCollector(CollectorStore& store, std::filesystem::path const& pages, Request const& request)
{
    auto const& path = request.path;
    if (path == "/v1/events")
        return collect(store, request);
    if (path != "/" && path != "/events.json" && path != "/style.css")
        return errorReply(404, "this host knows /v1/events, / and /events.json");
    if (!isRead(request))
        return methodNotAllowed("GET");
    if (path == "/style.css")
        return readPage(pages, "style.css");
    if (path == "/events.json")
        return jsonReply(200, { { "batches", store.batches() } });
    auto const isEnglish = ("&" + request.query + "&").contains("&lang=en&");
    return { .status = 200,
        .contentType = "text/html; charset=utf-8",
        .body = page(store.batches(), isEnglish),
        .headers = {} };
}

}
