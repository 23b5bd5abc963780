#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/service/Delivery.h"

#include <libsoup/soup.h>

#include <atomic>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace zelvora::examples {

/// HTTPS on loopback, on a thread of its own until the server is destroyed. Then open connections are closed, and
/// answers that are still delayed are dropped.
class HttpServer final {
public:
    /// Called on the server's thread.
    using Handler = std::function<Outcome(Request const&)>;

    /// Uses `server.pem` and `server-key.pem` of the directory. With port 0 the system chooses a port. On failure the
    /// text says why.
    [[nodiscard]] static std::expected<std::unique_ptr<HttpServer>, std::string> start(
        std::filesystem::path const& certificates, std::uint16_t port, Handler handler);

    HttpServer(HttpServer const&) = delete;
    HttpServer& operator=(HttpServer const&) = delete;
    ~HttpServer();

    [[nodiscard]] std::uint16_t port() const { return m_port; }

private:
    HttpServer(gtk::GObjectPointer<GTlsCertificate> const& certificate, Handler handler);
    [[nodiscard]] std::expected<void, std::string> listen(std::uint16_t port);
    void run();
    static void handle(
        SoupServer* soup, SoupServerMessage* message, char const* path, GHashTable* query, gpointer server);

    Handler m_handler;
    gtk::GMainContextPointer m_context;
    gtk::GObjectPointer<SoupServer> m_server;
    std::uint16_t m_port = 0;
    std::atomic<bool> m_isStopping = false;
    std::thread m_thread;
};

}
