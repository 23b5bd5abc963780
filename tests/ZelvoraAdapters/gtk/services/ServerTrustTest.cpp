#include "ZelvoraAdapters/gtk/Foundation/ServerTrust.h"

#include "tests/ZelvoraAdapters/gtk/services/Loading.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

std::string const tlsErrors = "g-tls-error-quark";

class ServerTrustTest : public testing::Test {
protected:
    platform::URL serve(std::string const& host)
    {
        m_server.emplace(m_authority.identityOf(host));
        m_server->serve("/", [](SoupServerMessage* message) { answer(message, 200, "secret"); });
        return m_server->url("/");
    }
    std::filesystem::path authorityFile() const
    {
        return m_directory.write("authority.pem", m_authority.certificatePEM());
    }
    void expectUntrusted(Loading::Result const& result)
    {
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().domain, tlsErrors);
        EXPECT_EQ(result.error().code, G_TLS_ERROR_BAD_CERTIFICATE);
        EXPECT_TRUE(m_server->received().empty());
    }

    TestAuthority m_authority;
    TemporaryDirectory m_directory;
    std::optional<LoopbackServer> m_server;
};

}

TEST_F(ServerTrustTest, AnAdditionalAuthorityIsTrusted)
{
    auto const url = serve("localhost");
    Loading loading({ .additionalAuthorities = authorityFile() });
    auto const result = loading.load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, "secret");
}

TEST_F(ServerTrustTest, AHostNameBelowLocalhostNeedsNoResolver)
{
    serve("shop.localhost");
    Loading loading({ .additionalAuthorities = authorityFile() });
    auto const result = loading.load({ .url = m_server->url("/", "shop.localhost") });
    ASSERT_TRUE(result) << result.error().localizedDescription;
}

TEST_F(ServerTrustTest, WithoutTheAuthorityTheServerIsNotTrusted)
{
    auto const url = serve("localhost");
    Loading loading;
    expectUntrusted(loading.load({ .url = url }));
}

TEST_F(ServerTrustTest, AnotherAuthorityIsNotEnough)
{
    auto const url = serve("localhost");
    Loading loading(
        { .additionalAuthorities = m_directory.write("other.pem", TestAuthority("second").certificatePEM()) });
    expectUntrusted(loading.load({ .url = url }));
}

TEST_F(ServerTrustTest, TheCertificateMustBeForTheRequestedHost)
{
    auto const url = serve("elsewhere.localhost");
    Loading loading({ .additionalAuthorities = authorityFile() });
    expectUntrusted(loading.load({ .url = url }));
}

TEST_F(ServerTrustTest, AnUnreadableAuthorityFileIsIgnored)
{
    auto const url = serve("localhost");
    for (auto const& file :
        { m_directory.path() / "missing.pem", m_directory.write("broken.pem", "not a certificate") }) {
        Loading loading({ .additionalAuthorities = file });
        expectUntrusted(loading.load({ .url = url }));
    }
}

TEST_F(ServerTrustTest, APlainServerBehindASecureAddressIsAnError)
{
    LoopbackServer plain;
    plain.serve("/", [](SoupServerMessage* message) { answer(message, 200, ""); });
    auto const insecure = plain.url("/").absoluteString();
    Loading loading;
    auto const result =
        loading.load({ .url = *platform::URL::parse("https" + insecure.substr(4)), .timeoutInterval = 0.5 });
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().domain, "test");
}

}
