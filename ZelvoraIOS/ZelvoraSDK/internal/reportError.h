#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraIOS/ZelvoraSDKError.h"

namespace zelvora::internal {

/// Calls the host's completion handler, if there is one, on the current thread. Returns the error, for a failed result.
ZelvoraSDKError reportError(GuardedProperties const& properties, ZelvoraSDKError error);

}
