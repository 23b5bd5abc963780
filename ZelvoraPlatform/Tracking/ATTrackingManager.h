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

/// Asks the user for permission to track. The system keeps the answer: a user who has answered is not asked again. Main
/// thread.
class ZELVORA_API ATTrackingManager {
public:
    virtual ~ATTrackingManager() = default;

    /// What has been decided by now. Asks nobody. The user may change it in the system's settings at any time.
    [[nodiscard]] virtual ATTrackingAuthorizationStatus trackingAuthorizationStatus() const = 0;
    /// Shows the system's prompt if the status is not determined; requests made while it is shown share it. The
    /// completion is called with the resulting status, which is still "not determined" if the prompt was closed without
    /// an answer or the manager was destroyed. It may be called on any thread, and inside this call if no prompt is
    /// needed.
    virtual void requestTrackingAuthorization(CompletionHandler<void(ATTrackingAuthorizationStatus)> completion) = 0;
};

}
