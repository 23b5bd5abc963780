#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace zelvora::shared {

void WorkSchedule::add(Time due, Work work)
{
    m_blocks.emplace(std::pair(due, m_nextNumber++), std::move(work));
}

std::optional<WorkSchedule::Time> WorkSchedule::nextDue() const
{
    if (m_blocks.empty())
        return std::nullopt;
    return m_blocks.begin()->first.first;
}

WorkSchedule::Work WorkSchedule::takeDue(Time now)
{
    if (m_blocks.empty() || m_blocks.begin()->first.first > now)
        return nullptr;
    return std::move(m_blocks.extract(m_blocks.begin()).mapped());
}

void WorkSchedule::clear()
{
    // Each block is destroyed outside the map, as destroying it may add another.
    while (!m_blocks.empty())
        auto const unrun = m_blocks.extract(m_blocks.begin());
}

std::size_t WorkSchedule::countDue(Time now) const
{
    auto const firstLater = m_blocks.upper_bound({ now, std::numeric_limits<std::uint64_t>::max() });
    return static_cast<std::size_t>(std::distance(m_blocks.begin(), firstLater));
}

WorkSchedule::Time WorkSchedule::after(platform::TimeInterval delay, Time now)
{
    // The clock counts nanoseconds in 64 bits; a longer delay could overflow it.
    constexpr platform::TimeInterval tenYears = 10.0 * 365 * 24 * 60 * 60;
    platform::TimeInterval const bounded = delay > 0 ? std::min(delay, tenYears) : 0;
    return now + std::chrono::ceil<std::chrono::nanoseconds>(std::chrono::duration<double>(bounded));
}

}
