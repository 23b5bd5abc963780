#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <string>

namespace zelvora::examples {

/// A name, and what else there is to say.
struct Description {
    std::string name;
    std::string details;

    bool operator==(Description const&) const = default;
};

/// The address's path, and its query as a person would write it.
[[nodiscard]] Description describeAddress(std::string const& url);

/// The event's id, and its other members that have a value.
[[nodiscard]] Description describeEvent(platform::Value const& event);

}
