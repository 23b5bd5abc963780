#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"

#include <utility>

namespace zelvora::memory {

/// The device's advertising identifier. Set it before other threads may read it.
class ZELVORA_API ASIdentifierManager final : public platform::ASIdentifierManager {
public:
    /// An upper-case UUID; all zeros, as from a system that withholds it.
    void setAdvertisingIdentifier(std::string identifier) { m_identifier = std::move(identifier); }

    // platform::ASIdentifierManager
    [[nodiscard]] std::string advertisingIdentifier() const override { return m_identifier; }

private:
    std::string m_identifier = "0A1B2C3D-4E5F-4607-8899-AABBCCDDEEFF";
};

}
