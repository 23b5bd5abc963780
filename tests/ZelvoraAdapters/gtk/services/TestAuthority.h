#pragma once

#include "examples/service/X509.h"
#include "tests/contract/gtk/LoopbackServer.h"

#include <filesystem>
#include <string>

namespace zelvora::tests {

/// A certificate authority made on the spot.
class TestAuthority final {
public:
    TestAuthority();

    [[nodiscard]] std::string certificatePEM() const;
    /// Makes a server that this authority vouches for, under a host name.
    [[nodiscard]] LoopbackServer::Identity makeIdentity(std::string const& host) const;

private:
    examples::x509::Key m_key;
    examples::x509::Certificate m_certificate;
};

}
