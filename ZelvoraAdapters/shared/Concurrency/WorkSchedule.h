#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace zelvora::shared {

/// The blocks that a queue has yet to run, ordered by due time and then by the order in which they were added. Not
/// thread-safe: the queue calls it under a lock.
class ZELVORA_API WorkSchedule final {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Work = platform::DispatchQueue::Work;

    WorkSchedule() = default;
    WorkSchedule(WorkSchedule const&) = delete;
    WorkSchedule& operator=(WorkSchedule const&) = delete;
    ~WorkSchedule() { clear(); }

    void add(Time due, Work work);
    /// When the first block is due; absent if there are no blocks.
    [[nodiscard]] std::optional<Time> nextDue() const;
    /// Removes and returns the first block if it is due; otherwise returns an empty one.
    [[nodiscard]] Work takeDue(Time now);

    /// Destroys all blocks without running them, including those that are added by destroying a block. For the queue's
    /// destructor, when no other thread uses the queue and no lock is held.
    void clear();

    [[nodiscard]] std::size_t size() const { return m_blocks.size(); }
    /// The number of blocks that are due.
    [[nodiscard]] std::size_t countDue(Time now) const;

    /// The time `delay` seconds after `now`. A negative delay or NaN counts as none, and ten years are the most.
    [[nodiscard]] static Time after(platform::TimeInterval delay, Time now = std::chrono::steady_clock::now());

private:
    std::map<std::pair<Time, std::uint64_t>, Work> m_blocks;
    std::uint64_t m_nextNumber = 0;
};

}
