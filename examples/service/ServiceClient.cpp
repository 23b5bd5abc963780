#include "examples/service/ServiceClient.h"

#include <stdexcept>

namespace zelvora::examples {

ServiceClient::ServiceClient() : m_session(soup_session_new()) { }

ServiceClient::ServiceClient(std::filesystem::path const& authority) : ServiceClient()
{
    ObjectPointer<GTlsDatabase> const database(g_tls_file_database_new(authority.c_str(), nullptr));
    if (!database)
        throw std::runtime_error("no authority in " + authority.string());
    soup_session_set_tls_database(m_session.get(), database.get());
}

Answer ServiceClient::get(std::string const& address)
{
    return send("GET", address);
}

Answer ServiceClient::send(char const* method, std::string const& address)
{
    ObjectPointer<SoupMessage> const message(soup_message_new(method, address.c_str()));
    return answerTo(message.get());
}

Answer ServiceClient::post(std::string const& address, std::string const& body, char const* contentType)
{
    ObjectPointer<SoupMessage> const message(soup_message_new("POST", address.c_str()));
    auto* bytes = g_bytes_new(body.data(), body.size());
    soup_message_set_request_body_from_bytes(message.get(), contentType, bytes);
    g_bytes_unref(bytes);
    return answerTo(message.get());
}

std::string ServiceClient::statusOfPath(std::string const& address, std::string const& path)
{
    ObjectPointer<SoupMessage> const message(soup_message_new("GET", address.c_str()));
    auto* uri = soup_message_get_uri(message.get());
    std::string const host = g_uri_get_host(uri);
    auto const port = static_cast<guint16>(g_uri_get_port(uri));

    ObjectPointer<GSocketClient> const client(g_socket_client_new());
    ObjectPointer<GSocketConnection> const plain(
        g_socket_client_connect_to_host(client.get(), host.c_str(), port, nullptr, nullptr));
    ObjectPointer<GSocketConnectable> const name(g_network_address_new(host.c_str(), port));
    ObjectPointer<GIOStream> const secure(g_tls_client_connection_new(G_IO_STREAM(plain.get()), name.get(), nullptr));
    g_tls_connection_set_database(G_TLS_CONNECTION(secure.get()), soup_session_get_tls_database(m_session.get()));

    auto const request =
        "GET " + path + " HTTP/1.1\r\nHost: " + host + ":" + std::to_string(port) + "\r\nConnection: close\r\n\r\n";
    g_output_stream_write_all(
        g_io_stream_get_output_stream(secure.get()), request.data(), request.size(), nullptr, nullptr, nullptr);
    ObjectPointer<GDataInputStream> const input(g_data_input_stream_new(g_io_stream_get_input_stream(secure.get())));
    GlibText const line(g_data_input_stream_read_line(input.get(), nullptr, nullptr, nullptr));
    return line ? line.get() : "";
}

Answer ServiceClient::answerTo(SoupMessage* message)
{
    soup_message_add_flags(message, SOUP_MESSAGE_NO_REDIRECT);
    GError* raw = nullptr;
    auto* bytes = soup_session_send_and_read(m_session.get(), message, nullptr, &raw);
    Answer answer;
    answer.status = soup_message_get_status(message);
    if (auto const* type = soup_message_headers_get_one(soup_message_get_response_headers(message), "Content-Type"))
        answer.contentType = type;
    if (raw)
        answer.error = ErrorPointer(raw)->message;
    if (!bytes)
        return answer;
    gsize size = 0;
    auto const* data = static_cast<char const*>(g_bytes_get_data(bytes, &size));
    answer.body = size > 0 ? std::string(data, size) : std::string();
    g_bytes_unref(bytes);
    return answer;
}

} // namespace zelvora::examples
