#pragma once

#include <string>

namespace zelvora::platform {

/// A sequence of bytes in no particular encoding.
struct Data {
    /// Any bytes; a NUL is one like the others.
    std::string bytes;

    bool operator==(Data const&) const = default;
};

}
