#pragma once

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

namespace zelvora::shared {

/// A concurrent queue on threads of its own. Blocks start in the order in which they fall due and may run at the same
/// time as one another. The destructor waits for the blocks that are running and destroys the others unrun, so it must
/// not be called on one of the queue's threads.
class ZELVORA_API ThreadPoolQueue final : public platform::DispatchQueue {
public:
    explicit ThreadPoolQueue(std::size_t threadCount = 2);
    ThreadPoolQueue(ThreadPoolQueue const&) = delete;
    ThreadPoolQueue& operator=(ThreadPoolQueue const&) = delete;
    ~ThreadPoolQueue() override;

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    void run();
    [[nodiscard]] Work waitForWork();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    WorkSchedule m_schedule;
    bool m_isEnding = false;
    std::vector<std::thread> m_threads;
};

}
