#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>

namespace zelvora::tests {

/// For queues that run on threads of their own. `Owner` makes the queue and ends it with itself; `queueOf` finds it.
template<typename Owner, auto queueOf>
class ThreadedQueueHarness final {
public:
    platform::DispatchQueue& queue() { return queueOf(*m_owner); }
    void destroyQueue() { m_owner.reset(); }

    bool runUntil(std::function<bool()> const& done)
    {
        auto const deadline = Clock::now() + std::chrono::seconds(30);
        // The queue itself says when it has got on, so nothing is asked more often than it can change.
        while (!done()) {
            auto turned = std::make_shared<std::promise<void>>();
            auto const turn = turned->get_future();
            queue().asyncAfter(0.001, [turned] { turned->set_value(); });
            if (turn.wait_until(deadline) != std::future_status::ready)
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
