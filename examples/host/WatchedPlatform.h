#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraAdapters/memory/ForwardingPlatform.h"

#include <atomic>
#include <memory>

namespace zelvora::examples {

/// The Linux platform with an eye on the SDK's requests: an upload says nothing when it ends, and a host that must not
/// disturb one, or let it disturb others, has to know.
class WatchedPlatform final : public memory::ForwardingPlatform {
public:
    /// After `gtk_init`.
    explicit WatchedPlatform(gtk::HostOptions options);

    /// How many of the SDK's requests are on their way. A request counts until the SDK has dealt with its answer. Any
    /// thread.
    [[nodiscard]] int requestsInProgress() const { return m_session.inProgress; }

    // platform::Platform
    [[nodiscard]] platform::URLSession& urlSession() override { return m_session; }

private:
    struct Session final : platform::URLSession {
        explicit Session(WatchedPlatform& platform) : owner(platform) { }

        // platform::URLSession
        void dataTask(platform::URLRequest request, Completion completion) override;

        WatchedPlatform& owner;
        std::atomic<int> inProgress = 0;
    };

    Session m_session { *this };
};

}
