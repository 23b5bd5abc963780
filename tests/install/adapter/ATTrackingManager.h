#pragma once

#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

namespace zelvora::abacus {

/// The user has refused.
class ATTrackingManager final : public platform::ATTrackingManager {
public:
    using Status = platform::ATTrackingAuthorizationStatus;

    // platform::ATTrackingManager
    [[nodiscard]] Status trackingAuthorizationStatus() const override { return Status::Denied; }
    void requestTrackingAuthorization(platform::CompletionHandler<void(Status)> completion) override
    {
        completion(Status::Denied);
    }
};

}
