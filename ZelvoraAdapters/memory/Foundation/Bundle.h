#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Bundle.h"

#include <utility>

namespace zelvora::memory {

/// The host app's bundle. Set its identifier before other threads may read it.
class ZELVORA_API Bundle final : public platform::Bundle {
public:
    /// The identifier is "com.example.host" at first. If it is absent, the app has none.
    void setBundleIdentifier(std::optional<std::string> identifier) { m_identifier = std::move(identifier); }

    // platform::Bundle
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return m_identifier; }

private:
    std::optional<std::string> m_identifier = "com.example.host";
};

}
