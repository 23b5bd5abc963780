#pragma once

#include "examples/service/Certificates.h"
#include "examples/service/Router.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>

namespace zelvora::examples {

/// HTTPS on loopback, served by a thread of its own until the object is destroyed.
/// Connections that are open then are closed, and answers that were to come late never come.
class HttpServer {
public:
    /// Port 0 lets the system choose. On failure the text says why. The router is used on the server's thread only.
    static std::expected<std::unique_ptr<HttpServer>, std::string> start(
        Certificates const& certificates, std::uint16_t port, std::unique_ptr<Router> router);

    HttpServer(HttpServer const&) = delete;
    HttpServer& operator=(HttpServer const&) = delete;
    ~HttpServer();

    std::uint16_t port() const;

private:
    class Thread;
    explicit HttpServer(std::unique_ptr<Thread> thread);

    std::unique_ptr<Thread> m_thread;
};

} // namespace zelvora::examples
