#pragma once

#include <string>

namespace zelvora::platform {

/// Where the service is reached. Every field is required.
struct ServiceAddresses {
    /// A host name without scheme and path, with a port if it is not 443.
    /// @{
    std::string productionWebHost;
    std::string developmentWebHost;
    /// @}
    /// An absolute HTTPS address without a path.
    /// @{
    std::string productionApiBase;
    std::string developmentApiBase;
    /// @}
    /// An absolute HTTPS URL, the same in production and development.
    /// @{
    std::string lookupEndpoint;
    std::string trackingEndpoint;
    /// @}

    bool operator==(ServiceAddresses const&) const = default;
};

}
