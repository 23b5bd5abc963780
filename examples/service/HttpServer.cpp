#include "examples/service/HttpServer.h"

#include "ZelvoraAdapters/gtk/GLib/portOf.h"

#include <utility>

namespace zelvora::examples {

namespace {

std::string textOf(char const* text)
{
    return text ? text : "";
}

// Absent if the path has an encoded slash or NUL, or an invalid escape: no path of ours has.
std::optional<Request> readRequest(SoupServerMessage* message)
{
    auto* const uri = soup_server_message_get_uri(message);
    gtk::GTextPointer const path(g_uri_unescape_string(g_uri_get_path(uri), "/"));
    if (!path)
        return std::nullopt;
    gtk::GTextPointer const host(g_ascii_strdown(textOf(g_uri_get_host(uri)).c_str(), -1));
    auto* const headers = soup_server_message_get_request_headers(message);
    gtk::GBytesPointer const body(soup_message_body_flatten(soup_server_message_get_request_body(message)));
    gsize size = 0;
    auto const* const bytes = static_cast<char const*>(g_bytes_get_data(body.get(), &size));
    return Request { .method = soup_server_message_get_method(message),
        .host = host.get(),
        .path = path.get(),
        .query = textOf(g_uri_get_query(uri)),
        .contentType = textOf(soup_message_headers_get_one(headers, "Content-Type")),
        .body = size > 0 ? std::string(bytes, size) : std::string() };
}

}

std::expected<std::unique_ptr<HttpServer>, std::string> HttpServer::start(
    std::filesystem::path const& certificates, std::uint16_t port, Handler handler)
{
    gtk::GErrorPlace error;
    auto const certificate = gtk::adopt(g_tls_certificate_new_from_files(
        (certificates / "server.pem").c_str(), (certificates / "server-key.pem").c_str(), error.out()));
    if (!certificate)
        return std::unexpected(error->message);
    std::unique_ptr<HttpServer> server(new HttpServer(certificate, std::move(handler)));
    if (auto const listening = server->listen(port); !listening)
        return std::unexpected(listening.error());
    server->m_thread = std::thread([&server = *server] { server.run(); });
    return server;
}

HttpServer::HttpServer(gtk::GObjectPointer<GTlsCertificate> const& certificate, Handler handler)
    : m_handler(std::move(handler))
    , m_context(g_main_context_new())
    , m_server(
          SOUP_SERVER(g_object_new(SOUP_TYPE_SERVER, "tls-certificate", certificate.get(), "raw-paths", TRUE, nullptr)))
{
    soup_server_add_handler(m_server.get(), nullptr, &HttpServer::handle, this, nullptr);
}

HttpServer::~HttpServer()
{
    m_isStopping = true;
    g_main_context_wakeup(m_context.get());
    if (m_thread.joinable())
        m_thread.join();
}

std::expected<void, std::string> HttpServer::listen(std::uint16_t port)
{
    // The server serves in the context that is the thread's default now.
    g_main_context_push_thread_default(m_context.get());
    gtk::GErrorPlace error;
    soup_server_listen_local(m_server.get(), port, SOUP_SERVER_LISTEN_HTTPS, error.out());
    g_main_context_pop_thread_default(m_context.get());
    if (error)
        return std::unexpected(error->message);
    m_port = gtk::portOf(m_server.get());
    return {};
}

void HttpServer::run()
{
    g_main_context_push_thread_default(m_context.get());
    while (!m_isStopping)
        g_main_context_iteration(m_context.get(), TRUE);
    soup_server_disconnect(m_server.get());
    g_main_context_pop_thread_default(m_context.get());
}

void HttpServer::handle(SoupServer*, SoupServerMessage* message, char const*, GHashTable*, gpointer server)
{
    auto const request = readRequest(message);
    deliver(message,
        request ? static_cast<HttpServer*>(server)->m_handler(*request)
                : Outcome { .reply = errorReply(400, "the path cannot be read") });
}

}
