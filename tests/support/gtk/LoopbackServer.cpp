#include "tests/support/gtk/LoopbackServer.h"

#include "ZelvoraAdapters/gtk/GLib/portOf.h"

#include <future>
#include <memory>

namespace zelvora::tests {

namespace {

// Without this variable, libsoup's server does not offer HTTP/2. It is set before main(), because a variable that is
// added later moves the environment while other threads read it.
[[maybe_unused]] bool const offersHTTP2 = g_setenv("SOUP_SERVER_HTTP2", "1", TRUE) != FALSE;

ReceivedRequest read(SoupServerMessage* message)
{
    ReceivedRequest request { .method = soup_server_message_get_method(message), .headers = {}, .body = {} };
    SoupMessageHeadersIter iterator;
    soup_message_headers_iter_init(&iterator, soup_server_message_get_request_headers(message));
    char const* name = nullptr;
    char const* value = nullptr;
    while (soup_message_headers_iter_next(&iterator, &name, &value))
        request.headers.emplace(lowerCase(name), value);
    auto const* const body = soup_server_message_get_request_body(message);
    request.body.assign(body->data ? body->data : "", static_cast<std::size_t>(body->length));
    return request;
}

struct Service {
    Record<ReceivedRequest>& received;
    LoopbackServer::Handler handler;
};

void handle(SoupServer*, SoupServerMessage* message, char const*, GHashTable*, gpointer data)
{
    auto const& service = *static_cast<Service*>(data);
    service.received.add(read(message));
    service.handler(message);
}

}

LoopbackServer::LoopbackServer(std::optional<Identity> const& identity) : m_isSecure(identity.has_value())
{
    onServerThread([&] { listen(identity); });
}

LoopbackServer::~LoopbackServer()
{
    onServerThread([&] {
        soup_server_disconnect(m_server.get());
        m_server.reset();
    });
}

platform::URL LoopbackServer::serve(std::string const& path, Handler handler)
{
    onServerThread([&] {
        auto const release = [](gpointer service) { delete static_cast<Service*>(service); };
        soup_server_add_handler(
            m_server.get(), path.c_str(), handle, new Service { m_received, std::move(handler) }, release);
    });
    return url(path);
}

platform::URL LoopbackServer::url(std::string const& path, std::string const& host) const
{
    auto const scheme = m_isSecure ? "https://" : "http://";
    return *platform::URL::parse(scheme + host + ":" + std::to_string(m_port) + path);
}

void LoopbackServer::onServerThread(std::function<void()> const& work)
{
    std::promise<void> done;
    m_thread.queue().async([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

void LoopbackServer::listen(std::optional<Identity> const& identity)
{
    gtk::GErrorPlace error;
    gtk::GObjectPointer<GTlsCertificate> certificate;
    if (identity) {
        std::string const pem = identity->certificatePEM + identity->keyPEM;
        certificate.reset(g_tls_certificate_new_from_pem(pem.data(), static_cast<gssize>(pem.size()), error.out()));
        if (error)
            g_error("%s", error->message);
    }
    m_server.reset(soup_server_new("tls-certificate", certificate.get(), nullptr));
    auto const options = m_isSecure ? SOUP_SERVER_LISTEN_HTTPS : static_cast<SoupServerListenOptions>(0);
    if (!soup_server_listen_local(m_server.get(), 0, options, error.out()))
        g_error("%s", error->message);
    m_port = gtk::portOf(m_server.get());
}

void answer(SoupServerMessage* message, int status, std::string const& body)
{
    soup_server_message_set_status(message, static_cast<guint>(status), nullptr);
    soup_message_body_append(
        soup_server_message_get_response_body(message), SOUP_MEMORY_COPY, body.data(), body.size());
}

}
