#include "ZelvoraAdapters/gtk/Foundation/ServerTrust.h"

#include "tests/ZelvoraAdapters/gtk/Foundation/Loading.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/RawServer.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <chrono>

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

    // The answer of a server that speaks only one version of TLS.
    Loading::Result loadByVersion(std::string const& version)
    {
        auto const identity = m_authority.identityOf("localhost");
        auto const address = urlOfNobody().absoluteString();
        auto const port = address.substr(address.rfind(':') + 1, address.rfind('/') - address.rfind(':') - 1);
        ChildProcess const server { { ZELVORA_GNUTLS_SERV, "--http", "--quiet", "--port", port, "--x509certfile",
            m_directory.write("server.pem", identity.certificatePEM), "--x509keyfile",
            m_directory.write("key.pem", identity.keyPEM), "--priority", "NORMAL:-VERS-ALL:+VERS-" + version } };
        Loading loading({ .additionalAuthorities = authorityFile() });
        auto const url = *platform::URL::parse("https://localhost:" + port + "/");
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        for (;;) {
            auto result = loading.load({ .url = url });
            // Until the server listens.
            auto const isRefused = !result && result.error().domain == "g-io-error-quark"
                && result.error().code == G_IO_ERROR_CONNECTION_REFUSED;
            if (!isRefused || std::chrono::steady_clock::now() > deadline)
                return result;
        }
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

TEST_F(ServerTrustTest, TheCertificateMustBeForServers)
{
    auto const url = serve("client.localhost");
    Loading loading({ .additionalAuthorities = authorityFile() });
    // The second request could use the first one's connection.
    for (int i = 0; i < 2; ++i)
        expectUntrusted(loading.load({ .url = m_server->url("/", "client.localhost") }));
}

TEST_F(ServerTrustTest, TheServerMustSpeakARecentVersionOfTLS)
{
    for (auto const* const version : { "TLS1.2", "TLS1.3" }) {
        auto const result = loadByVersion(version);
        ASSERT_TRUE(result) << version << ": " << result.error().localizedDescription;
        EXPECT_EQ(result->response.statusCode, 200);
    }
    for (auto const* const version : { "TLS1.0", "TLS1.1" }) {
        auto const result = loadByVersion(version);
        ASSERT_FALSE(result) << version;
        EXPECT_EQ(result.error().domain, tlsErrors) << version;
    }
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
