#include "tests/examples/ServiceFixture.h"

#include <array>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace zelvora::examples {

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

TEST_F(ServiceTest, ALookupWithoutExactlyTwoTextsIsRefused)
{
    for (auto const* body : { "", "nonsense", "[]", "{}", R"({"profile":"prd"})", R"({"profile":"prd","api_key":1})",
             R"({"profile":"prd","api_key":null})", R"({"profile":"prd","api_key":"demo-key","more":"text"})",
             R"({"profile":"test","api_key":"demo-key"})" }) {
        EXPECT_EQ(client.post(at("lookup", "/"), body).status, 400U) << body;
    }
}

TEST_F(ServiceTest, ALookupMustBePostedAsJsonToItsAddress)
{
    auto const question = R"({"profile":"dev","api_key":"demo-key"})";
    EXPECT_EQ(client.post(at("lookup", "/"), question, "application/json; charset=utf-8").status, 200U);
    EXPECT_EQ(client.post(at("lookup", "/"), question, "text/plain").status, 415U);
    EXPECT_EQ(client.post(at("lookup", "/elsewhere"), question).status, 404U);
    EXPECT_EQ(client.get(at("lookup", "/")).status, 405U);
}

TEST_F(ServiceTest, TheIdentityEndpointAnswersWithTheShopOfTheKey)
{
    auto const answer = client.post(at("api", "/"),
        R"({"userKey":"user","apiKey":"demo-key","adId":null,"packageName":"kr.example"})", "application/json; utf-8");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.body, R"({"shop_id":"hanok"})");
}

TEST_F(ServiceTest, TheIdentityEndpointKnowsNoShopForAnUnknownOrAbsentKey)
{
    for (auto const* key : { "null", R"("nobody")" }) {
        auto const body = std::string(R"({"userKey":null,"adId":null,"packageName":null,"apiKey":)") + key + "}";
        EXPECT_EQ(client.post(at("api", "/"), body).status, 404U) << key;
    }
    EXPECT_EQ(client.post(at("api", "/"), R"({"apiKey":"demo-key"})").status, 400U);
}

TEST_F(ServiceTest, AHostThatIsNotThereIsNotFound)
{
    auto const question = R"({"profile":"prd","api_key":"demo-key"})";
    for (auto const* host : { "nobody.shop", "nobody.dev" })
        EXPECT_EQ(client.get(at(host, "/v1/")).status, 404U) << host;

    // These names are not in the certificate either, so a client has to look past that to hear the answer.
    for (auto const* host : { "nowhere", "shop", "www.hanok.shop" }) {
        ObjectPointer<SoupMessage> const message(soup_message_new("GET", at(host, "/v1/").c_str()));
        auto const accept =
            +[](SoupMessage*, GTlsCertificate*, GTlsCertificateFlags, gpointer) -> gboolean { return TRUE; };
        g_signal_connect_data(
            message.get(), "accept-certificate", reinterpret_cast<GCallback>(accept), nullptr, nullptr, {});
        ObjectPointer<SoupSession> const session(soup_session_new());
        auto* body = soup_session_send_and_read(session.get(), message.get(), nullptr, nullptr);
        ASSERT_NE(body, nullptr) << host;
        g_bytes_unref(body);
        EXPECT_EQ(soup_message_get_status(message.get()), 404U) << host;
    }
    EXPECT_EQ(client.post(at("lookup", "/"), question).status, 200U);
}

TEST_F(ServiceTest, AClientThatDoesNotTrustTheAuthorityIsNotServed)
{
    ServiceClient stranger;
    auto const answer = stranger.get(at("collector", "/events.json"));
    EXPECT_EQ(answer.status, 0U);
    EXPECT_FALSE(answer.error.empty());
}

TEST_F(ServiceTest, AnEarlierClientTrustsTheServiceAfterARestart)
{
    auto const authority = contentsOf(service->authority());
    restart();
    EXPECT_EQ(contentsOf(service->authority()), authority);
    EXPECT_EQ(lookUp("demo-key").status, 200U);
}

TEST_F(ServiceTest, StoppingClosesThePortAndKeepsWhatWasCollectedReadable)
{
    collect(R"({"profile":"prd","data":[{"eventId":"kept"}]})");
    auto const address = at("lookup", "/");
    service->stop();
    EXPECT_EQ(client.get(address).status, 0U);
    ASSERT_EQ(service->collected().batches().size(), 1U);
    service->stop();
}

TEST_F(ServiceTest, StoppingDoesNotWaitForALateAnswer)
{
    setFault(R"({"target":"lookup","delay":600000})");
    auto late = std::async(std::launch::async, [address = at("lookup", "/"), authority = service->authority()] {
        return ServiceClient(authority).post(address, R"({"profile":"prd","api_key":"demo-key"})");
    });
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (service->faults().requests(Target::Lookup) == 0 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();

    service->stop();
    ASSERT_EQ(late.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    auto const answer = late.get();
    EXPECT_EQ(answer.status, 0U);
    EXPECT_FALSE(answer.error.empty());
}

TEST(ServiceStartTest, ADirectoryThatCannotBeMadeIsReported)
{
    TemporaryDirectory const directory;
    write(directory.path() / "file", "in the way");
    auto const service = Service::start({ .dataDirectory = directory.path() / "file" / "data" });
    ASSERT_FALSE(service);
    EXPECT_TRUE(service.error().starts_with("cannot make ")) << service.error();
}

TEST(ServiceStartTest, APortInUseIsReported)
{
    TemporaryDirectory const directory;
    auto const first = Service::start({ .dataDirectory = directory.path() / "one" });
    ASSERT_TRUE(first) << first.error();
    auto const second = Service::start({ .dataDirectory = directory.path() / "two", .port = (*first)->port() });
    ASSERT_FALSE(second);
    EXPECT_TRUE(second.error().starts_with("cannot listen: ")) << second.error();
}

} // namespace zelvora::examples
