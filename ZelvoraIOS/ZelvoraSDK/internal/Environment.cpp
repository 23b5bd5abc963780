#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"

#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"

namespace zelvora::internal {

EnvironmentAddresses environmentAddresses(bool isDev)
{
    auto const addresses = serviceAddresses();
    return {
        .webURL = (isDev ? addresses.developmentWebHost : addresses.productionWebHost) + "/v1",
        .apiURL = isDev ? addresses.developmentApiBase : addresses.productionApiBase,
    };
}

std::string profile(bool isDev)
{
    return isDev ? "dev" : "prd";
}

}
