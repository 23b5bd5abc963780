#pragma once

#include "examples/service/CollectorStore.h"
#include "examples/service/Faults.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace zelvora::examples {

class HttpServer;
class ShopDirectory;

struct ServiceOptions {
    std::filesystem::path dataDirectory; ///< Made when absent; keeps the certificates and what was collected.
    std::filesystem::path siteDirectory = {}; ///< Empty for the pages that belong to this program.
    std::uint16_t port = 0; ///< 0 lets the system choose.
};

/// The whole service of the examples: lookup, collector, shops, frames, identity and control, all on one
/// loopback port and told apart by host name. It runs on a thread of its own from start to stop, so a
/// test may have it in its own process; every member may be called from any thread, stop from one at a time.
class Service {
public:
    /// On failure the text says why.
    static std::expected<std::unique_ptr<Service>, std::string> start(ServiceOptions const& options);

    Service(Service const&) = delete;
    Service& operator=(Service const&) = delete;
    ~Service();

    /// Closes the port and all connections. What was collected stays readable.
    void stop();

    std::uint16_t port() const;
    /// The file with the authority that clients must trust.
    std::filesystem::path const& authority() const;
    /// The address of one of the hosts, "lookup" for example: "https://lookup.zelvora.localhost:PORT".
    std::string address(std::string_view host) const;

    Faults& faults();
    CollectorStore& collected();

private:
    explicit Service(CollectorStore store);
    std::expected<void, std::string> run(ServiceOptions const& options);

    std::unique_ptr<ShopDirectory> m_shops;
    CollectorStore m_store;
    Faults m_faults;
    std::filesystem::path m_authority;
    std::uint16_t m_port = 0;
    std::unique_ptr<HttpServer> m_server; // The last member: its thread uses the others.
};

} // namespace zelvora::examples
