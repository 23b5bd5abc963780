#include "ZelvoraIOS/ZelvoraSDK/internal/SDKCore.h"

namespace zelvora::internal {

SDKCore& SDKCore::shared()
{
    static auto* const s_shared = new SDKCore;
    return *s_shared;
}

}
