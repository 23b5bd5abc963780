#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"

#include "ZelvoraAdapters/gtk/Foundation/ResponseBody.h"
#include "tests/ZelvoraAdapters/gtk/Foundation/Loading.h"
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

std::string gzip(std::string const& text)
{
    auto const compressor = gtk::adopt(g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, -1));
    std::string packed(text.size() + 100, '\0');
    gsize read = 0;
    gsize written = 0;
    EXPECT_EQ(g_converter_convert(G_CONVERTER(compressor.get()), text.data(), text.size(), packed.data(), packed.size(),
                  G_CONVERTER_INPUT_AT_END, &read, &written, nullptr),
        G_CONVERTER_FINISHED);
    packed.resize(written);
    return packed;
}

platform::URL serveGzip(LoopbackServer& server, std::string const& path, std::string const& bytes)
{
    return server.serve(path, [bytes](SoupServerMessage* message) {
        auto* const headers = soup_server_message_get_response_headers(message);
        soup_message_headers_replace(headers, "Content-Encoding", "gzip");
        answer(message, 200, bytes);
    });
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
             "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}",
             "HTTP/1.1 200 OK\r\nContent-Length: 100\r\nContent-Encoding: gzip\r\n\r\n{}",
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

TEST(GtkURLSessionTest, ALargeBodyIsReadCompletely)
{
    constexpr std::size_t size = gtk::ResponseBody::limit;
    LoopbackServer server;
    auto const url =
        server.serve("/", [](SoupServerMessage* message) { answer(message, 200, std::string(size, 'x')); });
    auto const result = Loading().load({ .url = url });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes.size(), size);
    EXPECT_EQ(result->data.bytes.find_first_not_of('x'), std::string::npos);
}

TEST(GtkURLSessionTest, ABodyBeyondTheLimitIsAnErrorBeforeItsEnd)
{
    // A gigabyte, of which the server sends the beginning.
    RawServer const server(
        "HTTP/1.1 200 OK\r\nContent-Length: 1073741824\r\n\r\n" + std::string(gtk::ResponseBody::limit + 1, 'x'),
        Afterwards::KeepOpen);
    auto const result = Loading().load({ .url = server.url() });
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (platform::Error { ioErrors, G_IO_ERROR_MESSAGE_TOO_LARGE, "The answer is too large." }));
}

TEST(GtkURLSessionTest, TheLimitHoldsForWhatIsDecompressed)
{
    LoopbackServer server;
    auto const small = serveGzip(server, "/small", gzip(std::string(gtk::ResponseBody::limit, 'x')));
    auto const large = serveGzip(server, "/large", gzip(std::string(gtk::ResponseBody::limit + 1, 'x')));
    Loading loading;
    auto const result = loading.load({ .url = small });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes.size(), gtk::ResponseBody::limit);
    auto const failed = loading.load({ .url = large });
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, G_IO_ERROR_MESSAGE_TOO_LARGE);
}

TEST(GtkURLSessionTest, ADamagedCompressedBodyIsAnError)
{
    auto const whole = gzip(R"({"data":{"shopId":"shop"}})");
    auto flipped = whole;
    flipped[14] ^= 4;
    auto otherSum = whole;
    otherSum[whole.size() - 6] ^= 1;
    LoopbackServer server;
    Loading loading;
    int number = 0;
    for (auto const& bytes : { whole.substr(0, whole.size() - 1), whole.substr(0, whole.size() - 10),
             whole.substr(0, 5), flipped, otherSum, whole + "more", std::string("plain") }) {
        auto const url = serveGzip(server, "/" + std::to_string(++number), bytes);
        EXPECT_FALSE(loading.load({ .url = url })) << number;
    }
    // Several compressed files in a row are one.
    auto const result = loading.load({ .url = serveGzip(server, "/whole", whole + whole) });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes.size(), 52U);
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
    LoopbackServer server;
    auto const result = Loading().load({ .url = serveGzip(server, "/", gzip("hello")) });
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
