#include "examples/service/Delivery.h"

#include "examples/service/Handles.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace zelvora::examples {

namespace {

/// Something to do about a message later, unless the message finishes before.
class Later {
public:
    using Work = std::function<void(SoupServerMessage*)>;

    static void schedule(SoupServerMessage* message, std::chrono::milliseconds delay, Work work)
    {
        auto* source = g_timeout_source_new(static_cast<guint>(delay.count()));
        auto* later = new Later(message, source, std::move(work));
        g_source_set_callback(source, &Later::run, later, &Later::destroy);
        g_source_attach(source, g_main_context_get_thread_default());
        g_source_unref(source);
    }

private:
    Later(SoupServerMessage* message, GSource* source, Work work)
        : m_message(share(message))
        , m_source(source)
        , m_work(std::move(work))
        , m_finished(g_signal_connect_data(
              message, "finished", reinterpret_cast<GCallback>(&Later::messageFinished), this, nullptr, {}))
    {
    }

    ~Later() { g_signal_handler_disconnect(m_message.get(), m_finished); }

    static gboolean run(gpointer later)
    {
        auto* self = static_cast<Later*>(later);
        self->m_work(self->m_message.get());
        return G_SOURCE_REMOVE;
    }

    static void destroy(gpointer later) { delete static_cast<Later*>(later); }

    static void messageFinished(SoupServerMessage*, gpointer later)
    {
        g_source_destroy(static_cast<Later*>(later)->m_source);
    }

    ObjectPointer<SoupServerMessage> m_message;
    GSource* m_source; // Owns this object, and is destroyed with it.
    Work m_work;
    gulong m_finished;
};

void cutConnection(SoupServerMessage* message)
{
    auto const socket = share(soup_server_message_get_socket(message));
    ObjectPointer<GIOStream> const stream(soup_server_message_steal_connection(message));
    // The socket goes first: closing the stream would say goodbye as TLS does, which a cut does not.
    g_socket_shutdown(socket.get(), TRUE, TRUE, nullptr);
    g_socket_close(socket.get(), nullptr);
}

GBytes* bytesOf(std::string body)
{
    auto* kept = new std::string(std::move(body));
    return g_bytes_new_with_free_func(
        kept->data(), kept->size(), [](gpointer text) { delete static_cast<std::string*>(text); }, kept);
}

void append(SoupMessageBody* body, std::string text)
{
    auto* bytes = bytesOf(std::move(text));
    soup_message_body_append_bytes(body, bytes);
    g_bytes_unref(bytes);
}

void cutSoon(SoupServerMessage* message)
{
    // The connection cannot be taken away in the middle of a write.
    Later::schedule(message, std::chrono::milliseconds(0), cutConnection);
}

void fill(SoupServerMessage* message, Reply reply, Cut cut)
{
    auto* headers = soup_server_message_get_response_headers(message);
    auto* body = soup_server_message_get_response_body(message);
    soup_server_message_set_status(message, reply.status, nullptr);
    for (auto const& [name, value] : reply.headers)
        soup_message_headers_replace(headers, name.c_str(), value.c_str());
    if (!reply.contentType.empty())
        soup_message_headers_set_content_type(headers, reply.contentType.c_str(), nullptr);

    soup_message_headers_set_content_length(headers, static_cast<goffset>(reply.body.size()));
    if (cut == Cut::MidBody) {
        // Something must be promised for the end to come too early.
        soup_message_headers_set_content_length(headers, std::max<goffset>(1, static_cast<goffset>(reply.body.size())));
        reply.body.resize(reply.body.size() / 2);
        auto const* signal = reply.body.empty() ? "wrote-headers" : "wrote-chunk";
        g_signal_connect_data(message, signal, reinterpret_cast<GCallback>(&cutSoon), nullptr, nullptr, {});
    }
    if (!reply.body.empty())
        append(body, std::move(reply.body));
    if (cut == Cut::None)
        soup_message_body_complete(body);
}

} // namespace

void deliver(SoupServerMessage* message, Outcome outcome)
{
    if (outcome.delay.count() == 0 && outcome.cut != Cut::BeforeAnswer) {
        fill(message, std::move(outcome.reply), outcome.cut);
        return;
    }

    soup_server_message_pause(message);
    auto const delay = outcome.delay;
    Later::schedule(message, delay, [outcome = std::move(outcome)](SoupServerMessage* late) mutable {
        if (outcome.cut == Cut::BeforeAnswer) {
            cutConnection(late);
            return;
        }
        fill(late, std::move(outcome.reply), outcome.cut);
        soup_server_message_unpause(late);
    });
}

} // namespace zelvora::examples
