#include "examples/service/HttpServer.h"

#include "examples/service/Delivery.h"
#include "examples/service/Handles.h"

#include <libsoup/soup.h>

#include <future>
#include <thread>
#include <utility>

namespace zelvora::examples {

namespace {

using Port = std::expected<std::uint16_t, std::string>;

struct ContextUnref {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

struct LoopUnref {
    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
};

/// Absent when the path holds what no path of ours may: an encoded slash or NUL, or a bad escape.
std::optional<std::string> decodedPath(char const* path)
{
    GlibText const decoded(g_uri_unescape_string(path, "/"));
    if (!decoded)
        return std::nullopt;
    return decoded.get();
}

std::string lowerCase(char const* text)
{
    if (!text)
        return {};
    return GlibText(g_ascii_strdown(text, -1)).get();
}

std::optional<Request> readRequest(SoupServerMessage* message)
{
    auto* uri = soup_server_message_get_uri(message);
    auto path = decodedPath(g_uri_get_path(uri));
    if (!path)
        return std::nullopt;

    auto* headers = soup_server_message_get_request_headers(message);
    auto const* contentType = soup_message_headers_get_one(headers, "Content-Type");
    auto const* query = g_uri_get_query(uri);
    auto* body = soup_message_body_flatten(soup_server_message_get_request_body(message));
    gsize size = 0;
    auto const* bytes = static_cast<char const*>(g_bytes_get_data(body, &size));
    Request request { .method = soup_server_message_get_method(message),
        .host = lowerCase(g_uri_get_host(uri)),
        .path = std::move(*path),
        .query = query ? query : "",
        .contentType = contentType ? contentType : "",
        .body = size > 0 ? std::string(bytes, size) : std::string() };
    g_bytes_unref(body);
    return request;
}

void handle(SoupServer*, SoupServerMessage* message, char const*, GHashTable*, gpointer router)
{
    auto const request = readRequest(message);
    deliver(message,
        request ? static_cast<Router*>(router)->route(*request)
                : Outcome { .reply = errorReply(400, "the path cannot be read") });
}

Port listen(SoupServer* server, std::uint16_t port)
{
    GError* raw = nullptr;
    auto const listening = soup_server_listen_local(server, port, SOUP_SERVER_LISTEN_HTTPS, &raw);
    if (!listening)
        return std::unexpected(std::string(ErrorPointer(raw)->message));
    auto* uris = soup_server_get_uris(server);
    auto const chosen = g_uri_get_port(static_cast<GUri*>(uris->data));
    g_slist_free_full(uris, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
    return static_cast<std::uint16_t>(chosen);
}

} // namespace

class HttpServer::Thread {
public:
    Thread(ObjectPointer<GTlsCertificate> certificate, std::unique_ptr<Router> router)
        : m_certificate(std::move(certificate))
        , m_router(std::move(router))
        , m_context(g_main_context_new())
        , m_loop(g_main_loop_new(m_context.get(), FALSE))
    {
    }

    Thread(Thread const&) = delete;
    Thread& operator=(Thread const&) = delete;

    ~Thread()
    {
        if (m_thread.joinable())
            stop();
    }

    Port start(std::uint16_t port)
    {
        std::promise<Port> promise;
        auto future = promise.get_future();
        m_thread = std::thread([this, port, &promise] { run(port, promise); });
        auto outcome = future.get();
        m_port = outcome.value_or(0);
        return outcome;
    }

    std::uint16_t port() const { return m_port; }

private:
    void run(std::uint16_t port, std::promise<Port>& promise)
    {
        g_main_context_push_thread_default(m_context.get());
        ObjectPointer<SoupServer> const server(SOUP_SERVER(
            g_object_new(SOUP_TYPE_SERVER, "tls-certificate", m_certificate.get(), "raw-paths", TRUE, nullptr)));
        soup_server_add_handler(server.get(), nullptr, handle, m_router.get(), nullptr);
        auto const listening = listen(server.get(), port);
        auto const runs = listening.has_value();
        promise.set_value(listening);
        if (runs)
            g_main_loop_run(m_loop.get());
        soup_server_disconnect(server.get());
        g_main_context_pop_thread_default(m_context.get());
    }

    void stop()
    {
        // A quit that came before the loop runs would be lost, so the loop itself is told to do it.
        auto* source = g_idle_source_new();
        g_source_set_priority(source, G_PRIORITY_HIGH);
        g_source_set_callback(
            source,
            [](gpointer loop) -> gboolean {
                g_main_loop_quit(static_cast<GMainLoop*>(loop));
                return G_SOURCE_REMOVE;
            },
            m_loop.get(), nullptr);
        g_source_attach(source, m_context.get());
        g_source_unref(source);
        m_thread.join();
    }

    ObjectPointer<GTlsCertificate> m_certificate;
    std::unique_ptr<Router> m_router;
    std::unique_ptr<GMainContext, ContextUnref> m_context;
    std::unique_ptr<GMainLoop, LoopUnref> m_loop;
    std::thread m_thread;
    std::uint16_t m_port = 0;
};

std::expected<std::unique_ptr<HttpServer>, std::string> HttpServer::start(
    Certificates const& certificates, std::uint16_t port, std::unique_ptr<Router> router)
{
    GError* raw = nullptr;
    ObjectPointer<GTlsCertificate> certificate(
        g_tls_certificate_new_from_files(certificates.server.c_str(), certificates.serverKey.c_str(), &raw));
    if (!certificate)
        return std::unexpected(std::string(ErrorPointer(raw)->message));

    auto thread = std::make_unique<Thread>(std::move(certificate), std::move(router));
    if (auto const listening = thread->start(port); !listening)
        return std::unexpected(listening.error());
    return std::unique_ptr<HttpServer>(new HttpServer(std::move(thread)));
}

HttpServer::HttpServer(std::unique_ptr<Thread> thread) : m_thread(std::move(thread)) { }

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const
{
    return m_thread->port();
}

} // namespace zelvora::examples
