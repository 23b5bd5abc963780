#pragma once

#include "ZelvoraAdapters/gtk/Concurrency/ContextThread.h"
#include "ZelvoraAdapters/gtk/Foundation/DataTask.h"
#include "ZelvoraAdapters/gtk/Foundation/ServerTrust.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/Timer.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>

namespace zelvora::gtk {

/// The loader, by libsoup on its own thread, which is also its queue. It speaks HTTP/1.1 and HTTP/2, uses the desktop's
/// proxies, trusts what the system trusts, and keeps neither cookies nor a cache. Secure servers must speak TLS 1.2 or
/// later and have a certificate for servers.
///
/// As on the phone, a request's timeout restarts whenever data moves. A body of more than 16 MiB, compressed or not, is
/// an error. The destructor cancels running requests, each with its error; it must not run on the loader's thread.
class URLSession final : public platform::URLSession {
public:
    struct Options {
        /// A PEM file of certificate authorities to trust in addition to the system's.
        std::optional<std::filesystem::path> additionalAuthorities {};
    };

    URLSession();
    explicit URLSession(Options const& options);
    URLSession(URLSession const&) = delete;
    URLSession& operator=(URLSession const&) = delete;
    ~URLSession() override;

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    void open(Options const& options);
    void start(platform::URLRequest request, Completion completion);
    void complete(Completion completion, DataTask::Result result);
    void endAll();
    void quitWhenDone();
    void quit();

    /// Requests whose completion has not returned.
    std::atomic<std::size_t> m_taskCount = 0;

    // Only used on the loader's thread.
    bool m_isEnding = false;
    std::optional<ServerTrust> m_trust;
    GObjectPointer<SoupSession> m_session;
    /// Tasks that libsoup has not released. Each removes itself.
    std::set<DataTask*> m_tasks;
    std::optional<Timer> m_patience;

    ContextThread m_thread;
};

}
