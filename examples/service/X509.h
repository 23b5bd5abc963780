#pragma once

#include <gnutls/x509.h>

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The few things about certificates that the service needs, over GnuTLS.
/// What can only fail when memory or the random source is exhausted yields an empty text in the end.
namespace zelvora::examples::x509 {

struct Release {
    void operator()(gnutls_x509_crt_t certificate) const { gnutls_x509_crt_deinit(certificate); }
    void operator()(gnutls_x509_privkey_t key) const { gnutls_x509_privkey_deinit(key); }
};

using Certificate = std::unique_ptr<gnutls_x509_crt_int, Release>;
using Key = std::unique_ptr<gnutls_x509_privkey_int, Release>;

Key makeKey();
Certificate makeAuthority(Key const& key, std::string_view name, std::time_t lifetime);
Certificate makeServer(Key const& key, std::vector<std::string> const& hostNames, std::time_t lifetime,
    Certificate const& authority, Key const& authorityKey);

std::optional<Certificate> readCertificate(std::string_view pem);
std::optional<Key> readKey(std::string_view pem);
std::string text(Certificate const& certificate);
std::string text(Key const& key);

bool isValidAt(Certificate const& certificate, std::time_t time);
bool isSignedBy(Certificate const& certificate, Certificate const& authority);
bool belongsTo(Certificate const& certificate, Key const& key);
/// A name that begins with "*." asks for every name with one label in its place.
bool isFor(Certificate const& certificate, std::string const& hostName);

} // namespace zelvora::examples::x509
