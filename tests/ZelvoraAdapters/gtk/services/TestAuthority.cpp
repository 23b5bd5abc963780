#include "tests/ZelvoraAdapters/gtk/services/TestAuthority.h"

namespace zelvora::tests {

namespace x509 = examples::x509;

namespace {

constexpr std::time_t anHour = 3600;

}

TestAuthority::TestAuthority()
    : m_key(x509::makeKey())
    , m_certificate(x509::makeAuthority(m_key, "Test Authority", anHour))
{
}

std::string TestAuthority::certificatePEM() const
{
    return x509::text(m_certificate);
}

LoopbackServer::Identity TestAuthority::makeIdentity(std::string const& host) const
{
    auto const key = x509::makeKey();
    auto const certificate = x509::makeServer(key, { host }, anHour, m_certificate, m_key);
    return { .certificatePEM = x509::text(certificate), .keyPEM = x509::text(key) };
}

}
