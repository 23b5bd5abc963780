#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Launch.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/ShopIdLookup.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingPermission.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingUpload.h"
#include "ZelvoraPlatform/Concurrency/Task.h"

#include <string>

namespace zelvora::internal {

/// What happens after the host has called `initialize`. Each collaborator reports its own failures; none ends the
/// sequence early.
class InitializationSequence final {
public:
    InitializationSequence(GuardedProperties& properties, ShopIdLookup& shopIdLookup,
        TrackingPermission& trackingPermission, TrackingUpload const& trackingUpload, Launch& launch)
        : m_properties(properties)
        , m_shopIdLookup(shopIdLookup)
        , m_trackingPermission(trackingPermission)
        , m_trackingUpload(trackingUpload)
        , m_launch(launch)
    {
    }

    /// To be spawned on the global queue, with `isInitializing` set; ends on the main queue.
    platform::Task<void> runInitialization(std::string apiKey);

private:
    void startDeferred();

    GuardedProperties& m_properties;
    ShopIdLookup& m_shopIdLookup;
    TrackingPermission& m_trackingPermission;
    TrackingUpload const& m_trackingUpload;
    Launch& m_launch;
};

}
