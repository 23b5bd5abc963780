#pragma once

#include <expected>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::examples {

/// Keeps the order of an object's members, and every integer of up to 64 bits.
using Json = nlohmann::ordered_json;

struct Request {
    std::string method;
    /// Without the port, in lower case.
    std::string host;
    /// Decoded.
    std::string path;
    std::string query;
    std::string contentType;
    std::string body;
};

struct Reply {
    unsigned status = 200;
    std::string contentType;
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;
};

/// Answers the requests for one host. Called on the server's thread.
using Endpoint = std::function<Reply(Request const&)>;

[[nodiscard]] Reply jsonReply(unsigned status, Json const& body);
[[nodiscard]] Reply errorReply(unsigned status, std::string_view message);
[[nodiscard]] Reply methodNotAllowed(std::string_view allowed);

/// Absent if the text is not JSON, or is nested more than 200 levels deep.
[[nodiscard]] std::optional<Json> parseJson(std::string_view text);
/// The body of a JSON POST to the path, or the reply that rejects the request.
[[nodiscard]] std::expected<Json, Reply> readPost(Request const& request, std::string_view path);
/// GET or HEAD.
[[nodiscard]] bool isRead(Request const& request);

}
