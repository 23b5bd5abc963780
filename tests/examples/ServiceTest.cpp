#include "tests/examples/ServiceFixture.h"

#include <array>
#include <chrono>
#include <future>
#include <set>
#include <thread>
#include <utility>

namespace zelvora::tests {

using ServiceTest = ServiceFixture;

TEST_F(ServiceTest, TheLookupAnswersWithTheShopOfTheKey)
{
    auto const answer = lookUp("demo-key");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.contentType, "application/json");
    EXPECT_EQ(answer.body, R"({"data":{"shopId":"hanok"}})");
    EXPECT_EQ(lookUp("demo-key-harbor").body, R"({"data":{"shopId":"harbor"}})");
}

TEST_F(ServiceTest, AnUnknownKeyIsNotFound)
{
    for (auto const* key : { "nobody", "" }) {
        auto const answer = lookUp(key);
        EXPECT_EQ(answer.status, 404U) << key;
        EXPECT_EQ(answer.body, R"({"error":"unknown api_key"})") << key;
    }
}

TEST_F(ServiceTest, ALookupWithoutExactlyTwoStringsIsRefused)
{
    for (auto const* body : { "", "nonsense", "[]", "{}", R"({"profile":"prd"})", R"({"profile":"prd","api_key":1})",
             R"({"profile":"prd","api_key":null})", R"({"profile":"prd","api_key":"demo-key","more":"text"})",
             R"({"profile":"test","api_key":"demo-key"})" }) {
        EXPECT_EQ(post("lookup", "/", body).status, 400U) << body;
    }
}

TEST_F(ServiceTest, ALookupMustBePostedAsJsonToItsAddress)
{
    auto const question = R"({"profile":"dev","api_key":"demo-key"})";
    EXPECT_EQ(post("lookup", "/", question, "application/json; charset=utf-8").status, 200U);
    EXPECT_EQ(post("lookup", "/", question, "text/plain").status, 415U);
    EXPECT_EQ(post("lookup", "/elsewhere", question).status, 404U);
    EXPECT_EQ(get("lookup", "/").status, 405U);
}

TEST_F(ServiceTest, TheIdentityEndpointAnswersWithTheShopOfTheKey)
{
    auto const answer = post("api", "/",
        R"({"userKey":"user","apiKey":"demo-key","adId":null,"packageName":"kr.example"})", "application/json; utf-8");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.body, R"({"shop_id":"hanok"})");
}

TEST_F(ServiceTest, TheIdentityEndpointKnowsNoShopForAnUnknownOrAbsentKey)
{
    for (auto const* key : { "null", R"("nobody")" }) {
        auto const body = std::string(R"({"userKey":null,"adId":null,"packageName":null,"apiKey":)") + key + "}";
        EXPECT_EQ(post("api", "/", body).status, 404U) << key;
    }
    EXPECT_EQ(post("api", "/", R"({"apiKey":"demo-key"})").status, 400U);
}

TEST_F(ServiceTest, AnUnknownHostIsNotFound)
{
    auto const question = R"({"profile":"prd","api_key":"demo-key"})";
    for (auto const* host : { "nobody.shop", "nobody.dev" })
        EXPECT_EQ(get(host, "/v1/").status, 404U) << host;

    // The certificate does not have these names either, so that a client must accept it anyway to get the answer.
    for (auto const* host : { "nowhere", "shop", "www.hanok.shop" }) {
        auto const message = gtk::adopt(soup_message_new("GET", at(host, "/v1/").c_str()));
        auto const accept = +[](SoupMessage*) -> gboolean { return TRUE; };
        g_signal_connect_swapped(message.get(), "accept-certificate", G_CALLBACK(accept), message.get());
        auto const session = gtk::adopt(soup_session_new());
        gtk::GBytesPointer const body(soup_session_send_and_read(session.get(), message.get(), nullptr, nullptr));
        ASSERT_TRUE(body) << host;
        EXPECT_EQ(soup_message_get_status(message.get()), 404U) << host;
    }
    EXPECT_EQ(post("lookup", "/", question).status, 200U);
}

TEST_F(ServiceTest, AClientThatDoesNotTrustTheAuthorityIsNotServed)
{
    examples::ServiceClient stranger;
    auto const answer = stranger.get(at("collector", "/events.json"));
    EXPECT_EQ(answer.status, 0U);
    EXPECT_FALSE(answer.error.empty());
}

TEST_F(ServiceTest, AnEarlierClientTrustsTheServiceAfterARestart)
{
    auto const authority = m_directory.read("data/ca.pem");
    restart();
    EXPECT_EQ(m_directory.read("data/ca.pem"), authority);
    EXPECT_EQ(lookUp("demo-key").status, 200U);
}

TEST_F(ServiceTest, ABrokenAuthorityFileIsReplacedAtTheNextStart)
{
    auto const authority = m_directory.read("data/ca.pem");
    ASSERT_EQ(m_directory.write("data/ca.pem", "broken"), m_service->authority());
    restart();
    EXPECT_EQ(m_directory.read("data/ca.pem"), authority);
    EXPECT_EQ(lookUp("demo-key").status, 200U);
}

TEST(ServiceCertificatesTest, OnlyTheOwnerReadsTheServersKeyAndTheAuthoritysKeyIsNotKept)
{
    using std::filesystem::perms;
    std::filesystem::path const certificates(ZELVORA_SERVICE_CERTIFICATES);
    EXPECT_EQ(status(certificates / "server-key.pem").permissions(), perms::owner_read | perms::owner_write);
    std::set<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(certificates))
        names.insert(entry.path().filename());
    EXPECT_EQ(names, (std::set<std::string> { "ca.pem", "server-key.pem", "server.pem" }));
}

TEST_F(ServiceTest, StoppingClosesThePortAndKeepsWhatWasCollectedReadable)
{
    collect(R"({"profile":"prd","data":[{"eventId":"kept"}]})");
    auto const address = at("lookup", "/");
    m_service->stop();
    EXPECT_EQ(m_client.get(address).status, 0U);
    ASSERT_EQ(m_service->collected().batches().size(), 1U);
    m_service->stop();
}

TEST_F(ServiceTest, StoppingDoesNotWaitForALateAnswer)
{
    setFault(R"({"target":"lookup","delay":600000})");
    auto late = std::async(std::launch::async, [address = at("lookup", "/"), authority = m_service->authority()] {
        return examples::ServiceClient(authority).post(address, R"({"profile":"prd","api_key":"demo-key"})");
    });
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (m_service->faults().requests(examples::Target::Lookup) == 0 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();

    m_service->stop();
    ASSERT_EQ(late.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    auto const answer = late.get();
    EXPECT_EQ(answer.status, 0U);
    EXPECT_FALSE(answer.error.empty());
}

TEST(ServiceStartTest, ADirectoryThatCannotBeMadeIsReported)
{
    TemporaryDirectory const directory;
    auto const file = directory.write("file", "in the way");
    auto const service = examples::Service::start({ .dataDirectory = file / "data" });
    ASSERT_FALSE(service);
    EXPECT_TRUE(service.error().starts_with("cannot make ")) << service.error();
}

TEST(ServiceStartTest, APortInUseIsReported)
{
    TemporaryDirectory const directory;
    auto const first = examples::Service::start({ .dataDirectory = directory.path() / "one" });
    ASSERT_TRUE(first) << first.error();
    auto const second =
        examples::Service::start({ .dataDirectory = directory.path() / "two", .port = (*first)->port() });
    ASSERT_FALSE(second);
    EXPECT_TRUE(second.error().starts_with("cannot listen: ")) << second.error();
}

}
