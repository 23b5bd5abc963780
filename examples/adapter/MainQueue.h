#pragma once

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace zelvora::abacus {

/// The main thread's loop: an app calls `run` again and again.
class MainQueue final : public platform::DispatchQueue {
public:
    /// Waits so long for blocks, and runs on the calling thread, the main one, those that are due by then. A block that
    /// submits itself again does not prolong it.
    void run(platform::TimeInterval duration)
    {
        auto const deadline = shared::WorkSchedule::after(duration);
        std::unique_lock lock(m_mutex);
        while (true) {
            while (auto work = m_schedule.takeDue(std::min(Clock::now(), deadline))) {
                lock.unlock();
                work();
                // What the block holds may submit another one while it is destroyed.
                work = nullptr;
                lock.lock();
            }
            if (Clock::now() >= deadline)
                return;
            m_changed.wait_until(lock, std::min(deadline, m_schedule.nextDue().value_or(deadline)));
        }
    }

    // platform::DispatchQueue
    void async(Work work) override { asyncAfter(0, std::move(work)); }
    void asyncAfter(platform::TimeInterval delay, Work work) override
    {
        {
            // The due time is computed under the lock, so that blocks submitted in order are due in order.
            std::scoped_lock const lock(m_mutex);
            m_schedule.add(shared::WorkSchedule::after(delay), std::move(work));
        }
        m_changed.notify_one();
    }

private:
    using Clock = std::chrono::steady_clock;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    shared::WorkSchedule m_schedule;
};

}
