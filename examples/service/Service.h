#pragma once

#include "examples/service/CollectorStore.h"
#include "examples/service/Delivery.h"
#include "examples/service/Faults.h"
#include "examples/service/Http.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::examples {

class HttpServer;

struct ServiceOptions {
    /// Created if absent. Keeps what was collected, and gets the certificates that clients must trust.
    std::filesystem::path dataDirectory;
    /// Empty for the pages that come with this program.
    std::filesystem::path siteDirectory = {};
    /// The shops' pages, if they are not those of the site.
    std::filesystem::path shopDirectory = {};
    /// The address of another server that the shops' first page leads to; empty for none.
    std::string shopAddress = {};
    /// With 0 the system chooses a port.
    std::uint16_t port = 0;
};

/// The service of the examples: lookup, collector, shops, frames, API and control, all on one loopback port and told
/// apart by host name. It runs on a thread of its own, so that a test can have it in its own process. All members are
/// thread-safe except `stop`, which one thread may call at a time.
class Service final {
public:
    /// On failure the text says why.
    [[nodiscard]] static std::expected<std::unique_ptr<Service>, std::string> start(ServiceOptions const& options);

    Service(Service const&) = delete;
    Service& operator=(Service const&) = delete;
    ~Service();

    /// Closes the port and all connections. What was collected can still be read.
    void stop();

    [[nodiscard]] std::uint16_t port() const { return m_port; }
    /// The file of the authority that clients must trust.
    [[nodiscard]] std::filesystem::path const& authority() const { return m_authority; }
    /// The address of a host: of "lookup", for example, "https://lookup.zelvora.localhost:PORT".
    [[nodiscard]] std::string address(std::string_view host) const;

    [[nodiscard]] Faults& faults() { return m_faults; }
    [[nodiscard]] CollectorStore& collected() { return *m_store; }

private:
    struct Host {
        /// If it begins with a dot, it matches every name with exactly one label before it.
        std::string name;
        Endpoint endpoint;
        std::optional<Target> target = std::nullopt;
    };

    Service(std::unique_ptr<CollectorStore> store, ServiceOptions const& options);
    [[nodiscard]] Outcome route(Request const& request);

    std::unique_ptr<CollectorStore> m_store;
    Faults m_faults;
    std::vector<Host> m_hosts;
    std::filesystem::path m_authority;
    std::uint16_t m_port = 0;
    // The last member, because its thread uses the others.
    std::unique_ptr<HttpServer> m_server;
};

}
