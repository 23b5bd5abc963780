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

/// The loader by libsoup, on a thread of its own, which is its queue. It speaks HTTP/1.1 and HTTP/2 through the
/// desktop's proxies, trusts what the system trusts, and keeps neither cookies nor a cache.
///
/// A request's timeout counts from when something last moved, as on the phone. A body is read whole into memory however
/// long it is. The destructor ends what is under way, each with its error, and must not be called on the loader's own
/// thread.
class URLSession final : public platform::URLSession {
public:
    struct Options {
        /// A PEM file of certificate authorities to trust beside the system's.
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

    /// Those whose completion has not returned.
    std::atomic<std::size_t> m_taskCount = 0;

    // The loader's thread alone has to do with these.
    bool m_isEnding = false;
    std::optional<ServerTrust> m_trust;
    GObjectPointer<SoupSession> m_session;
    /// Those that libsoup has not let go of; they take themselves out.
    std::set<DataTask*> m_tasks;
    std::optional<Timer> m_patience;

    ContextThread m_thread;
};

}
