#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"

#include <chrono>
#include <utility>

namespace zelvora::shared {

ThreadPoolQueue::ThreadPoolQueue(std::size_t threadCount) : m_schedule(std::make_unique<WorkSchedule>())
{
    for (std::size_t i = 0; i < threadCount; ++i)
        m_threads.emplace_back([this] { run(); });
}

ThreadPoolQueue::~ThreadPoolQueue()
{
    {
        std::scoped_lock const lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    for (auto& thread : m_threads)
        thread.join();
    m_schedule->clear();
}

void ThreadPoolQueue::async(Work work)
{
    asyncAfter(0, std::move(work));
}

void ThreadPoolQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    {
        // The due time is computed under the lock, so that blocks submitted in order are due in order.
        std::scoped_lock const lock(m_mutex);
        m_schedule->add(WorkSchedule::after(delay), std::move(work));
    }
    // Wakes all threads, as those that continue to wait may have to wait for an earlier time.
    m_changed.notify_all();
}

void ThreadPoolQueue::run()
{
    while (auto work = waitForWork())
        work();
}

ThreadPoolQueue::Work ThreadPoolQueue::waitForWork()
{
    std::unique_lock lock(m_mutex);
    while (!m_isEnding) {
        if (auto work = m_schedule->takeDue(std::chrono::steady_clock::now()))
            return work;
        if (auto const due = m_schedule->nextDue())
            m_changed.wait_until(lock, *due);
        else
            m_changed.wait(lock);
    }
    return nullptr;
}

}
