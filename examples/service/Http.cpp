#include "examples/service/Http.h"

#include <glib.h>

#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

bool isJson(std::string const& contentType)
{
    auto const type = contentType.substr(0, contentType.find_first_of("; \t"));
    return g_ascii_strcasecmp(type.c_str(), "application/json") == 0;
}

}

Reply jsonReply(unsigned status, Json const& body)
{
    return { .status = status,
        .contentType = "application/json",
        .body = body.dump(-1, ' ', false, Json::error_handler_t::replace),
        .headers = {} };
}

Reply errorReply(unsigned status, std::string_view message)
{
    return jsonReply(status, { { "error", message } });
}

Reply methodNotAllowed(std::string_view allowed)
{
    auto reply = errorReply(405, "this address takes " + std::string(allowed));
    reply.headers.emplace_back("Allow", allowed);
    return reply;
}

std::optional<Json> parseJson(std::string_view text)
{
    // Copying and printing are recursive, so that a deep value could exhaust the stack.
    constexpr int deepest = 200;
    bool isTooDeep = false;
    auto const checkDepth = [&isTooDeep](int depth, Json::parse_event_t, Json const&) {
        isTooDeep = isTooDeep || depth > deepest;
        return !isTooDeep;
    };
    auto value = Json::parse(text, checkDepth, false);
    if (isTooDeep || value.is_discarded())
        return std::nullopt;
    return value;
}

std::expected<Json, Reply> readPost(Request const& request, std::string_view path)
{
    if (request.path != path)
        return std::unexpected(errorReply(404, "this host knows no such address"));
    if (request.method != "POST")
        return std::unexpected(methodNotAllowed("POST"));
    if (!isJson(request.contentType))
        return std::unexpected(errorReply(415, "the body must be application/json"));
    auto json = parseJson(request.body);
    if (!json)
        return std::unexpected(errorReply(400, "the body must be JSON"));
    return *std::move(json);
}

bool isRead(Request const& request)
{
    return request.method == "GET" || request.method == "HEAD";
}

}
