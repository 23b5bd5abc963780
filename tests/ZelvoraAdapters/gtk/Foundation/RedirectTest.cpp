#include "tests/ZelvoraAdapters/gtk/Foundation/Loading.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

LoopbackServer::Handler redirecting(int status, std::string location)
{
    return [status, location = std::move(location)](SoupServerMessage* message) {
        auto* const headers = soup_server_message_get_response_headers(message);
        soup_message_headers_replace(headers, "Location", location.c_str());
        answer(message, status, "moved");
    };
}

void arrived(SoupServerMessage* message)
{
    answer(message, 200, "arrived");
}

platform::URLRequest request(char const* method, platform::URL const& url)
{
    return {
        .url = url,
        .httpMethod = method,
        .httpHeaderFields = { { "Accept", "application/json" }, { "Content-Type", "application/json" } },
        .httpBody = { "{\"a\":1}" },
    };
}

struct Case {
    int status;
    char const* method;
    char const* methodThere;
};

}

class RedirectMethodTest : public testing::TestWithParam<Case> { };

TEST_P(RedirectMethodTest, IsTheOneThatBrowsersUse)
{
    auto const [status, method, methodThere] = GetParam();
    LoopbackServer server;
    server.serve("/there", arrived);
    auto const url = server.serve("/here", redirecting(status, "/there"));
    auto const result = Loading().load(request(method, url));
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->response.statusCode, 200);
    auto const there = server.received().back();
    EXPECT_EQ(there.method, methodThere);
    EXPECT_EQ(there.headers.at("accept"), "application/json");
    bool const isRepeated = std::string(method) == methodThere;
    EXPECT_EQ(there.headers.contains("content-type"), isRepeated);
    EXPECT_EQ(there.body, isRepeated ? "{\"a\":1}" : "");
}

INSTANTIATE_TEST_SUITE_P(Redirects, RedirectMethodTest,
    testing::Values(Case { 301, "POST", "GET" }, Case { 302, "POST", "GET" }, Case { 303, "POST", "GET" },
        Case { 307, "POST", "POST" }, Case { 308, "POST", "POST" }, Case { 301, "PUT", "PUT" },
        Case { 302, "PUT", "PUT" }, Case { 303, "PUT", "GET" }));

TEST(RedirectTest, ContinuesAtAnotherServer)
{
    LoopbackServer other;
    LoopbackServer server;
    auto const there = other.serve("/there", arrived);
    auto const url = server.serve("/here", redirecting(302, there.absoluteString()));
    auto const result = Loading().load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, "arrived");
    EXPECT_EQ(other.received().size(), 1U);
}

TEST(RedirectTest, WithoutALocationTheResponseIsTheAnswer)
{
    LoopbackServer server;
    auto const url = server.serve("/", [](SoupServerMessage* message) { answer(message, 302, "nowhere"); });
    auto const result = Loading().load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->response.statusCode, 302);
    EXPECT_EQ(result->data.bytes, "nowhere");
}

TEST(RedirectTest, OtherStatusesWithALocationAreNotRedirects)
{
    for (int const status : { 201, 300, 304, 404 }) {
        LoopbackServer server;
        auto const url = server.serve("/", redirecting(status, "/elsewhere"));
        auto const result = Loading().load({ .url = url });
        ASSERT_TRUE(result) << result.error().localizedDescription;
        EXPECT_EQ(result->response.statusCode, status);
        EXPECT_EQ(server.received().size(), 1U);
    }
}

TEST(RedirectTest, InACircleIsAnError)
{
    LoopbackServer server;
    auto const url = server.serve("/", redirecting(302, "/"));
    auto const result = Loading().load({ .url = url });
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().localizedDescription, "Too many redirects.");
    EXPECT_EQ(server.received().size(), 17U);
}

TEST(RedirectTest, ToAnotherProtocolIsAnError)
{
    LoopbackServer server;
    auto const url = server.serve("/", redirecting(302, "file:///etc/passwd"));
    auto const result = Loading().load({ .url = url });
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().localizedDescription, "Unsupported URL: file:///etc/passwd");
}

TEST(RedirectTest, FromASecureToAnInsecureAddressIsAnError)
{
    TestAuthority const authority;
    TemporaryDirectory const directory;
    LoopbackServer insecure;
    LoopbackServer secure(authority.identityOf("localhost"));
    auto const there = insecure.serve("/", arrived);
    auto const url = secure.serve("/", redirecting(307, there.absoluteString()));
    Loading loading({ .additionalAuthorities = directory.write("authority.pem", authority.certificatePEM()) });
    auto const result = loading.load(request("POST", url));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().localizedDescription, "The server redirected a secure request to an insecure address.");
    EXPECT_TRUE(insecure.received().empty());
}

}
