#pragma once

#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"

namespace zelvora::uikit {

/// The device's advertising identifier.
class ASIdentifierManager final : public platform::ASIdentifierManager {
public:
    // platform::ASIdentifierManager
    [[nodiscard]] std::string advertisingIdentifier() const override;
};

}
