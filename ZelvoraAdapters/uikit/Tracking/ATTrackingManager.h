#pragma once

#include "ZelvoraAdapters/uikit/Concurrency/PendingCompletions.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <memory>

namespace zelvora::uikit {

/// App Tracking Transparency. The host's Info.plist must say why it asks, or the system ends the app at the request.
class ATTrackingManager final : public platform::ATTrackingManager {
public:
    ATTrackingManager() = default;
    ATTrackingManager(ATTrackingManager const&) = delete;
    ATTrackingManager& operator=(ATTrackingManager const&) = delete;
    ~ATTrackingManager() override;

    // platform::ATTrackingManager
    [[nodiscard]] platform::ATTrackingAuthorizationStatus trackingAuthorizationStatus() const override;
    void requestTrackingAuthorization(
        platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion) override;

private:
    using Pending = PendingCompletions<platform::ATTrackingAuthorizationStatus>;

    std::shared_ptr<Pending> m_pending = std::make_shared<Pending>();
};

}
