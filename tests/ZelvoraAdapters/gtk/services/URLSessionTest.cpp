#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"

#include "tests/ZelvoraAdapters/gtk/services/Loading.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/RawServer.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

using Afterwards = RawServer::Afterwards;

std::string const ioErrors = "g-io-error-quark";

platform::URLRequest post(platform::URL const& url)
{
    return {
        .url = url,
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" } },
        .httpBody = { "{}" },
    };
}

// From a server that sends these bytes and closes the connection.
void expectErrorFrom(std::string const& bytes)
{
    RawServer const server(bytes, Afterwards::Close);
    auto const result = Loading().load({ .url = server.url() });
    ASSERT_FALSE(result) << bytes;
    EXPECT_NE(result.error().domain, "test");
    EXPECT_NE(result.error().localizedDescription, "");
}

}

TEST(GtkURLSessionTest, CompletionsAreCalledOnOneThreadThatIsNotTheCallers)
{
    LoopbackServer server;
    auto const url = server.serve("/", [](SoupServerMessage* message) { answer(message, 200, ""); });
    Loading loading;
    ASSERT_TRUE(loading.load({ .url = url }));
    auto const thread = loading.thread();
    EXPECT_NE(thread, std::this_thread::get_id());
    EXPECT_NE(thread, std::thread::id());
    EXPECT_FALSE(loading.load({ .url = urlOfNobody() }));
    EXPECT_EQ(loading.thread(), thread);
}

TEST(GtkURLSessionTest, AddsNoHeaderThatIdentifiesTheApp)
{
    LoopbackServer server;
    auto const url = server.serve("/", [](SoupServerMessage* message) {
        soup_message_headers_append(soup_server_message_get_response_headers(message), "Set-Cookie", "a=b; Path=/");
        answer(message, 200, "");
    });
    Loading loading;
    ASSERT_TRUE(loading.load(post(url)));
    ASSERT_TRUE(loading.load(post(url)));
    auto headers = server.received().back().headers;
    EXPECT_EQ(headers.erase("content-type"), 1U);
    for (auto const* const needed : { "host", "content-length", "accept-encoding", "connection" })
        headers.erase(needed);
    EXPECT_TRUE(headers.empty()) << headers.begin()->first;
}

TEST(GtkURLSessionTest, AURLThatIsNotHTTPIsAnError)
{
    Loading loading;
    for (auto const* const address :
        { "mailto:someone@example.com", "file:///etc/passwd", "relative/path", "https:///" }) {
        auto const url = platform::URL::parse(address);
        ASSERT_TRUE(url) << address;
        auto const result = loading.load({ .url = *url });
        ASSERT_FALSE(result) << address;
        EXPECT_EQ(result.error().domain, ioErrors);
        EXPECT_EQ(result.error().localizedDescription, "Unsupported URL: " + url->absoluteString());
    }
}

TEST(GtkURLSessionTest, AnUnknownHostIsAnError)
{
    auto const result = Loading().load({ .url = *platform::URL::parse("https://nobody.invalid/") });
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().localizedDescription, "");
}

TEST(GtkURLSessionTest, AnAnswerThatIsNotHTTPIsAnError)
{
    for (auto const* const bytes : { "", "\r\n", "SSH-2.0-Server\r\n\r\n", "HTTP/1.1 two hundred\r\n\r\n" })
        expectErrorFrom(bytes);
}

TEST(GtkURLSessionTest, ABodyThatEndsEarlyIsAnErrorHoweverItIsFramed)
{
    for (auto const* const bytes : {
             "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n123456789",
             "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n12345\r\n5",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n12",
         })
        expectErrorFrom(bytes);
}

TEST(GtkURLSessionTest, ABodyThatStallsTimesOut)
{
    RawServer const server("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345", Afterwards::KeepOpen);
    auto const result = Loading().load({ .url = server.url(), .timeoutInterval = 0.2 });
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (platform::Error { ioErrors, G_IO_ERROR_TIMED_OUT, "The request timed out." }));
}

TEST(GtkURLSessionTest, AServerThatStopsReadingTimesOut)
{
    RawServer const server("", Afterwards::KeepOpen);
    auto request = post(server.url());
    request.httpBody.bytes.assign(50'000'000, 'x');
    request.timeoutInterval = 0.5;
    auto const result = Loading().load(request);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, G_IO_ERROR_TIMED_OUT);
}

TEST(GtkURLSessionTest, ASlowBodyThatKeepsMovingDoesNotTimeOut)
{
    LoopbackServer server;
    constexpr int pieceCount = 8;
    auto const url = server.serve("/", [&server](SoupServerMessage* message) {
        soup_server_message_set_status(message, 200, nullptr);
        auto* const headers = soup_server_message_get_response_headers(message);
        soup_message_headers_set_encoding(headers, SOUP_ENCODING_CHUNKED);
        soup_server_message_pause(message);
        // All pieces together take longer than the timeout; the gaps between them are much shorter.
        for (int piece = 1; piece <= pieceCount; ++piece) {
            server.queue().asyncAfter(0.2 * piece, [message, isLast = piece == pieceCount] {
                auto* const body = soup_server_message_get_response_body(message);
                soup_message_body_append(body, SOUP_MEMORY_STATIC, "piece ", 6);
                if (isLast)
                    soup_message_body_complete(body);
                soup_server_message_unpause(message);
            });
        }
    });
    auto const result = Loading().load({ .url = url, .timeoutInterval = 1 });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes.size(), 6U * pieceCount);
}

TEST(GtkURLSessionTest, AHugeBodyIsReadCompletely)
{
    constexpr std::size_t size = 100'000'000;
    LoopbackServer server;
    auto const url =
        server.serve("/", [](SoupServerMessage* message) { answer(message, 200, std::string(size, 'x')); });
    auto const result = Loading().load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes.size(), size);
    EXPECT_EQ(result->data.bytes.find_first_not_of('x'), std::string::npos);
}

TEST(GtkURLSessionTest, AHugeRequestBodyArrivesCompletely)
{
    constexpr std::size_t size = 10'000'000;
    LoopbackServer server;
    auto request = post(server.serve("/", [](SoupServerMessage* message) { answer(message, 200, ""); }));
    request.httpBody.bytes.assign(size, 'x');
    auto const result = Loading().load(request);
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(server.received().back().body, request.httpBody.bytes);
}

TEST(GtkURLSessionTest, APostWithoutABodyHasAContentLengthOfZero)
{
    LoopbackServer server;
    auto request = post(server.serve("/", [](SoupServerMessage* message) { answer(message, 200, ""); }));
    request.httpBody = {};
    Loading loading;
    ASSERT_TRUE(loading.load(request));
    EXPECT_EQ(server.received().back().headers.at("content-length"), "0");
}

TEST(GtkURLSessionTest, ACompressedBodyIsDecompressed)
{
    // "hello", compressed by gzip.
    constexpr unsigned char packed[] = { 0x1f, 0x8b, 0x08, 0, 0, 0, 0, 0, 0, 0x03, 0xcb, 0x48, 0xcd, 0xc9, 0xc9, 0x07,
        0, 0x86, 0xa6, 0x10, 0x36, 0x05, 0, 0, 0 };
    LoopbackServer server;
    auto const url = server.serve("/", [&](SoupServerMessage* message) {
        auto* const headers = soup_server_message_get_response_headers(message);
        soup_message_headers_replace(headers, "Content-Encoding", "gzip");
        answer(message, 200, std::string(std::begin(packed), std::end(packed)));
    });
    auto const result = Loading().load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, "hello");
}

TEST(GtkURLSessionTest, DestroyingTheSessionCancelsADownload)
{
    RawServer const server("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345", Afterwards::KeepOpen);
    std::promise<Loading::Result> promise;
    {
        gtk::URLSession session;
        session.dataTask(
            { .url = server.url() }, [&](Loading::Result result) { promise.set_value(std::move(result)); });
    }
    auto result = promise.get_future();
    ASSERT_EQ(result.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    EXPECT_EQ(result.get(),
        Loading::Result(
            std::unexpected(platform::Error { ioErrors, G_IO_ERROR_CANCELLED, "The request was cancelled." })));
}

TEST(GtkURLSessionTest, MayBeDestroyedWithoutARequest)
{
    for (int i = 0; i < 50; ++i)
        gtk::URLSession const session;
}

}
