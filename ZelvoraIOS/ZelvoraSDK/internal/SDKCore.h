#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/CustomActions.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/IdentityUpload.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/InitializationSequence.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Launch.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/ShopIdLookup.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingPermission.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingUpload.h"

namespace zelvora::internal {

/// What is behind the facade: the properties, and the collaborators that work on them. There is one per process.
struct SDKCore final {
    /// Created on first use and never destroyed: threads of the system may still call in while the process ends.
    static SDKCore& shared();

    GuardedProperties properties;
    CustomActions customActions;
    Launch launch { properties };
    TrackingUpload trackingUpload { properties };
    IdentityUpload identityUpload { properties };
    ShopIdLookup shopIdLookup { properties };
    TrackingPermission trackingPermission { properties };
    InitializationSequence initializationSequence { properties, shopIdLookup, trackingPermission, trackingUpload,
        launch };

    SDKCore(SDKCore const&) = delete;
    SDKCore& operator=(SDKCore const&) = delete;

private:
    SDKCore() = default;
};

}
