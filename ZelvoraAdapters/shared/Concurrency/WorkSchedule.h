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

/// What a queue has yet to run, in the order in which it falls due; blocks due at the same moment stand in the order in
/// which they were added. Not guarded: its queue holds a lock around every call.
class ZELVORA_API WorkSchedule final {
public:
    using Moment = std::chrono::steady_clock::time_point;
    using Work = platform::DispatchQueue::Work;

    WorkSchedule() = default;
    WorkSchedule(WorkSchedule const&) = delete;
    WorkSchedule& operator=(WorkSchedule const&) = delete;
    ~WorkSchedule() { clear(); }

    void add(Moment due, Work work);
    /// When the first block falls due; absent where there is none.
    [[nodiscard]] std::optional<Moment> nextDue() const;
    /// The first block, where it is due by now; else an empty one.
    [[nodiscard]] Work takeDue(Moment now);

    /// Destroys all blocks unrun, also those added by what a block owned while it goes. For the end of a queue, when no
    /// other thread uses it and no lock is held.
    void clear();

    /// How many blocks there are, and how many of them are due by now.
    [[nodiscard]] std::size_t size() const { return m_blocks.size(); }
    [[nodiscard]] std::size_t countDue(Moment now) const;

    /// The moment at which `delay` seconds have passed; a delay that makes no sense is none.
    [[nodiscard]] static Moment after(platform::TimeInterval delay, Moment now = std::chrono::steady_clock::now());

private:
    std::map<std::pair<Moment, std::uint64_t>, Work> m_blocks;
    std::uint64_t m_nextNumber = 0;
};

}
