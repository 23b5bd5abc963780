#pragma once

#include "adapters/gtk/GLib/Pointers.h"
#include "adapters/gtk/GLib/Timer.h"
#include "platform/Foundation/URLSession.h"

#include <libsoup/soup.h>

#include <array>

namespace zelvora::gtk {

class ServerTrust;
struct Redirection;

/// One request on its way, on the loader's thread. It follows redirections, reads the whole body into memory and gives
/// up when nothing has moved for the request's timeout.
class DataTask final {
public:
    using Result = std::expected<platform::URLSession::Answer, platform::Error>;
    /// Called exactly once, never before `resume` returns; it may destroy the task.
    using Finish = platform::Block<void(DataTask& task, Result result)>;

    /// The session and the trust, which may be absent, outlive the task.
    DataTask(SoupSession& session, ServerTrust const* trust, platform::URLRequest request, Finish finish);
    DataTask(DataTask const&) = delete;
    DataTask& operator=(DataTask const&) = delete;
    ~DataTask();

    void resume(GUriPointer uri);
    void cancel();

private:
    void send(GUriPointer uri);
    [[nodiscard]] GObjectPointer<SoupMessage> makeMessage(GUri& uri);
    void didSend(GAsyncResult* result);
    void follow(Redirection const& redirection);
    void read();
    void didRead(GAsyncResult* result);
    void didMove();
    void didFail(GError const& error);
    void finish(Result result);
    [[nodiscard]] bool acceptCertificate(GTlsCertificate& certificate) const;

    SoupSession& m_session;
    ServerTrust const* m_trust;
    platform::URLRequest m_request;
    Finish m_finish;
    Timer m_timeout;
    bool m_didTimeOut = false;
    int m_redirectCount = 0;
    GBytesPointer m_requestBody;
    GObjectPointer<GCancellable> m_cancellable;
    GObjectPointer<SoupMessage> m_message;
    GObjectPointer<GInputStream> m_stream;
    std::array<char, 65536> m_buffer {};
    std::string m_body;
};

}
