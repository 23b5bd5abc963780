#pragma once

#include "ZelvoraPlatform/Export.h"

#include <optional>
#include <string>

namespace zelvora::platform {

/// The host app's main bundle. Any thread.
class ZELVORA_API Bundle {
public:
    virtual ~Bundle() = default;

    /// The app's reverse-DNS identifier, where it has one.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
};

}
