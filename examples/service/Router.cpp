#include "examples/service/Router.h"

#include <algorithm>
#include <utility>

namespace zelvora::examples {

namespace {

bool matches(std::string_view pattern, std::string_view host)
{
    if (!pattern.starts_with('.'))
        return pattern == host;
    return host.size() > pattern.size() && host.ends_with(pattern)
        && !host.substr(0, host.size() - pattern.size()).contains('.');
}

} // namespace

Router::Router(Faults& faults) : m_faults(faults) { }

void Router::add(std::string host, std::unique_ptr<Endpoint> endpoint, std::optional<Target> target)
{
    m_entries.push_back({ .host = std::move(host), .endpoint = std::move(endpoint), .target = target });
}

Outcome Router::route(Request const& request)
{
    auto const* entry = entryFor(request.host);
    if (!entry)
        return { .reply = errorReply(404, "no such host here") };

    auto const fault = entry->target ? m_faults.meet(*entry->target) : std::nullopt;
    if (!fault)
        return { .reply = entry->endpoint->answer(request) };

    auto reply = fault->refuses() ? Reply {} : entry->endpoint->answer(request);
    return { .reply = spoil(std::move(reply), *entry->target, *fault), .delay = fault->delay, .cut = fault->cut };
}

Router::Entry const* Router::entryFor(std::string_view host) const
{
    auto const found =
        std::ranges::find_if(m_entries, [host](Entry const& entry) { return matches(entry.host, host); });
    return found == m_entries.end() ? nullptr : &*found;
}

} // namespace zelvora::examples
