#include "ZelvoraAdapters/gtk/Foundation/DataTask.h"

#include "ZelvoraAdapters/gtk/Foundation/CertificatePurpose.h"
#include "ZelvoraAdapters/gtk/Foundation/HTTPUri.h"
#include "ZelvoraAdapters/gtk/Foundation/Redirection.h"
#include "ZelvoraAdapters/gtk/Foundation/ServerTrust.h"
#include "ZelvoraAdapters/gtk/Foundation/TransportError.h"

#include <utility>

namespace zelvora::gtk {

namespace {

constexpr int maximumRedirectCount = 16;

/// Shares the bytes with libsoup, which may keep them longer than the task lives.
GBytesPointer share(std::string bytes)
{
    auto* const held = new std::string(std::move(bytes));
    auto const release = [](gpointer text) { delete static_cast<std::string*>(text); };
    return GBytesPointer(g_bytes_new_with_free_func(held->data(), held->size(), release, held));
}

}

DataTask::DataTask(
    SoupSession& session, ServerTrust const* trust, platform::URLRequest request, Finish finish, Gone gone)
    : m_session(session)
    , m_trust(trust)
    , m_request(std::move(request))
    , m_finish(std::move(finish))
    , m_gone(std::move(gone))
    , m_timeout([this] { fail(timedOutError()); })
    , m_cancellable(g_cancellable_new())
{
    if (!m_request.httpBody.bytes.empty())
        m_requestBody = share(std::move(m_request.httpBody.bytes));
}

DataTask::~DataTask()
{
    if (m_message)
        g_signal_handlers_disconnect_by_data(m_message.get(), this);
    m_gone(*this);
}

void DataTask::resume(GUriPointer uri)
{
    send(std::move(uri));
}

void DataTask::fail(platform::Error error)
{
    // Does not wait for libsoup, which never notices on a connection whose peer does not read.
    auto const self = shared_from_this();
    g_cancellable_cancel(m_cancellable.get());
    finish(std::unexpected(std::move(error)));
}

template<DataTask::Answered answered>
void DataTask::callBack(GObject*, GAsyncResult* result, gpointer data)
{
    std::unique_ptr<std::shared_ptr<DataTask>> const held(static_cast<std::shared_ptr<DataTask>*>(data));
    ((**held).*answered)(result);
}

gpointer DataTask::holdThis()
{
    return new std::shared_ptr(shared_from_this());
}

void DataTask::send(GUriPointer uri)
{
    if (m_message)
        g_signal_handlers_disconnect_by_data(m_message.get(), this);
    m_message = makeMessage(*uri);
    didMove();
    soup_session_send_async(
        &m_session, m_message.get(), G_PRIORITY_DEFAULT, m_cancellable.get(), callBack<&DataTask::didSend>, holdThis());
}

GObjectPointer<SoupMessage> DataTask::makeMessage(GUri& uri)
{
    auto message = adopt(soup_message_new_from_uri(m_request.httpMethod.c_str(), &uri));
    // Redirections are followed here: libsoup does not repeat a POST where the phone does.
    soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
    if (m_requestBody)
        soup_message_set_request_body_from_bytes(message.get(), nullptr, m_requestBody.get());
    auto* const headers = soup_message_get_request_headers(message.get());
    ResponseBody::prepare(*headers);
    for (auto const& [name, value] : m_request.httpHeaderFields)
        soup_message_headers_replace(headers, name.c_str(), value.c_str());

    auto const accept =
        +[](SoupMessage*, GTlsCertificate* certificate, GTlsCertificateFlags, gpointer task) -> gboolean {
        return static_cast<DataTask*>(task)->acceptCertificate(*certificate);
    };
    g_signal_connect(message.get(), "accept-certificate", G_CALLBACK(accept), this);
    auto const starts = +[](SoupMessage* started, gpointer task) {
        static_cast<DataTask*>(task)->checkServer(
            soup_message_get_tls_peer_certificate(started), soup_message_get_tls_protocol_version(started));
    };
    g_signal_connect(message.get(), "starting", G_CALLBACK(starts), this);
    auto const wrote = +[](SoupMessage*, guint, gpointer task) { static_cast<DataTask*>(task)->didMove(); };
    g_signal_connect(message.get(), "wrote-body-data", G_CALLBACK(wrote), this);
    return message;
}

void DataTask::didSend(GAsyncResult* result)
{
    GErrorPlace error;
    m_stream.reset(soup_session_send_finish(&m_session, result, error.out()));
    if (!m_finish)
        return;
    if (error)
        return finish(std::unexpected(transportError(*error)));
    auto const* const location =
        soup_message_headers_get_one(soup_message_get_response_headers(m_message.get()), "Location");
    if (auto const next = redirection(m_request.httpMethod, soup_message_get_status(m_message.get()), location))
        return follow(*next);
    read();
}

void DataTask::follow(Redirection const& redirection)
{
    if (++m_redirectCount > maximumRedirectCount)
        return finish(std::unexpected(tooManyRedirectsError()));
    auto& from = *soup_message_get_uri(m_message.get());
    auto to = resolveHTTPUri(from, redirection.location);
    if (!to)
        return finish(std::unexpected(unsupportedURLError(redirection.location)));
    // What was sent encrypted must not be sent in the clear.
    if (isSecure(from) && !isSecure(*to))
        return finish(std::unexpected(insecureRedirectError()));
    if (redirection.becomesGet) {
        m_request.httpMethod = "GET";
        m_requestBody.reset();
        std::erase_if(m_request.httpHeaderFields,
            [](auto const& field) { return g_ascii_strcasecmp(field.first.c_str(), "Content-Type") == 0; });
    }
    m_stream.reset();
    send(std::move(to));
}

void DataTask::read()
{
    didMove();
    g_input_stream_read_async(m_stream.get(), m_buffer.data(), m_buffer.size(), G_PRIORITY_DEFAULT, m_cancellable.get(),
        callBack<&DataTask::didRead>, holdThis());
}

void DataTask::didRead(GAsyncResult* result)
{
    GErrorPlace error;
    gssize const count = g_input_stream_read_finish(m_stream.get(), result, error.out());
    if (!m_finish)
        return;
    if (error)
        return finish(std::unexpected(transportError(*error)));
    if (count > 0) {
        if (auto appended = m_body.append({ m_buffer.data(), static_cast<std::size_t>(count) }); !appended)
            return fail(appended.error());
        return read();
    }
    auto body = m_body.take(*soup_message_get_response_headers(m_message.get()));
    if (!body)
        return finish(std::unexpected(body.error()));
    int const status = static_cast<int>(soup_message_get_status(m_message.get()));
    finish(platform::URLSession::Answer { .data = { *std::move(body) }, .response = { .statusCode = status } });
}

void DataTask::didMove()
{
    if (m_finish)
        m_timeout.set(m_request.timeoutInterval);
}

void DataTask::finish(Result result)
{
    if (auto finish = std::exchange(m_finish, nullptr)) {
        m_timeout.stop();
        finish(std::move(result));
    }
}

void DataTask::checkServer(GTlsCertificate* certificate, GTlsProtocolVersion version)
{
    if (!certificate)
        return;
    if (version < G_TLS_PROTOCOL_VERSION_TLS_1_2)
        return fail(oldTLSError());
    if (!isForServers(*certificate))
        fail(notAServerError());
}

bool DataTask::acceptCertificate(GTlsCertificate& certificate) const
{
    // A certificate that is refused here fails the handshake. When `checkServer` refuses one, the request may already
    // be on its way.
    return m_trust && isForServers(certificate)
        && m_trust->vouchesFor(certificate, *soup_message_get_uri(m_message.get()));
}

}
