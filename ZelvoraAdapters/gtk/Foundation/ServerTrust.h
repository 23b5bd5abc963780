#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gio/gio.h>

#include <filesystem>

namespace zelvora::gtk {

/// Certificate authorities that the app trusts beside those of the system, such as a local service's. One thread.
class ServerTrust final {
public:
    /// A PEM file. Where it cannot be read a warning is logged and nothing more is trusted.
    explicit ServerTrust(std::filesystem::path const& authorities);

    /// Whether these authorities vouch for a certificate that the system's do not, for that very host.
    [[nodiscard]] bool vouchesFor(GTlsCertificate& certificate, GUri& host) const;

private:
    GObjectPointer<GTlsDatabase> m_database;
};

}
