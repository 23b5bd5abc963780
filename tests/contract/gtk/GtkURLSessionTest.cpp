#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"
#include "ZelvoraContract/URLSessionContract.h"
#include "tests/support/gtk/LoopbackServer.h"
#include "tests/support/gtk/RawServer.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace zelvora::tests {

namespace {

class GtkURLSession final {
public:
    platform::URLSession& session() { return *m_session; }
    void destroySession() { m_session.reset(); }

    platform::URL answering(int status, std::string body)
    {
        return m_server.serve("/" + std::to_string(++m_pathCount),
            [status, body = std::move(body)](SoupServerMessage* message) { answer(message, status, body); });
    }
    platform::URL failing(LoaderFailure failure)
    {
        switch (failure) {
        case LoaderFailure::Refused:
            return urlOfNobody();
        case LoaderFailure::Cut:
            return m_cutting.url();
        case LoaderFailure::Silent:
            break;
        }
        return m_silent.url();
    }
    std::vector<ReceivedRequest> received() { return m_server.received(); }

    bool runUntil(std::function<bool()> const& done)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(30), done);
    }
    void changed()
    {
        // Under the lock, so that a waiting thread cannot miss the change between its check and its wait.
        std::scoped_lock const lock(m_mutex);
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_pathCount = 0;
    LoopbackServer m_server;
    RawServer m_cutting { "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nshort", RawServer::Afterwards::Close };
    RawServer m_silent { "", RawServer::Afterwards::KeepOpen };
    std::optional<gtk::URLSession> m_session { std::in_place };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, URLSessionContract, GtkURLSession);

}
