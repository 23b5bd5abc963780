#pragma once

#include <string>

namespace zelvora::platform {

/// How a platform service reports a failure. `domain` and `code` are the underlying system's own and differ between
/// adapters; `localizedDescription` is the text for people.
struct Error {
    /// The part of the system that failed, such as "NSURLErrorDomain". Never empty.
    std::string domain;
    /// Has a meaning in its domain only.
    int code = 0;
    /// Never empty. In the user's language as far as the system has translated it.
    std::string localizedDescription;

    bool operator==(Error const&) const = default;
};

}
