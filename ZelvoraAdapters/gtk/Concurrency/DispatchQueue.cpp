#include "ZelvoraAdapters/gtk/Concurrency/DispatchQueue.h"

#include "ZelvoraAdapters/gtk/GLib/ReadyTimeSource.h"
#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <chrono>
#include <utility>

namespace zelvora::gtk {

DispatchQueue::DispatchQueue(GMainContext* context)
    : m_source(attach(makeReadyTimeSource(), [this] { runNext(); }, context))
{
    g_source_set_name(m_source.get(), "zelvora main queue");
}

DispatchQueue::~DispatchQueue()
{
    // Before the blocks, which may use the queue as they are destroyed.
    g_source_destroy(m_source.get());
    m_schedule.clear();
}

void DispatchQueue::async(Work work)
{
    asyncAfter(0, std::move(work));
}

void DispatchQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    // The time is read under the lock, so that blocks run in the order of submission.
    std::scoped_lock const lock(m_mutex);
    m_schedule.add(shared::WorkSchedule::after(delay), std::move(work));
    wakeWhenNextIsDue();
}

void DispatchQueue::runNext()
{
    Work work;
    {
        std::scoped_lock const lock(m_mutex);
        work = m_schedule.takeDue(std::chrono::steady_clock::now());
        wakeWhenNextIsDue();
    }
    if (work)
        work();
}

void DispatchQueue::wakeWhenNextIsDue()
{
    using namespace std::chrono;
    // GLib's monotonic clock is the steady clock, in whole microseconds.
    auto const due = m_schedule.nextDue();
    g_source_set_ready_time(m_source.get(), due ? ceil<microseconds>(due->time_since_epoch()).count() : -1);
}

}
