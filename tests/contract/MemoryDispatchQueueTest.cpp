#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraContract/DispatchQueueContract.h"

#include <optional>

namespace zelvora::tests {

namespace {

class MemoryQueue final {
public:
    platform::DispatchQueue& queue() { return *m_queue; }
    void destroyQueue() { m_queue.reset(); }

    bool runUntil(std::function<bool()> const& done)
    {
        for (int milliseconds = 0; milliseconds < 30'000; ++milliseconds) {
            do {
                if (done())
                    return true;
            } while (m_queue->runOne());
            m_clock.advance(0.001);
        }
        return false;
    }

    platform::TimeInterval elapsed() const
    {
        return std::chrono::duration<double>(m_clock.steadyNow().time_since_epoch()).count();
    }

private:
    memory::Clock m_clock;
    std::optional<memory::DispatchQueue> m_queue { m_clock };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, DispatchQueueContract, MemoryQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SerialQueueContract, MemoryQueue);

}
