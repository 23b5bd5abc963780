#pragma once

#include <string>

namespace zelvora::platform {

/// How a platform service reports a failure. `domain` and `code` are the underlying system's own and differ between
/// adapters; `localizedDescription` is the text for people.
struct Error {
    std::string domain;
    int code = 0;
    std::string localizedDescription;

    bool operator==(Error const&) const = default;
};

}
