#include "examples/driving/LocalService.h"

#include <string>

namespace zelvora::examples {

gtk::HostOptions localServiceOptions(std::uint16_t port, std::filesystem::path const& certificates)
{
    auto const suffix = ".zelvora.localhost:" + std::to_string(port);
    auto const certificate = certificates / "server.pem";
    gtk::HostOptions options;
    options.serviceAddresses = platform::ServiceAddresses {
        .productionWebHost = "shop" + suffix,
        .developmentWebHost = "dev" + suffix,
        .productionApiBase = "https://api" + suffix,
        .developmentApiBase = "https://api" + suffix,
        .lookupEndpoint = "https://lookup" + suffix + "/",
        .trackingEndpoint = "https://collector" + suffix + "/v1/events",
    };
    options.certificateAuthorityFile = certificates / "ca.pem";
    for (auto const* host : { "hanok.shop", "frames", "collector" })
        options.trustedCertificates.push_back({ std::string(host) + ".zelvora.localhost", certificate });
    return options;
}

}
