#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::examples {

/// One request as the endpoints see it: the host without its port and in lower case, the path decoded.
struct Request {
    std::string method;
    std::string host;
    std::string path;
    std::string query;
    std::string contentType;
    std::string body;
};

struct Reply {
    unsigned status = 200;
    std::string contentType;
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers = {};
};

/// What answers the requests for one host. Called on the service's own thread.
class Endpoint {
public:
    virtual ~Endpoint() = default;
    virtual Reply answer(Request const& request) = 0;
};

Reply jsonReply(unsigned status, nlohmann::json const& body);
Reply errorReply(unsigned status, std::string_view message);
Reply methodNotAllowed(std::string_view allowed);

bool isRead(Request const& request);
bool isJson(Request const& request);
bool wantsEnglish(Request const& request);

} // namespace zelvora::examples
