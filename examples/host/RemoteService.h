#pragma once

#include "examples/service/ServiceClient.h"

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace zelvora::examples {

/// The local service in its own process, as who drives the app uses it: gives it orders and looks at what it collected.
/// Each call blocks until the answer is there.
class RemoteService final {
public:
    RemoteService(std::uint16_t port, std::filesystem::path certificates);

    /// Sends an order to the control host, for example to fail from now on. False, with a line on standard error, if
    /// the service refused it or did not answer.
    bool order(std::string const& path, std::string const& order);
    /// All events in the order in which they arrived; empty if the collector does not answer.
    [[nodiscard]] std::vector<nlohmann::json> collectedEvents();
    /// The origin of one of the service's hosts.
    [[nodiscard]] std::string address(std::string const& host) const;

private:
    std::uint16_t m_port;
    std::filesystem::path m_authority;
};

}
