#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zelvora::shared {

class WorkSchedule;

/// A concurrent queue with threads of its own. Blocks start in the order in which they are due and may run
/// concurrently. The destructor waits for running blocks and destroys the others without running them. It must not run
/// on one of the queue's threads.
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
    std::unique_ptr<WorkSchedule> m_schedule;
    bool m_isEnding = false;
    std::vector<std::thread> m_threads;
};

}
