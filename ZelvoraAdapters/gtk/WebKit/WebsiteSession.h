#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/HostOptions.h"

#include <webkit/webkit.h>

#include <filesystem>
#include <vector>

namespace zelvora::gtk {

/// What the app's web views share: cookies and stored data of the sites, kept in the app's folders, and the
/// certificates that are trusted beyond the system's. Main thread.
class WebsiteSession final {
public:
    /// Certificates signed by an authority in `certificateAuthorityFile` (PEM; may be empty) are trusted for the pages
    /// themselves. What pages load from other hosts needs `trustedCertificates`: of those the engine does not ask.
    WebsiteSession(std::filesystem::path const& dataDirectory, std::filesystem::path const& cacheDirectory,
        std::filesystem::path const& certificateAuthorityFile,
        std::vector<TrustedCertificate> const& trustedCertificates);

    [[nodiscard]] WebKitNetworkSession* session() const { return m_session.get(); }

    /// Trusts the certificate for the URL's host from now on if the authority signed it for that host.
    [[nodiscard]] bool trustIfSigned(GTlsCertificate* certificate, char const* url);

private:
    GObjectPointer<WebKitNetworkSession> m_session;
    GObjectPointer<GTlsCertificate> m_authority;
};

}
