#include "ZelvoraAdapters/skeleton/Concurrency/MainQueue.h"

#include "ZelvoraContract/DispatchQueueContract.h"

#include <chrono>
#include <functional>
#include <optional>

namespace zelvora::tests {

namespace {

class SkeletonMainQueue final {
public:
    platform::DispatchQueue& queue() { return *m_queue; }
    // A queue of the system's has none of this.
    void destroyQueue() { m_queue.reset(); }
    bool runUntil(std::function<bool()> const& done)
    {
        constexpr platform::TimeInterval patience = 30;
        auto const deadline = elapsed() + patience;
        while (!done() && elapsed() < deadline)
            m_queue->run(0.001);
        return done();
    }
    platform::TimeInterval elapsed() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_start = Clock::now();
    std::optional<skeleton::MainQueue> m_queue { std::in_place };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonMainQueue, DispatchQueueContract, SkeletonMainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonMainQueue, SerialQueueContract, SkeletonMainQueue);

}
