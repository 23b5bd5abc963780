#include "tests/ZelvoraAdapters/gtk/Foundation/Loading.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/TestAuthority.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <atomic>

namespace zelvora::tests {

namespace {

class HTTP2Test : public testing::Test {
protected:
    platform::URLRequest post(std::string body, LoopbackServer::Handler handler)
    {
        auto const noticing = [this, handler = std::move(handler)](SoupServerMessage* message) {
            m_version = soup_server_message_get_http_version(message);
            handler(message);
        };
        return { .url = m_server.serve("/", noticing), .httpMethod = "POST", .httpBody = { std::move(body) } };
    }
    void expectTimeout(Loading::Result const& result)
    {
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, G_IO_ERROR_TIMED_OUT);
        EXPECT_EQ(result.error().localizedDescription, "The request timed out.");
    }

    TestAuthority m_authority;
    TemporaryDirectory m_directory;
    LoopbackServer m_server { m_authority.identityOf("localhost") };
    std::atomic<SoupHTTPVersion> m_version = SOUP_HTTP_1_0;
    Loading m_loading { { .additionalAuthorities = m_directory.write("authority.pem", m_authority.certificatePEM()) } };
};

}

TEST_F(HTTP2Test, IsUsedIfTheServerSupportsIt)
{
    auto const result = m_loading.load(
        post("question", [](SoupServerMessage* message) { answer(message, 201, std::string(1'000'000, 'x')); }));
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(m_version, SOUP_HTTP_2_0);
    EXPECT_EQ(result->response.statusCode, 201);
    EXPECT_EQ(result->data.bytes, std::string(1'000'000, 'x'));
    EXPECT_EQ(m_server.received().back().body, "question");
}

TEST_F(HTTP2Test, ASilentServerTimesOut)
{
    auto request = post("question", [](SoupServerMessage* message) { soup_server_message_pause(message); });
    request.timeoutInterval = 0.5;
    expectTimeout(m_loading.load(request));
}

TEST_F(HTTP2Test, AServerThatStopsReadingTimesOut)
{
    auto request = post(std::string(1'000'000, 'x'), [](SoupServerMessage* message) { answer(message, 200, ""); });
    request.timeoutInterval = 0.5;
    expectTimeout(m_loading.load(request));
}

TEST_F(HTTP2Test, AStalledBodyTimesOut)
{
    auto request = post("question", [](SoupServerMessage* message) {
        auto* const headers = soup_server_message_get_response_headers(message);
        soup_message_headers_set_content_length(headers, 100);
        soup_server_message_set_status(message, 200, nullptr);
        soup_message_body_append(soup_server_message_get_response_body(message), SOUP_MEMORY_STATIC, "part", 4);
    });
    request.timeoutInterval = 0.5;
    EXPECT_FALSE(m_loading.load(request));
}

TEST_F(HTTP2Test, AConnectionThatIsCutIsAnError)
{
    auto const result = m_loading.load(post("question", [](SoupServerMessage* message) {
        g_socket_close(soup_server_message_get_socket(message), nullptr);
        soup_server_message_pause(message);
    }));
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().domain, "test");
    EXPECT_NE(result.error().code, G_IO_ERROR_TIMED_OUT);
}

TEST_F(HTTP2Test, ManyRequestsRunAtOnce)
{
    auto const request = post("question", [](SoupServerMessage* message) { answer(message, 200, "answer"); });
    std::vector<std::future<bool>> results;
    for (int i = 0; i < 50; ++i) {
        auto promise = std::make_shared<std::promise<bool>>();
        results.push_back(promise->get_future());
        m_loading.session().dataTask(request,
            [promise](Loading::Result const& result) { promise->set_value(result && result->data.bytes == "answer"); });
    }
    for (auto& result : results) {
        ASSERT_EQ(result.wait_for(std::chrono::minutes(1)), std::future_status::ready);
        EXPECT_TRUE(result.get());
    }
}

}
