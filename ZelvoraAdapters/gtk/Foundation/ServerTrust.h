#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gio/gio.h>

#include <filesystem>

namespace zelvora::gtk {

/// Certificate authorities that the app trusts in addition to the system's, such as that of a local service. One
/// thread.
class ServerTrust final {
public:
    /// A PEM file. If it cannot be read, a warning is logged and nothing else is trusted.
    explicit ServerTrust(std::filesystem::path const& authorities);

    /// Whether one of these authorities signed the certificate for exactly this host.
    [[nodiscard]] bool vouchesFor(GTlsCertificate& certificate, GUri& host) const;

private:
    GObjectPointer<GTlsDatabase> m_database;
};

}
