#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace zelvora::doubles {

/// A request as the loader would send it. The names of header fields are in lower case.
struct SentRequest {
    std::string url;
    std::string method;
    std::map<std::string, std::string> headers;
    std::string body;
    double timeout = 0;
};

struct HTTPAnswer {
    int status = 200;
    std::string body;
};
/// An error of the loader's, by its code in NSURLErrorDomain.
struct LoaderError {
    NSInteger code = 0;
};
/// Nothing yet: it waits for `answer`, and fails when its time is over.
struct NoAnswer { };
using Outcome = std::variant<NoAnswer, HTTPAnswer, LoaderError>;

/// What is behind the shared session, instead of a network. Each completion is called on the session's delegate queue,
/// one at a time, after the request was resumed. Any thread.
class Network {
public:
    /// Decides about each request when it is resumed, on that thread. Unless set, all wait.
    void setServer(std::function<Outcome(SentRequest const&)> server);
    [[nodiscard]] std::vector<SentRequest> requests() const;
    /// How many requests wait for an answer.
    [[nodiscard]] std::size_t waiting() const;
    /// Answers the request that waits longest, if any; whether there was one.
    bool answer(Outcome const& outcome);
};

Network& network();

}
