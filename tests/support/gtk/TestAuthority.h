#pragma once

#include "tests/support/gtk/LoopbackServer.h"

#include <filesystem>
#include <string>

namespace zelvora::tests {

/// A certificate authority that no system trusts, and the server certificates that it has signed. The build makes them.
class TestAuthority final {
public:
    /// There are two, "first" and "second".
    explicit TestAuthority(std::string const& name = "first");

    [[nodiscard]] std::string certificatePEM() const;
    /// The certificate and key for a host name, which must be in the build's list for this authority.
    [[nodiscard]] LoopbackServer::Identity identityOf(std::string const& host) const;

private:
    [[nodiscard]] std::string read(std::string const& file) const;

    std::filesystem::path m_directory;
};

}
