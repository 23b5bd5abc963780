#include "examples/service/Certificates.h"

#include "examples/service/ServiceClient.h"
#include "examples/service/X509.h"
#include "tests/examples/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace zelvora::examples {

class CertificatesTest : public testing::Test {
protected:
    Certificates prepare(std::vector<std::string> const& names = { "one.localhost", "*.two.localhost" })
    {
        auto const certificates = prepareCertificates(directory.path(), names);
        EXPECT_TRUE(certificates) << certificates.error();
        return *certificates;
    }

    TemporaryDirectory directory;
};

TEST_F(CertificatesTest, TheServerIsSignedByTheAuthorityForItsNames)
{
    auto const files = prepare();
    auto const authority = x509::readCertificate(contentsOf(files.authority));
    auto const server = x509::readCertificate(contentsOf(files.server));
    ASSERT_TRUE(authority && server);
    EXPECT_TRUE(x509::isSignedBy(*server, *authority));
    EXPECT_FALSE(x509::isSignedBy(*authority, *server));
    EXPECT_TRUE(x509::isFor(*server, "one.localhost"));
    EXPECT_TRUE(x509::isFor(*server, "shop.two.localhost"));
    EXPECT_FALSE(x509::isFor(*server, "a.shop.two.localhost"));
    EXPECT_FALSE(x509::isFor(*server, "three.localhost"));
}

TEST_F(CertificatesTest, GoodCertificatesAreUsedAgain)
{
    auto const files = prepare();
    auto const authority = contentsOf(files.authority);
    auto const server = contentsOf(files.server);
    prepare();
    EXPECT_EQ(contentsOf(files.authority), authority);
    EXPECT_EQ(contentsOf(files.server), server);
}

TEST_F(CertificatesTest, ANameThatIsMissingMakesNewOnes)
{
    auto const before = contentsOf(prepare().server);
    auto const files = prepare({ "one.localhost", "three.localhost" });
    EXPECT_NE(contentsOf(files.server), before);
}

TEST_F(CertificatesTest, ABrokenFileMakesNewOnes)
{
    auto const files = prepare();
    for (auto const& file : { files.authority, files.server, files.serverKey }) {
        auto const before = contentsOf(files.server);
        write(file, contentsOf(file).substr(0, 100));
        prepare();
        EXPECT_NE(contentsOf(files.server), before) << file;
    }
}

TEST_F(CertificatesTest, AKeyOfAnotherCertificateMakesNewOnes)
{
    auto const files = prepare();
    auto const before = contentsOf(files.server);
    write(files.serverKey, x509::text(x509::makeKey()));
    prepare();
    EXPECT_NE(contentsOf(files.server), before);
}

TEST_F(CertificatesTest, CertificatesThatAreAboutToExpireAreReplaced)
{
    auto const authorityKey = x509::makeKey();
    auto const serverKey = x509::makeKey();
    auto const authority = x509::makeAuthority(authorityKey, "soon gone", 3600);
    auto const server = x509::makeServer(serverKey, { "one.localhost" }, 3600, authority, authorityKey);
    ASSERT_TRUE(x509::isValidAt(server, std::time(nullptr)));
    write(directory.path() / "ca.pem", x509::text(authority));
    write(directory.path() / "server.pem", x509::text(server));
    write(directory.path() / "server-key.pem", x509::text(serverKey));

    auto const files = prepare({ "one.localhost" });
    EXPECT_NE(contentsOf(files.server), x509::text(server));
}

TEST_F(CertificatesTest, OnlyTheOwnerReadsTheKeyAndTheAuthoritysKeyIsNotKept)
{
    auto const files = prepare();
    EXPECT_EQ(std::filesystem::status(files.serverKey).permissions(),
        std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);

    auto const authority = x509::readCertificate(contentsOf(files.authority));
    ASSERT_TRUE(authority);
    for (auto const& entry : std::filesystem::directory_iterator(directory.path())) {
        auto const key = x509::readKey(contentsOf(entry.path()));
        EXPECT_FALSE(key && x509::belongsTo(*authority, *key)) << entry.path();
    }
}

TEST_F(CertificatesTest, ADirectoryThatIsNotThereIsReported)
{
    auto const certificates = prepareCertificates(directory.path() / "nowhere", { "one.localhost" });
    ASSERT_FALSE(certificates);
    EXPECT_TRUE(certificates.error().starts_with("cannot make certificates in "));
}

} // namespace zelvora::examples
