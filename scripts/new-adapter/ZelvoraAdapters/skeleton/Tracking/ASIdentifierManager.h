#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"

#include <string>

namespace zelvora::skeleton {

class ASIdentifierManager final : public platform::ASIdentifierManager {
public:
    // platform::ASIdentifierManager
    [[nodiscard]] std::string advertisingIdentifier() const override
    {
        missing("ASIdentifierManager::advertisingIdentifier");
    }
};

}
