#pragma once

#include "ZelvoraPlatform/Foundation/Bundle.h"

namespace zelvora::uikit {

/// The host app's main bundle.
class Bundle final : public platform::Bundle {
public:
    // platform::Bundle
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override;
};

}
