#include "examples/service/Service.h"

#include "examples/service/Collector.h"
#include "examples/service/Control.h"
#include "examples/service/HttpServer.h"
#include "examples/service/Shops.h"
#include "examples/service/Site.h"

#include <algorithm>
#include <utility>

namespace zelvora::examples {

namespace {

std::string hostNamed(std::string_view name)
{
    return std::string(name) + ".zelvora.localhost";
}

bool matches(std::string_view host, std::string_view name)
{
    if (!name.starts_with('.'))
        return host == name;
    return host.ends_with(name) && host.size() > name.size() && host.find('.') == host.size() - name.size();
}

}

std::expected<std::unique_ptr<Service>, std::string> Service::start(ServiceOptions const& options)
{
    std::filesystem::path const certificates(ZELVORA_SERVICE_CERTIFICATES);
    auto const& data = options.dataDirectory;
    std::error_code failure;
    std::filesystem::create_directories(data, failure);
    for (auto const* file : { "ca.pem", "server.pem" }) {
        if (!failure)
            copy_file(certificates / file, data / file, std::filesystem::copy_options::overwrite_existing, failure);
    }
    if (failure)
        return std::unexpected("cannot make " + data.string() + ": " + failure.message());

    auto store = CollectorStore::open(data / "collected.jsonl");
    if (!store)
        return std::unexpected(store.error());
    std::unique_ptr<Service> service(new Service(std::move(*store), options));
    auto const handler = [&service = *service](Request const& request) { return service.route(request); };
    auto server = HttpServer::start(certificates, options.port, handler);
    if (!server)
        return std::unexpected("cannot listen: " + server.error());
    service->m_authority = data / "ca.pem";
    service->m_port = (*server)->port();
    service->m_server = std::move(*server);
    return service;
}

Service::Service(std::unique_ptr<CollectorStore> store, ServiceOptions const& options) : m_store(std::move(store))
{
    auto const site = options.siteDirectory.empty() ? ZELVORA_SERVICE_SITE : options.siteDirectory;
    auto const pages = options.shopDirectory.empty() ? site / "shop" : options.shopDirectory;
    auto const collect = [this, pages = site / "collector"](
                             Request const& request) { return answerCollector(*m_store, pages, request); };
    auto const control = [this](Request const& request) { return answerControl(m_faults, *m_store, request); };
    auto const frames = [pages = site / "frames"](Request const& request) { return answerFrames(pages, request); };
    auto const shop = [pages, address = options.shopAddress](char const* profile) {
        return [pages, address, profile](Request const& request) {
            return address.empty() ? answerShop(pages, profile, request) : leadElsewhere(address, request);
        };
    };
    m_hosts = {
        { hostNamed("lookup"), answerLookup, Target::Lookup },
        { hostNamed("collector"), collect, Target::Collector },
        { hostNamed("api"), answerIdentity },
        { hostNamed("control"), control },
        { hostNamed("frames"), frames },
        { hostNamed(".shop"), shop("prd"), Target::Site },
        { hostNamed(".dev"), shop("dev"), Target::Site },
    };
}

Service::~Service() = default;

void Service::stop()
{
    m_server.reset();
}

std::string Service::address(std::string_view host) const
{
    return "https://" + hostNamed(host) + ":" + std::to_string(m_port);
}

Outcome Service::route(Request const& request)
{
    auto const isAsked = [&request](Host const& host) { return matches(request.host, host.name); };
    auto const host = std::ranges::find_if(m_hosts, isAsked);
    if (host == m_hosts.end())
        return { .reply = errorReply(404, "there is no such host") };
    auto const fault = host->target ? m_faults.meet(*host->target) : std::nullopt;
    if (!fault)
        return { .reply = host->endpoint(request) };
    auto reply = fault->refuses() ? Reply {} : host->endpoint(request);
    return { .reply = fault->spoil(std::move(reply), *host->target), .delay = fault->delay, .cut = fault->cut };
}

}
