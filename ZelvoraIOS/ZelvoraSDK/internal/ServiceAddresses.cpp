#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"

#include "ZelvoraIOS/ZelvoraSDK/internal/defaultAddresses.h"
#include "ZelvoraPlatform/Platform.h"

namespace zelvora::internal {

platform::ServiceAddresses serviceAddresses()
{
    if (auto const addresses = platform::Platform::current().serviceAddresses())
        return *addresses;
    return {
        .productionWebHost = defaultAddresses::productionWebHost,
        .developmentWebHost = defaultAddresses::developmentWebHost,
        .productionApiBase = defaultAddresses::productionApiBase,
        .developmentApiBase = defaultAddresses::developmentApiBase,
        .lookupEndpoint = defaultAddresses::lookupEndpoint,
        .trackingEndpoint = defaultAddresses::trackingEndpoint,
    };
}

}
