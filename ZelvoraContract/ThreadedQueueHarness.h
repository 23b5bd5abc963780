#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>

namespace zelvora::tests {

/// A queue that runs on its own threads. An `Owner` makes the queue and destroys it with itself; `queueOf` returns it.
template<typename Owner, auto queueOf>
class ThreadedQueueHarness final {
public:
    platform::DispatchQueue& queue() { return queueOf(*m_owner); }
    void destroyQueue() { m_owner.reset(); }

    bool runUntil(std::function<bool()> const& done)
    {
        auto const deadline = Clock::now() + std::chrono::seconds(30);
        // Waits for a block on the queue instead of polling `done`.
        while (!done()) {
            auto ran = std::make_shared<std::promise<void>>();
            auto const hasRun = ran->get_future();
            queue().asyncAfter(0.001, [ran] { ran->set_value(); });
            if (hasRun.wait_until(deadline) != std::future_status::ready)
                return false;
            if (Clock::now() > deadline)
                return false;
        }
        return true;
    }

    platform::TimeInterval elapsed() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point const m_start = Clock::now();
    std::unique_ptr<Owner> m_owner = std::make_unique<Owner>();
};

}
