#pragma once

#include "ZelvoraAdapters/gtk/Concurrency/ContextThread.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <libsoup/soup.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace zelvora::tests {

/// A web server on loopback that runs on its own thread. With a certificate it serves HTTPS with HTTP/2, and then reads
/// only request bodies of less than 64 KiB.
class LoopbackServer final {
public:
    /// Called on the server's thread.
    using Handler = std::function<void(SoupServerMessage* message)>;

    struct Identity {
        std::string certificatePEM;
        std::string keyPEM;
    };

    explicit LoopbackServer(std::optional<Identity> const& identity = std::nullopt);
    LoopbackServer(LoopbackServer const&) = delete;
    LoopbackServer& operator=(LoopbackServer const&) = delete;
    ~LoopbackServer();

    /// Registers the handler of a path and returns the URL of that path.
    platform::URL serve(std::string const& path, Handler handler);
    platform::URL url(std::string const& path, std::string const& host = "localhost") const;

    std::vector<ReceivedRequest> received() const { return m_received.all(); }
    /// The queue of the server's thread, for what a handler does later.
    platform::DispatchQueue& queue() { return m_thread.queue(); }

private:
    void onServerThread(std::function<void()> const& work);
    void listen(std::optional<Identity> const& identity);

    Record<ReceivedRequest> m_received;
    std::uint16_t m_port = 0;
    bool m_isSecure = false;
    gtk::GObjectPointer<SoupServer> m_server;
    gtk::ContextThread m_thread;
};

void answer(SoupServerMessage* message, int status, std::string const& body);

}
