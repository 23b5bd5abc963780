#include "tests/support/gtk/TestAuthority.h"

#include "tests/support/FileBytes.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

TestAuthority::TestAuthority(std::string const& name)
    : m_directory(std::filesystem::path(ZELVORA_TEST_CERTIFICATES) / name)
{
}

std::string TestAuthority::certificatePEM() const
{
    return read("ca.pem");
}

LoopbackServer::Identity TestAuthority::identityOf(std::string const& host) const
{
    return { .certificatePEM = read(host + ".pem"), .keyPEM = read(host + "-key.pem") };
}

std::string TestAuthority::read(std::string const& file) const
{
    auto bytes = bytesOf(m_directory / file);
    EXPECT_FALSE(bytes.empty()) << "There is no " << m_directory / file << ".";
    return bytes;
}

}
