#include "examples/service/Http.h"

#include <glib.h>

#include <nlohmann/json.hpp>

namespace zelvora::examples {

Reply jsonReply(unsigned status, nlohmann::json const& body)
{
    auto text = body.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    return { .status = status, .contentType = "application/json", .body = std::move(text) };
}

Reply errorReply(unsigned status, std::string_view message)
{
    return jsonReply(status, { { "error", message } });
}

Reply methodNotAllowed(std::string_view allowed)
{
    auto reply = errorReply(405, "this address answers to " + std::string(allowed));
    reply.headers.emplace_back("Allow", allowed);
    return reply;
}

bool isRead(Request const& request)
{
    return request.method == "GET" || request.method == "HEAD";
}

bool isJson(Request const& request)
{
    auto const type = request.contentType.substr(0, request.contentType.find_first_of("; \t"));
    return g_ascii_strcasecmp(type.c_str(), "application/json") == 0;
}

bool wantsEnglish(Request const& request)
{
    return ("&" + request.query + "&").contains("&lang=en&");
}

} // namespace zelvora::examples
