#pragma once

#include <string>

namespace zelvora::internal {

/// The addresses of one environment, production or development.
struct EnvironmentAddresses {
    /// Web host and path of the site, without a scheme.
    std::string webURL;
    /// Absolute HTTPS address without a path.
    std::string apiURL;
};
[[nodiscard]] EnvironmentAddresses environmentAddresses(bool isDev);

/// The name of the environment in requests: "dev" or "prd".
[[nodiscard]] std::string profile(bool isDev);

}
