#include "LocalService.h"

#include <string>

void useLocalService(zelvora::gtk::HostOptions& options, int port, std::filesystem::path const& certificates)
{
    auto const suffix = ".zelvora.localhost:" + std::to_string(port);
    options.serviceAddresses = zelvora::platform::ServiceAddresses {
        // The SDK puts the shop's id and a dot before the web hosts.
        .productionWebHost = "shop" + suffix,
        .developmentWebHost = "dev" + suffix,
        .productionApiBase = "https://api" + suffix,
        .developmentApiBase = "https://api" + suffix,
        .lookupEndpoint = "https://lookup" + suffix + "/",
        .trackingEndpoint = "https://collector" + suffix + "/v1/events",
    };
    options.certificateAuthorityFile = certificates / "ca.pem";
    // The engine asks that authority for the pages only, not for what they embed.
    options.trustedCertificates = { { "frames.zelvora.localhost", certificates / "server.pem" } };
}
