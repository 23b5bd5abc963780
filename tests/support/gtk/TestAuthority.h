#pragma once

#include "tests/support/gtk/LoopbackServer.h"

#include <filesystem>
#include <string>

namespace zelvora::tests {

/// A certificate authority that no system trusts, and the servers that it signed. Made with the build.
class TestAuthority final {
public:
    /// "first" and "second" are two authorities that do not vouch for each other's servers.
    explicit TestAuthority(std::string const& name = "first");

    [[nodiscard]] std::string certificatePEM() const;
    /// The server of a host name, one of those in the build's list for this authority.
    [[nodiscard]] LoopbackServer::Identity identityOf(std::string const& host) const;

private:
    [[nodiscard]] std::string read(std::string const& file) const;

    std::filesystem::path m_directory;
};

}
