#pragma once

#include <string>

namespace zelvora::platform {

/// Where the service lives.
struct ServiceAddresses {
    /// Host names (with a port where it is not 443), without scheme and path.
    std::string productionWebHost;
    std::string developmentWebHost;
    /// Absolute HTTPS addresses without a path.
    std::string productionApiBase;
    std::string developmentApiBase;
    /// Absolute HTTPS URLs, the same in production and development.
    std::string lookupEndpoint;
    std::string trackingEndpoint;

    bool operator==(ServiceAddresses const&) const = default;
};

}
