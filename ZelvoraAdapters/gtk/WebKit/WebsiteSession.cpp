#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"

#include "ZelvoraAdapters/gtk/Foundation/CertificatePurpose.h"

#include <utility>

namespace zelvora::gtk {

namespace {

GObjectPointer<GTlsCertificate> readCertificate(std::filesystem::path const& file)
{
    GErrorPlace error;
    auto certificate = adopt(g_tls_certificate_new_from_file(file.c_str(), error.out()));
    if (!certificate)
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "%s could not be read: %s", file.c_str(), error->message);
    return certificate;
}

}

WebsiteSession::WebsiteSession(std::filesystem::path const& dataDirectory, std::filesystem::path const& cacheDirectory,
    std::filesystem::path const& certificateAuthorityFile, std::vector<TrustedCertificate> const& trustedCertificates)
    : m_session(adopt(webkit_network_session_new((dataDirectory / "websites").c_str(), cacheDirectory.c_str())))
{
    // As on the phone without a download delegate, nothing is downloaded.
    g_signal_connect(m_session.get(), "download-started",
        G_CALLBACK(+[](WebKitNetworkSession*, WebKitDownload* download) { webkit_download_cancel(download); }),
        nullptr);
    // Without a login panel there are no credentials to keep, and looking for some could ask the user to unlock the
    // keyring.
    webkit_network_session_set_persistent_credential_storage_enabled(m_session.get(), FALSE);
    auto* cookies = webkit_network_session_get_cookie_manager(m_session.get());
    webkit_cookie_manager_set_persistent_storage(
        cookies, (dataDirectory / "cookies.sqlite").c_str(), WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    if (!certificateAuthorityFile.empty())
        m_authority = readCertificate(certificateAuthorityFile);
    for (auto const& trusted : trustedCertificates) {
        if (auto certificate = readCertificate(trusted.file))
            m_trusted.push_back({ trusted.host, std::move(certificate) });
    }
    renewTrust();
}

void WebsiteSession::renewTrust()
{
    for (auto const& [host, certificate] : m_trusted)
        webkit_network_session_allow_tls_certificate_for_host(m_session.get(), certificate.get(), host.c_str());
}

bool WebsiteSession::trustIfSigned(GTlsCertificate* certificate, char const* url)
{
    GUriPointer const parsed(g_uri_parse(url, G_URI_FLAGS_NONE, nullptr));
    if (!m_authority || !parsed || !g_uri_get_host(parsed.get()))
        return false;
    auto const* host = g_uri_get_host(parsed.get());
    auto const identity = adopt(G_SOCKET_CONNECTABLE(g_network_address_new(host, 0)));
    if (g_tls_certificate_verify(certificate, identity.get(), m_authority.get()) != G_TLS_CERTIFICATE_NO_FLAGS
        || !isForServers(*certificate))
        return false;
    webkit_network_session_allow_tls_certificate_for_host(m_session.get(), certificate, host);
    return true;
}

}
