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

/// A request that follows the protocol's own cache policy.
struct URLRequest {
    /// Absolute. A loader takes HTTP and HTTPS only.
    URL url;
    /// Sent as it is written.
    std::string httpMethod = "GET";
    /// Names are not case-sensitive: give each field once.
    std::map<std::string, std::string> httpHeaderFields {};
    /// Sent as it is. If it is empty, the request has no body.
    Data httpBody {};
    /// How many seconds may pass without any data moving before the request fails; it does not limit the total time.
    /// Must be positive.
    TimeInterval timeoutInterval = 60;

    bool operator==(URLRequest const&) const = default;
};

/// What the server answered, besides the body.
struct URLResponse {
    /// Absent if the response is not an HTTP response.
    std::optional<int> statusCode;

    bool operator==(URLResponse const&) const = default;
};

/// The process's shared HTTP loader.
class ZELVORA_API URLSession {
public:
    /// A response that arrived whole, whatever its status.
    struct Answer {
        /// The body, decompressed if the server compressed it; empty if there was none.
        Data data;
        /// Of the last request, if redirections were followed.
        URLResponse response;

        bool operator==(Answer const&) const = default;
    };
    /// Receives the answer, or the reason why there is none.
    using Completion = CompletionHandler<void(std::expected<Answer, Error>)>;

    virtual ~URLSession() = default;

    /// Starts a request. Any thread. The completion is called exactly once, on the loader's own queue, one completion
    /// at a time, and never inside this call. It receives the answer, whatever its status, or an error if there was
    /// none: no connection, timeout, TLS failure, a response cut short or larger than the adapter's limit, or a URL
    /// that is not HTTP. Redirections are followed, except from HTTPS to HTTP, which is an error. A loader that is
    /// destroyed completes its pending requests with an error.
    virtual void dataTask(URLRequest request, Completion completion) = 0;
};

}
