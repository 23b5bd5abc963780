#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <expected>
#include <map>
#include <optional>
#include <string>

namespace zelvora::platform {

/// A request with the protocol's own cache policy.
struct URLRequest {
    URL url;
    std::string httpMethod = "GET";
    std::map<std::string, std::string> httpHeaderFields {};
    Data httpBody {};
    TimeInterval timeoutInterval = 60;

    bool operator==(URLRequest const&) const = default;
};

struct URLResponse {
    /// Absent where the response is not an HTTP response.
    std::optional<int> statusCode;

    bool operator==(URLResponse const&) const = default;
};

/// The shared loader of the process.
class ZELVORA_API URLSession {
public:
    struct Answer {
        Data data;
        URLResponse response;

        bool operator==(Answer const&) const = default;
    };
    using Completion = CompletionHandler<void(std::expected<Answer, Error>)>;

    virtual ~URLSession() = default;

    /// Makes a data task and resumes it at once. Any thread. The completion is called exactly once, on the loader's own
    /// queue and never before this call returns: with the answer whatever its status, or with the error of the
    /// transport (no connection, timeout, TLS, cut in the middle), also when the loader is destroyed first.
    virtual void dataTask(URLRequest request, Completion completion) = 0;
};

}
