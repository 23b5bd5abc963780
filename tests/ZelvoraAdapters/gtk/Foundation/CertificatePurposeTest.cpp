#include "ZelvoraAdapters/gtk/Foundation/CertificatePurpose.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zelvora::tests {

namespace {

gtk::GObjectPointer<GTlsCertificate> parse(std::string const& pem)
{
    gtk::GErrorPlace error;
    auto certificate =
        gtk::adopt(g_tls_certificate_new_from_pem(pem.data(), static_cast<gssize>(pem.size()), error.out()));
    EXPECT_FALSE(error);
    return certificate;
}

std::string derOf(GTlsCertificate& certificate)
{
    GByteArray* bytes = nullptr;
    g_object_get(&certificate, "certificate", &bytes, nullptr);
    std::string const der { reinterpret_cast<char const*>(bytes->data), bytes->len };
    g_byte_array_unref(bytes);
    return der;
}

}

TEST(CertificatePurposeTest, AServersCertificateIsForServers)
{
    EXPECT_TRUE(gtk::isForServers(*parse(TestAuthority().identityOf("localhost").certificatePEM)));
}

TEST(CertificatePurposeTest, AClientsCertificateIsNot)
{
    EXPECT_FALSE(gtk::isForServers(*parse(TestAuthority().identityOf("client.localhost").certificatePEM)));
}

TEST(CertificatePurposeTest, ACertificateThatNamesNoPurposeIsForEveryone)
{
    EXPECT_TRUE(gtk::isForServers(*parse(TestAuthority().certificatePEM())));
}

TEST(CertificatePurposeTest, SurvivesAnyBytes)
{
    auto const whole = derOf(*parse(TestAuthority().identityOf("client.localhost").certificatePEM));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(gtk::isForServers(std::string_view(whole).substr(0, size))) << size;
    std::mt19937 random { 5 };
    for (int i = 0; i < 20'000; ++i) {
        // In memory of its own, so that a sanitizer notices each byte that is read beyond the end.
        auto bytes = std::make_unique<std::string>(whole);
        for (int change = 0; change < 3; ++change)
            (*bytes)[random() % bytes->size()] = static_cast<char>(random());
        (void)gtk::isForServers(*bytes);
    }
}

}
