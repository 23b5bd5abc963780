#include "examples/service/X509.h"

#include <gnutls/crypto.h>

#include <array>

namespace zelvora::examples::x509 {

namespace {

gnutls_datum_t datumOf(std::string_view text)
{
    // GnuTLS only reads what it is given here; its type has no const.
    auto* start = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
    return { .data = start, .size = static_cast<unsigned>(text.size()) };
}

std::string take(gnutls_datum_t datum)
{
    std::string text(reinterpret_cast<char const*>(datum.data), datum.size);
    gnutls_free(datum.data);
    return text;
}

std::array<unsigned char, 20> identifierOf(Key const& key)
{
    std::array<unsigned char, 20> identifier {};
    auto size = identifier.size();
    gnutls_x509_privkey_get_key_id(key.get(), 0, identifier.data(), &size);
    return identifier;
}

void setSerialNumber(Certificate const& certificate)
{
    std::array<unsigned char, 16> number {};
    gnutls_rnd(GNUTLS_RND_NONCE, number.data(), number.size());
    number.front() = static_cast<unsigned char>((number.front() & 0x3FU) | 0x40U); // Positive and of full length.
    gnutls_x509_crt_set_serial(certificate.get(), number.data(), number.size());
}

Certificate begin(Key const& key, std::string_view name, std::time_t lifetime)
{
    gnutls_x509_crt_t raw = nullptr;
    gnutls_x509_crt_init(&raw);
    Certificate certificate(raw);
    auto const now = std::time(nullptr);
    auto const identifier = identifierOf(key);
    gnutls_x509_crt_set_version(raw, 3);
    setSerialNumber(certificate);
    // A little in the past, for clients whose clock is a little behind.
    gnutls_x509_crt_set_activation_time(raw, now - 3600);
    gnutls_x509_crt_set_expiration_time(raw, now + lifetime);
    gnutls_x509_crt_set_dn_by_oid(raw, GNUTLS_OID_X520_COMMON_NAME, 0, name.data(), static_cast<unsigned>(name.size()));
    gnutls_x509_crt_set_key(raw, key.get());
    gnutls_x509_crt_set_subject_key_id(raw, identifier.data(), identifier.size());
    return certificate;
}

} // namespace

Key makeKey()
{
    gnutls_x509_privkey_t raw = nullptr;
    gnutls_x509_privkey_init(&raw);
    Key key(raw);
    gnutls_x509_privkey_generate(raw, GNUTLS_PK_ECDSA, GNUTLS_CURVE_TO_BITS(GNUTLS_ECC_CURVE_SECP256R1), 0);
    return key;
}

Certificate makeAuthority(Key const& key, std::string_view name, std::time_t lifetime)
{
    auto certificate = begin(key, name, lifetime);
    gnutls_x509_crt_set_basic_constraints(certificate.get(), 1, 0);
    gnutls_x509_crt_set_key_usage(certificate.get(), GNUTLS_KEY_KEY_CERT_SIGN | GNUTLS_KEY_CRL_SIGN);
    gnutls_x509_crt_sign2(certificate.get(), certificate.get(), key.get(), GNUTLS_DIG_SHA256, 0);
    return certificate;
}

Certificate makeServer(Key const& key, std::vector<std::string> const& hostNames, std::time_t lifetime,
    Certificate const& authority, Key const& authorityKey)
{
    auto certificate = begin(key, "Zelvora example service", lifetime);
    auto const authorityIdentifier = identifierOf(authorityKey);
    for (auto const& name : hostNames) {
        gnutls_x509_crt_set_subject_alt_name(
            certificate.get(), GNUTLS_SAN_DNSNAME, name.data(), static_cast<unsigned>(name.size()), GNUTLS_FSAN_APPEND);
    }
    gnutls_x509_crt_set_basic_constraints(certificate.get(), 0, -1);
    gnutls_x509_crt_set_key_usage(certificate.get(), GNUTLS_KEY_DIGITAL_SIGNATURE);
    gnutls_x509_crt_set_key_purpose_oid(certificate.get(), GNUTLS_KP_TLS_WWW_SERVER, 0);
    gnutls_x509_crt_set_authority_key_id(certificate.get(), authorityIdentifier.data(), authorityIdentifier.size());
    gnutls_x509_crt_sign2(certificate.get(), authority.get(), authorityKey.get(), GNUTLS_DIG_SHA256, 0);
    return certificate;
}

std::optional<Certificate> readCertificate(std::string_view pem)
{
    gnutls_x509_crt_t raw = nullptr;
    gnutls_x509_crt_init(&raw);
    Certificate certificate(raw);
    auto const datum = datumOf(pem);
    if (gnutls_x509_crt_import(raw, &datum, GNUTLS_X509_FMT_PEM) != GNUTLS_E_SUCCESS)
        return std::nullopt;
    return certificate;
}

std::optional<Key> readKey(std::string_view pem)
{
    gnutls_x509_privkey_t raw = nullptr;
    gnutls_x509_privkey_init(&raw);
    Key key(raw);
    auto const datum = datumOf(pem);
    if (gnutls_x509_privkey_import(raw, &datum, GNUTLS_X509_FMT_PEM) != GNUTLS_E_SUCCESS)
        return std::nullopt;
    return key;
}

std::string text(Certificate const& certificate)
{
    gnutls_datum_t datum {};
    if (gnutls_x509_crt_export2(certificate.get(), GNUTLS_X509_FMT_PEM, &datum) != GNUTLS_E_SUCCESS)
        return {};
    return take(datum);
}

std::string text(Key const& key)
{
    gnutls_datum_t datum {};
    if (gnutls_x509_privkey_export2(key.get(), GNUTLS_X509_FMT_PEM, &datum) != GNUTLS_E_SUCCESS)
        return {};
    return take(datum);
}

bool isValidAt(Certificate const& certificate, std::time_t time)
{
    return gnutls_x509_crt_get_activation_time(certificate.get()) <= time
        && time <= gnutls_x509_crt_get_expiration_time(certificate.get());
}

bool isSignedBy(Certificate const& certificate, Certificate const& authority)
{
    auto* issuer = authority.get();
    unsigned verdict = 0;
    return gnutls_x509_crt_verify(certificate.get(), &issuer, 1, 0, &verdict) == GNUTLS_E_SUCCESS && verdict == 0;
}

bool belongsTo(Certificate const& certificate, Key const& key)
{
    std::array<unsigned char, 20> identifier {};
    auto size = identifier.size();
    gnutls_x509_crt_get_key_id(certificate.get(), 0, identifier.data(), &size);
    return identifier == identifierOf(key);
}

bool isFor(Certificate const& certificate, std::string const& hostName)
{
    auto const probe = hostName.starts_with("*.") ? "any" + hostName.substr(1) : hostName;
    return gnutls_x509_crt_check_hostname(certificate.get(), probe.c_str()) != 0;
}

} // namespace zelvora::examples::x509
