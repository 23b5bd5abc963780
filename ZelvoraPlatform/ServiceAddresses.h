#pragma once

#include <string>

namespace zelvora::platform {

/// Where the service is reached. Every field is required.
struct ServiceAddresses {
    /// Host names without scheme and path, with a port if it is not 443.
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
