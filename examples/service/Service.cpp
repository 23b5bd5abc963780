#include "examples/service/Service.h"

#include "examples/service/Certificates.h"
#include "examples/service/Collector.h"
#include "examples/service/Control.h"
#include "examples/service/HttpServer.h"
#include "examples/service/Identity.h"
#include "examples/service/Lookup.h"
#include "examples/service/ShopDirectory.h"
#include "examples/service/Site.h"

#include <utility>

namespace zelvora::examples {

namespace {

constexpr std::string_view s_domain = ".zelvora.localhost";

std::string hostNamed(std::string_view name)
{
    return std::string(name) + std::string(s_domain);
}

std::vector<std::string> certifiedNames()
{
    return { hostNamed("lookup"), hostNamed("collector"), hostNamed("frames"), hostNamed("api"), hostNamed("control"),
        hostNamed("*.shop"), hostNamed("*.dev") };
}

std::unique_ptr<Router> makeRouter(
    Faults& faults, CollectorStore& store, ShopDirectory const& shops, std::filesystem::path const& pages)
{
    auto router = std::make_unique<Router>(faults);
    router->add(hostNamed("lookup"), std::make_unique<Lookup>(shops), Target::Lookup);
    router->add(hostNamed("collector"), std::make_unique<Collector>(store), Target::Collector);
    router->add(hostNamed("api"), std::make_unique<Identity>(shops));
    router->add(hostNamed("control"), std::make_unique<Control>(faults, store));
    router->add(hostNamed("frames"), std::make_unique<Frames>(pages / "frames"));
    router->add(
        hostNamed(".shop"), std::make_unique<Site>(pages / "shop", shops, hostNamed(".shop"), "prd"), Target::Site);
    router->add(
        hostNamed(".dev"), std::make_unique<Site>(pages / "shop", shops, hostNamed(".dev"), "dev"), Target::Site);
    return router;
}

} // namespace

std::expected<std::unique_ptr<Service>, std::string> Service::start(ServiceOptions const& options)
{
    std::error_code failure;
    std::filesystem::create_directories(options.dataDirectory, failure);
    if (failure)
        return std::unexpected("cannot make " + options.dataDirectory.string() + ": " + failure.message());

    auto store = CollectorStore::open(options.dataDirectory / "service.sqlite");
    if (!store)
        return std::unexpected(store.error());
    std::unique_ptr<Service> service(new Service(std::move(*store)));
    if (auto const running = service->run(options); !running)
        return std::unexpected(running.error());
    return service;
}

Service::Service(CollectorStore store) : m_shops(std::make_unique<ShopDirectory>()), m_store(std::move(store)) { }

Service::~Service() = default;

std::expected<void, std::string> Service::run(ServiceOptions const& options)
{
    auto const certificates = prepareCertificates(options.dataDirectory, certifiedNames());
    if (!certificates)
        return std::unexpected(certificates.error());

    auto const pages =
        options.siteDirectory.empty() ? std::filesystem::path(ZELVORA_SITE_DIRECTORY) : options.siteDirectory;
    auto server = HttpServer::start(*certificates, options.port, makeRouter(m_faults, m_store, *m_shops, pages));
    if (!server)
        return std::unexpected("cannot listen: " + server.error());
    m_authority = certificates->authority;
    m_server = std::move(*server);
    m_port = m_server->port();
    return {};
}

void Service::stop()
{
    m_server.reset();
}

std::uint16_t Service::port() const
{
    return m_port;
}

std::filesystem::path const& Service::authority() const
{
    return m_authority;
}

std::string Service::address(std::string_view host) const
{
    return "https://" + hostNamed(host) + ":" + std::to_string(m_port);
}

Faults& Service::faults()
{
    return m_faults;
}

CollectorStore& Service::collected()
{
    return m_store;
}

} // namespace zelvora::examples
