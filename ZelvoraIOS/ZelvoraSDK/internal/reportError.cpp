#include "ZelvoraIOS/ZelvoraSDK/internal/reportError.h"

namespace zelvora::internal {

ZelvoraSDKError reportError(GuardedProperties const& properties, ZelvoraSDKError error)
{
    if (auto const handler = properties.get(&Properties::error_handler).function())
        handler(error);
    return error;
}

}
