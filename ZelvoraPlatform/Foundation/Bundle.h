#pragma once

#include "ZelvoraPlatform/Export.h"

#include <optional>
#include <string>

namespace zelvora::platform {

/// The host app's main bundle. Any thread.
class ZELVORA_API Bundle {
public:
    virtual ~Bundle() = default;

    /// The app's identifier in reverse-DNS notation, such as "com.example.app", if it has one. It never changes.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
};

}
