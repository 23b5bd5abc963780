#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

DispatchQueue::DispatchQueue(Clock& clock) : m_clock(clock), m_schedule(std::make_unique<shared::WorkSchedule>()) { }

DispatchQueue::~DispatchQueue() = default;

bool DispatchQueue::runOne()
{
    Work work;
    {
        std::scoped_lock const lock(m_mutex);
        work = m_schedule->takeDue(m_clock.steadyNow());
    }
    if (!work)
        return false;
    work();
    return true;
}

std::size_t DispatchQueue::runAll()
{
    std::size_t count = 0;
    while (runOne()) {
        if (++count > runawayLimit)
            platform::fatalError("a queue does not come to rest: its blocks submit blocks without end");
    }
    return count;
}

std::size_t DispatchQueue::pendingCount() const
{
    std::scoped_lock const lock(m_mutex);
    return m_schedule->countDue(m_clock.steadyNow());
}

std::size_t DispatchQueue::delayedCount() const
{
    std::scoped_lock const lock(m_mutex);
    return m_schedule->size() - m_schedule->countDue(m_clock.steadyNow());
}

void DispatchQueue::async(Work work)
{
    asyncAfter(0, std::move(work));
}

void DispatchQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    std::scoped_lock const lock(m_mutex);
    m_schedule->add(shared::WorkSchedule::after(delay, m_clock.steadyNow()), std::move(work));
}

}
