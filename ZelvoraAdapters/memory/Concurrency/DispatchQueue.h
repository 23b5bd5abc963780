#pragma once

#include "ZelvoraAdapters/memory/Foundation/Clock.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"

#include <cstddef>
#include <memory>
#include <mutex>

namespace zelvora::shared {
class WorkSchedule;
}

namespace zelvora::memory {

/// A serial queue that runs by hand: a block runs inside `runOne` or `runAll`, on the calling thread. Any thread; two
/// threads that run one queue at once are two workers of a concurrent queue.
class ZELVORA_API DispatchQueue final : public platform::DispatchQueue {
public:
    /// How many blocks `runAll` runs before it takes the queue for a runaway loop.
    static constexpr std::size_t runawayLimit = 100'000;

    /// The clock, which must outlive the queue, says which delayed blocks are due.
    explicit DispatchQueue(Clock& clock);
    ~DispatchQueue() override;
    DispatchQueue(DispatchQueue const&) = delete;
    DispatchQueue& operator=(DispatchQueue const&) = delete;

    /// Runs the first block that is due, and returns whether there was one.
    bool runOne();
    /// Runs blocks, including those that blocks submit, until none is due, and returns how many ran. More than
    /// `runawayLimit` blocks stop the process.
    std::size_t runAll();

    /// How many blocks are due now.
    [[nodiscard]] std::size_t pendingCount() const;
    /// How many blocks become due only when the clock is advanced.
    [[nodiscard]] std::size_t delayedCount() const;
    /// Whether no block is due.
    [[nodiscard]] bool isEmpty() const { return pendingCount() == 0; }

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    Clock& m_clock;
    std::mutex mutable m_mutex;
    std::unique_ptr<shared::WorkSchedule> m_schedule;
};

}
