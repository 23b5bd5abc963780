#pragma once

#include <string>

namespace zelvora::platform {

/// A run of bytes, of no particular encoding.
struct Data {
    std::string bytes;

    bool operator==(Data const&) const = default;
};

}
