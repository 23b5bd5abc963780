#include "examples/service/Collector.h"

#include "examples/service/CollectorPage.h"
#include "examples/service/CollectorStore.h"
#include "examples/service/Json.h"

#include <algorithm>

namespace zelvora::examples {

namespace {

bool isBatch(nlohmann::json const& json)
{
    if (!json.is_object() || json.size() != 2 || !json.contains("data") || !json.contains("profile"))
        return false;
    auto const& events = json.at("data");
    auto const& profile = json.at("profile");
    return events.is_array() && std::ranges::all_of(events, &nlohmann::json::is_object)
        && (profile == "dev" || profile == "prd");
}

} // namespace

Collector::Collector(CollectorStore& store) : m_store(store) { }

Reply Collector::answer(Request const& request)
{
    if (request.path == "/v1/events")
        return request.method == "POST" ? collect(request) : methodNotAllowed("POST");
    if (request.path != "/" && request.path != "/events.json")
        return errorReply(404, "the collector knows /v1/events, / and /events.json");
    if (!isRead(request))
        return methodNotAllowed("GET");
    if (request.path == "/events.json")
        return list();
    return { .status = 200,
        .contentType = "text/html; charset=utf-8",
        .body = collectorPage(m_store.batches(), wantsEnglish(request) ? Language::English : Language::Korean) };
}

Reply Collector::collect(Request const& request)
{
    if (!isJson(request))
        return errorReply(415, "the body must be application/json");
    auto const json = parseJson(request.body);
    if (!json || !isBatch(*json))
        return errorReply(400, "the body must be an object with data, an array of objects, and profile, dev or prd");

    auto const events = rawElements(request.body, "data");
    if (!m_store.add(json->at("profile").get<std::string>(), events))
        return errorReply(503, "the events could not be kept");
    return jsonReply(200, { { "received", events.size() } });
}

Reply Collector::list() const
{
    // Put together as text, so that every event reads exactly as it came.
    std::string body = R"({"batches":[)";
    for (auto const& batch : m_store.batches()) {
        nlohmann::json const head = { { "number", batch.number }, { "receivedAt", batch.receivedAt },
            { "profile", batch.profile } };
        if (body.back() == '}')
            body += ',';
        auto const text = head.dump();
        body.append(text, 0, text.size() - 1).append(R"(,"events":[)");
        for (auto const& event : batch.events) {
            if (body.back() == '}')
                body += ',';
            body += event;
        }
        body += "]}";
    }
    body += "]}";
    return { .status = 200, .contentType = "application/json", .body = std::move(body) };
}

} // namespace zelvora::examples
