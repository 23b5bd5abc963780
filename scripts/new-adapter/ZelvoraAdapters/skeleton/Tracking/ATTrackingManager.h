#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

namespace zelvora::skeleton {

class ATTrackingManager final : public platform::ATTrackingManager {
public:
    using Status = platform::ATTrackingAuthorizationStatus;

    // platform::ATTrackingManager
    [[nodiscard]] Status trackingAuthorizationStatus() const override
    {
        missing("ATTrackingManager::trackingAuthorizationStatus");
    }
    void requestTrackingAuthorization(platform::CompletionHandler<void(Status)>) override
    {
        missing("ATTrackingManager::requestTrackingAuthorization");
    }
};

}
