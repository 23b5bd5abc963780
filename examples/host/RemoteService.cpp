#include "examples/host/RemoteService.h"

#include <iostream>
#include <utility>

namespace zelvora::examples {

RemoteService::RemoteService(std::uint16_t port, std::filesystem::path certificates)
    : m_port(port)
    , m_authority(std::move(certificates) / "ca.pem")
{
}

// A client for each call: one that stayed would keep connections, which count among the descriptors of the app.
bool RemoteService::order(std::string const& path, std::string const& order)
{
    constexpr unsigned accepted = 200;
    auto const answer = ServiceClient(m_authority).post(address("control") + path, order);
    if (answer.status == accepted)
        return true;
    std::cerr << "The service did not accept " << order << ": " << answer.error << answer.body << '\n';
    return false;
}

std::vector<nlohmann::json> RemoteService::collectedEvents()
{
    auto const answer = ServiceClient(m_authority).get(address("collector") + "/events.json");
    auto const collected = nlohmann::json::parse(answer.body, nullptr, false);
    std::vector<nlohmann::json> events;
    if (!collected.is_object())
        return events;
    for (auto const& batch : collected.value("batches", nlohmann::json::array())) {
        for (auto const& event : batch.value("events", nlohmann::json::array()))
            events.push_back(event);
    }
    return events;
}

std::string RemoteService::address(std::string const& host) const
{
    return "https://" + host + ".zelvora.localhost:" + std::to_string(m_port);
}

}
