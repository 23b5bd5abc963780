#pragma once

#include <libsoup/soup.h>

#include <cstdint>

namespace zelvora::gtk {

/// The port of a server that listens at one.
[[nodiscard]] inline std::uint16_t portOf(SoupServer* server)
{
    auto* const addresses = soup_server_get_uris(server);
    auto const port = g_uri_get_port(static_cast<GUri*>(addresses->data));
    g_slist_free_full(addresses, [](gpointer address) { g_uri_unref(static_cast<GUri*>(address)); });
    return static_cast<std::uint16_t>(port);
}

}
