#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

namespace zelvora::internal {

/// Asks the user once per install for permission to track, and reads the advertising identifier if it is granted.
class TrackingPermission final {
public:
    explicit TrackingPermission(GuardedProperties& properties) : m_properties(properties) { }

    /// Sets `adId` to the identifier, or to "unknown". An undecided user is asked as soon as the app is active, with no
    /// time limit. Ends on the global queue.
    platform::Task<void> fetchIDFA();

private:
    static platform::Task<void> waitForAppActive();
    void updateAdId(platform::ATTrackingAuthorizationStatus status);

    GuardedProperties& m_properties;
};

}
