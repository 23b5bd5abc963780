#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "tests/ZelvoraAdapters/gtk/WebKit/PageTest.h"
#include "tests/support/gtk/TestAuthority.h"

#include <signal.h> // NOLINT(*-deprecated-headers): kill is not in <csignal>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zelvora::tests {

namespace {

using platform::Value;

/// A page over TLS with a frame from another host, both signed by an authority that the system does not know.
class WebsiteTrustTest : public PageTest {
protected:
    explicit WebsiteTrustTest(GtkHarness::Configure const& configure) : PageTest(configure) { }

    static TestAuthority& authority()
    {
        static TestAuthority s_authority;
        return s_authority;
    }

    static std::filesystem::path write(gtk::HostOptions const& options, std::string const& name, std::string const& pem)
    {
        std::filesystem::create_directories(options.dataDirectory);
        std::ofstream(options.dataDirectory / name) << pem;
        return options.dataDirectory / name;
    }

    static LoopbackServer::Identity& pageIdentity()
    {
        static auto s_identity = authority().identityOf("page.localhost");
        return s_identity;
    }
    static LoopbackServer::Identity& frameIdentity()
    {
        static auto s_identity = authority().identityOf("frame.localhost");
        return s_identity;
    }

    static void serve(LoopbackServer& server, std::string const& html)
    {
        server.serve("/", [html](SoupServerMessage* message) {
            soup_message_headers_replace(
                soup_server_message_get_response_headers(message), "Content-Type", "text/html");
            answer(message, 200, html);
        });
    }

    void loadPages()
    {
        addScript("webkit.messageHandlers.zelvora.postMessage(location.hostname);");
        serve(m_frameServer, "frame");
        auto const frame = m_frameServer.url("/", "frame.localhost").absoluteString();
        serve(m_pageServer, "<iframe src='" + frame + "'></iframe>");
        load(m_pageServer.url("/", "page.localhost"));
    }

    LoopbackServer m_pageServer { pageIdentity() };
    LoopbackServer m_frameServer { frameIdentity() };
};

class TrustingWebsiteTest : public WebsiteTrustTest {
protected:
    TrustingWebsiteTest()
        : WebsiteTrustTest([](gtk::HostOptions& options) {
            options.certificateAuthorityFile = write(options, "authority.pem", authority().certificatePEM());
            options.trustedCertificates.push_back(
                { "frame.localhost", write(options, "frame.pem", frameIdentity().certificatePEM) });
        })
    {
    }
};

class StrictWebsiteTest : public WebsiteTrustTest {
protected:
    StrictWebsiteTest() : WebsiteTrustTest([](gtk::HostOptions&) { }) { }
};

class OtherAuthorityWebsiteTest : public WebsiteTrustTest {
protected:
    OtherAuthorityWebsiteTest()
        : WebsiteTrustTest([](gtk::HostOptions& options) {
            options.certificateAuthorityFile =
                write(options, "authority.pem", TestAuthority("second").certificatePEM());
        })
    {
    }
};

// The one that this process started and that has not ended; 0 if there is none.
::pid_t networkProcess()
{
    for (auto const& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream stream(entry.path() / "stat");
        std::string line;
        std::getline(stream, line);
        auto const end = line.rfind(')');
        if (end == std::string::npos || !line.contains("(WebKitNetworkPr"))
            continue;
        std::istringstream rest(line.substr(end + 1));
        char state = 0;
        ::pid_t parent = 0;
        rest >> state >> parent;
        if (parent == getpid() && state != 'Z')
            return std::stoi(entry.path().filename());
    }
    return 0;
}

void expectRefusal(GtkHarness& harness, platform::WKWebView const& view, bool& hasFailed)
{
    g_signal_connect_swapped(gtk::webKitWebViewOf(view), "load-failed", G_CALLBACK(+[](bool* failed) -> gboolean {
        *failed = true;
        return TRUE;
    }),
        &hasFailed);
    EXPECT_TRUE(harness.runUntil([&] { return hasFailed; }));
}

}

TEST_F(TrustingWebsiteTest, PagesOfTheAuthorityAndFramesOfTrustedHostsLoad)
{
    loadPages();
    EXPECT_EQ(next(), Value("page.localhost"));
    EXPECT_EQ(next(), Value("frame.localhost"));
}

TEST_F(TrustingWebsiteTest, TrustedHostsStaySoWhenTheEnginesNetworkProcessHasDied)
{
    loadPages();
    EXPECT_EQ(next(), Value("page.localhost"));
    EXPECT_EQ(next(), Value("frame.localhost"));
    auto const process = networkProcess();
    ASSERT_NE(process, 0);
    kill(process, SIGKILL);
    ASSERT_TRUE(m_harness.runUntil([] { return networkProcess() == 0; }));
    // A load that begins before the engine has noticed it never ends.
    m_handler.bodies.clear();
    auto const frameLoads = [&] { return std::ranges::count(m_handler.bodies, Value("frame.localhost")) > 0; };
    for (int attempt = 0; attempt < 10 && !frameLoads(); ++attempt) {
        load(m_pageServer.url("/", "page.localhost"));
        (void)gtk::runMainLoopUntil(frameLoads, 4);
    }
    EXPECT_TRUE(frameLoads());
}

TEST_F(StrictWebsiteTest, AnUntrustedPageDoesNotLoad)
{
    loadPages();
    bool hasFailed = false;
    expectRefusal(m_harness, *m_view, hasFailed);
    EXPECT_TRUE(m_pageServer.received().empty());
}

TEST_F(OtherAuthorityWebsiteTest, APageOfAnotherAuthorityDoesNotLoad)
{
    loadPages();
    bool hasFailed = false;
    expectRefusal(m_harness, *m_view, hasFailed);
    EXPECT_TRUE(m_pageServer.received().empty());
}

TEST_F(TrustingWebsiteTest, APageWithACertificateForClientsDoesNotLoad)
{
    LoopbackServer server { authority().identityOf("client.localhost") };
    serve(server, "page");
    load(server.url("/", "client.localhost"));
    bool hasFailed = false;
    expectRefusal(m_harness, *m_view, hasFailed);
    EXPECT_TRUE(server.received().empty());
}

}
