#include "examples/service/Delivery.h"

#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace zelvora::examples {

namespace {

// The work is dropped if the message ends before.
void schedule(SoupServerMessage* message, std::chrono::milliseconds delay, std::function<void(SoupServerMessage*)> work)
{
    auto* const source = g_timeout_source_new(static_cast<guint>(delay.count()));
    auto const cancel = +[](SoupServerMessage*, GSource* waiting) { g_source_destroy(waiting); };
    auto const unref = [](gpointer data, GClosure*) { g_source_unref(static_cast<GSource*>(data)); };
    g_signal_connect_data(message, "finished", G_CALLBACK(cancel), g_source_ref(source), unref, {});
    auto run = [kept = gtk::retain(message), work = std::move(work)] { work(kept.get()); };
    gtk::runLater(source, std::move(run), g_main_context_get_thread_default());
}

void cutConnection(SoupServerMessage* message)
{
    auto const socket = gtk::retain(soup_server_message_get_socket(message));
    auto const stream = gtk::adopt(soup_server_message_steal_connection(message));
    // The socket is closed first, because closing the stream would end TLS properly, which a cut does not.
    g_socket_shutdown(socket.get(), TRUE, TRUE, nullptr);
    g_socket_close(socket.get(), nullptr);
}

// The connection cannot be taken away in the middle of a write.
void cutSoon(SoupServerMessage* message)
{
    schedule(message, std::chrono::milliseconds(0), cutConnection);
}

void fill(SoupServerMessage* message, Reply const& reply, std::optional<Cut> cut)
{
    auto* const headers = soup_server_message_get_response_headers(message);
    auto* const body = soup_server_message_get_response_body(message);
    auto size = reply.body.size();
    soup_server_message_set_status(message, reply.status, nullptr);
    for (auto const& [name, value] : reply.headers)
        soup_message_headers_replace(headers, name.c_str(), value.c_str());
    if (!reply.contentType.empty())
        soup_message_headers_set_content_type(headers, reply.contentType.c_str(), nullptr);
    soup_message_headers_set_content_length(headers, static_cast<goffset>(size));

    if (cut == Cut::MidBody) {
        // Unless at least a byte is announced, the end does not come too early.
        soup_message_headers_set_content_length(headers, static_cast<goffset>(std::max<std::size_t>(1, size)));
        size /= 2;
        g_signal_connect(message, size == 0 ? "wrote-headers" : "wrote-chunk", G_CALLBACK(cutSoon), nullptr);
    }
    if (size > 0)
        soup_message_body_append(body, SOUP_MEMORY_COPY, reply.body.data(), size);
    if (!cut)
        soup_message_body_complete(body);
}

}

void deliver(SoupServerMessage* message, Outcome outcome)
{
    if (outcome.delay.count() == 0 && outcome.cut != Cut::BeforeAnswer) {
        fill(message, outcome.reply, outcome.cut);
        return;
    }
    soup_server_message_pause(message);
    auto const delay = outcome.delay;
    schedule(message, delay, [outcome = std::move(outcome)](SoupServerMessage* late) {
        if (outcome.cut == Cut::BeforeAnswer) {
            cutConnection(late);
            return;
        }
        fill(late, outcome.reply, outcome.cut);
        soup_server_message_unpause(late);
    });
}

}
