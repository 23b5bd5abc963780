#pragma once

#include <string>

namespace zelvora::platform {

/// What a platform service reports when it fails. `domain` and `code` are the underlying system's own; only
/// `localizedDescription` is shown to people.
struct Error {
    std::string domain;
    int code = 0;
    std::string localizedDescription;

    bool operator==(Error const&) const = default;
};

}
