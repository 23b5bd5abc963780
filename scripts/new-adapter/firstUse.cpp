#include "ZelvoraAdapters/skeleton/Platform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <memory>

// The SDK on this adapter: it stops with the name of the method that has to be written next.
int main()
{
    zelvora::platform::Platform::install(std::make_unique<zelvora::skeleton::Platform>());
    return zelvora::ZelvoraSDK::shared().initialize("user-key", "api-key", true, false, true) ? 0 : 1;
}
