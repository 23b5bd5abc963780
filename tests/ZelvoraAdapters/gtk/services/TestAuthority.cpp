#include "tests/ZelvoraAdapters/gtk/services/TestAuthority.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

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
    std::ifstream stream(m_directory / file, std::ios::binary);
    EXPECT_TRUE(stream) << "There is no " << m_directory / file << ".";
    return { std::istreambuf_iterator<char>(stream), {} };
}

}
