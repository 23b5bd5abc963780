#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"
#include "ZelvoraPlatform/Export.h"

#include <cstdint>

namespace zelvora::platform {

/// The phone's tracking-authorization status, with its raw values.
enum class ATTrackingAuthorizationStatus : std::uint8_t {
    NotDetermined = 0,
    Restricted = 1,
    Denied = 2,
    Authorized = 3
};

/// Asks the user, once per install, for permission to track. Main thread.
class ZELVORA_API ATTrackingManager {
public:
    virtual ~ATTrackingManager() = default;

    [[nodiscard]] virtual ATTrackingAuthorizationStatus trackingAuthorizationStatus() const = 0;
    /// Shows the system's prompt while the status is not determined, and remembers the answer. The completion is called
    /// on any thread with the status then.
    virtual void requestTrackingAuthorization(CompletionHandler<void(ATTrackingAuthorizationStatus)> completion) = 0;
};

}
