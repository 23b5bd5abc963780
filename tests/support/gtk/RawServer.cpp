#include "tests/support/gtk/RawServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace zelvora::tests {

namespace {

struct Listener {
    int descriptor = -1;
    int port = 0;
};

Listener bindToLoopback()
{
    Listener listener { .descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0) };
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof(address);
    if (bind(listener.descriptor, generic, length) != 0 || getsockname(listener.descriptor, generic, &length) != 0)
        std::abort();
    listener.port = ntohs(address.sin_port);
    return listener;
}

platform::URL urlOfPort(int port)
{
    return *platform::URL::parse("http://127.0.0.1:" + std::to_string(port) + "/");
}

}

RawServer::RawServer(std::string bytes, Afterwards afterwards) : m_bytes(std::move(bytes)), m_afterwards(afterwards)
{
    auto const listener = bindToLoopback();
    m_listener = listener.descriptor;
    m_port = listener.port;
    if (::listen(m_listener, 16) != 0 || pipe(m_ending) != 0)
        std::abort();
    m_thread = std::thread([this] { run(); });
}

RawServer::~RawServer()
{
    m_isEnding = true;
    close(m_ending[1]);
    m_thread.join();
    close(m_ending[0]);
    close(m_listener);
}

platform::URL RawServer::url() const
{
    return urlOfPort(m_port);
}

void RawServer::run()
{
    while (!m_isEnding) {
        std::array<pollfd, 2> watched { { { m_listener, POLLIN, 0 }, { m_ending[0], POLLIN, 0 } } };
        poll(watched.data(), watched.size(), -1);
        if (m_isEnding)
            return;
        int const connection = accept(m_listener, nullptr, nullptr);
        serve(connection);
        close(connection);
    }
}

void RawServer::serve(int connection)
{
    std::string request;
    std::array<char, 4096> buffer {};
    while (request.find("\r\n\r\n") == std::string::npos) {
        auto const count = recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return;
        request.append(buffer.data(), static_cast<std::size_t>(count));
    }
    for (std::size_t sent = 0; sent < m_bytes.size();) {
        auto const count = send(connection, m_bytes.data() + sent, m_bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            return;
        sent += static_cast<std::size_t>(count);
    }
    if (m_afterwards == Afterwards::Close)
        return;
    // Waits until the client disconnects or this server is destroyed.
    std::array<pollfd, 2> watched { { { connection, POLLRDHUP, 0 }, { m_ending[0], POLLIN, 0 } } };
    poll(watched.data(), watched.size(), -1);
}

platform::URL urlOfNobody()
{
    // A port that was free a moment ago.
    auto const listener = bindToLoopback();
    close(listener.descriptor);
    return urlOfPort(listener.port);
}

}
