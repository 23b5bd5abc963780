#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/Bundle.h"

#include <optional>
#include <string>

namespace zelvora::skeleton {

class Bundle final : public platform::Bundle {
public:
    // platform::Bundle
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { missing("Bundle::bundleIdentifier"); }
};

}
