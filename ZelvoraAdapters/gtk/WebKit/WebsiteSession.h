#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/HostOptions.h"

#include <webkit/webkit.h>

#include <filesystem>
#include <string>
#include <vector>

namespace zelvora::gtk {

/// What the app's web views share: the sites' cookies and stored data, kept in the app's folders, and the certificates
/// that are trusted in addition to the system's. Main thread.
class WebsiteSession final {
public:
    /// Certificates signed by an authority in `certificateAuthorityFile` (PEM; may be empty) are trusted for the pages
    /// themselves. Resources that pages load from other hosts need `trustedCertificates`, because the engine does not
    /// ask about those.
    WebsiteSession(std::filesystem::path const& dataDirectory, std::filesystem::path const& cacheDirectory,
        std::filesystem::path const& certificateAuthorityFile,
        std::vector<TrustedCertificate> const& trustedCertificates);

    [[nodiscard]] WebKitNetworkSession* session() const { return m_session.get(); }

    /// The engine's network process knows whom to trust, and forgets it when it dies: call this before a page is
    /// loaded.
    void renewTrust();

    /// If the authority signed the certificate for the URL's host, trusts it from now on and returns true.
    [[nodiscard]] bool trustIfSigned(GTlsCertificate* certificate, char const* url);

private:
    struct Trusted {
        std::string host;
        GObjectPointer<GTlsCertificate> certificate;
    };

    GObjectPointer<WebKitNetworkSession> m_session;
    GObjectPointer<GTlsCertificate> m_authority;
    std::vector<Trusted> m_trusted;
};

}
