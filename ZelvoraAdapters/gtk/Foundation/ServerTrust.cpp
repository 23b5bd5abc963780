#include "ZelvoraAdapters/gtk/Foundation/ServerTrust.h"

namespace zelvora::gtk {

ServerTrust::ServerTrust(std::filesystem::path const& authorities)
{
    // GLib requires an absolute path.
    std::error_code ignored;
    auto const path = std::filesystem::absolute(authorities, ignored);
    GErrorPlace error;
    m_database.reset(g_tls_file_database_new(path.c_str(), error.out()));
    if (error)
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "%s could not be read: %s", path.c_str(), error->message);
}

bool ServerTrust::vouchesFor(GTlsCertificate& certificate, GUri& host) const
{
    if (!m_database)
        return false;
    // The identity is the host name; the port does not matter.
    auto const identity = adopt(g_network_address_new(g_uri_get_host(&host), 0));
    return g_tls_database_verify_chain(m_database.get(), &certificate, G_TLS_DATABASE_PURPOSE_AUTHENTICATE_SERVER,
               identity.get(), nullptr, G_TLS_DATABASE_VERIFY_NONE, nullptr, nullptr)
        == G_TLS_CERTIFICATE_NO_FLAGS;
}

}
