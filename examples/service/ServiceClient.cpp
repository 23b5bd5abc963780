#include "examples/service/ServiceClient.h"

namespace zelvora::examples {

ServiceClient::ServiceClient(std::filesystem::path const& authority) : m_session(soup_session_new())
{
    if (auto const database = gtk::adopt(g_tls_file_database_new(authority.c_str(), nullptr)))
        soup_session_set_tls_database(m_session.get(), database.get());
}

Answer ServiceClient::get(std::string const& address)
{
    return send("GET", address);
}

Answer ServiceClient::post(std::string const& address, std::string const& body, char const* contentType)
{
    auto const message = gtk::adopt(soup_message_new("POST", address.c_str()));
    gtk::GBytesPointer const bytes(g_bytes_new(body.data(), body.size()));
    soup_message_set_request_body_from_bytes(message.get(), contentType, bytes.get());
    return send(message.get());
}

Answer ServiceClient::send(char const* method, std::string const& address)
{
    return send(gtk::adopt(soup_message_new(method, address.c_str())).get());
}

Answer ServiceClient::send(SoupMessage* message)
{
    soup_message_add_flags(message, SOUP_MESSAGE_NO_REDIRECT);
    gtk::GErrorPlace error;
    gtk::GBytesPointer const bytes(soup_session_send_and_read(m_session.get(), message, nullptr, error.out()));
    auto const* const type = soup_message_headers_get_one(soup_message_get_response_headers(message), "Content-Type");
    gsize size = 0;
    auto const* const data = bytes ? static_cast<char const*>(g_bytes_get_data(bytes.get(), &size)) : nullptr;
    return { .status = soup_message_get_status(message),
        .contentType = type ? type : "",
        .body = size > 0 ? std::string(data, size) : std::string(),
        .error = error ? error->message : "" };
}

}
