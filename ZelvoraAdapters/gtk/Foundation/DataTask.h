#pragma once

#include "ZelvoraAdapters/gtk/Foundation/ResponseBody.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/Timer.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <libsoup/soup.h>

#include <array>
#include <memory>

namespace zelvora::gtk {

class ServerTrust;
struct Redirection;

/// One running request, on the loader's thread. It follows redirections, reads the body into memory, up to a limit, and
/// fails when no data has moved for the request's timeout. Pending libsoup operations own the task, so it may live on
/// after it has finished.
class DataTask final : public std::enable_shared_from_this<DataTask> {
public:
    using Result = std::expected<platform::URLSession::Answer, platform::Error>;
    /// Called exactly once, never inside `resume`.
    using Finish = platform::Block<void(Result result)>;
    /// Called in the destructor.
    using Gone = platform::Block<void(DataTask& task)>;

    /// The session and the trust, which may be nullptr, outlive the task.
    DataTask(SoupSession& session, ServerTrust const* trust, platform::URLRequest request, Finish finish, Gone gone);
    DataTask(DataTask const&) = delete;
    DataTask& operator=(DataTask const&) = delete;
    ~DataTask();

    void resume(GUriPointer uri);
    /// Finishes at once with an error, unless it has finished already.
    void fail(platform::Error error);

private:
    using Answered = void (DataTask::*)(GAsyncResult* result);
    template<Answered answered>
    static void callBack(GObject* source, GAsyncResult* result, gpointer data);
    [[nodiscard]] gpointer holdThis();

    void send(GUriPointer uri);
    [[nodiscard]] GObjectPointer<SoupMessage> makeMessage(GUri& uri);
    void didSend(GAsyncResult* result);
    void follow(Redirection const& redirection);
    void read();
    void didRead(GAsyncResult* result);
    void didMove();
    void finish(Result result);
    [[nodiscard]] bool acceptCertificate(GTlsCertificate& certificate) const;
    void checkServer(GTlsCertificate* certificate, GTlsProtocolVersion version);

    SoupSession& m_session;
    ServerTrust const* m_trust;
    platform::URLRequest m_request;
    GBytesPointer m_requestBody;
    Finish m_finish;
    Gone m_gone;
    Timer m_timeout;
    int m_redirectCount = 0;
    GObjectPointer<GCancellable> m_cancellable;
    GObjectPointer<SoupMessage> m_message;
    GObjectPointer<GInputStream> m_stream;
    std::array<char, 65536> m_buffer {};
    ResponseBody m_body;
};

}
