#include "ZelvoraAdapters/memory/Foundation/Clock.h"

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"

namespace zelvora::memory {

void Clock::advance(platform::TimeInterval seconds)
{
    std::scoped_lock const lock(m_mutex);
    m_now.timeIntervalSince1970 += seconds;
    // Rounded like the delays of blocks, so that a block is due exactly when its delay has passed.
    m_steadyNow = shared::WorkSchedule::after(seconds, m_steadyNow);
}

void Clock::set(platform::Date now)
{
    std::scoped_lock const lock(m_mutex);
    m_now = now;
}

std::chrono::steady_clock::time_point Clock::steadyNow() const
{
    std::scoped_lock const lock(m_mutex);
    return m_steadyNow;
}

platform::Date Clock::now() const
{
    std::scoped_lock const lock(m_mutex);
    return m_now;
}

}
