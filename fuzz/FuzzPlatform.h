#pragma once

#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::fuzz {

/// A loader that keeps requests until `settle`, and forgets them then.
class HeldSession final : public platform::URLSession {
public:
    using Result = std::expected<Answer, platform::Error>;

    explicit HeldSession(platform::DispatchQueue& queue) : m_queue(queue) { }

    /// Completes every request that waits, on the queue.
    void settle(Result const& result);

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    platform::DispatchQueue& m_queue;
    std::vector<Completion> m_waiting;
};

/// The platform in memory for millions of runs in one process: it records neither requests nor log lines, which would
/// make each run slower than the one before.
class FuzzPlatform final : public memory::ForwardingPlatform {
public:
    /// Installed on first use. Standard output, where the SDK logs, is discarded from then on.
    static FuzzPlatform& shared();

    [[nodiscard]] memory::Platform& memory() { return static_cast<memory::Platform&>(target()); }
    void runUntilIdle() { memory().runUntilIdle(); }
    /// Ends what is pending and empties the preferences.
    void reset();

    // platform::Platform
    [[nodiscard]] HeldSession& urlSession() override { return m_session; }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;

private:
    FuzzPlatform();

    HeldSession m_session { memory().globalQueue() };
};

}
