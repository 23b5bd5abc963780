#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "tests/contract/NotificationCenterContract.h"

namespace zelvora::tests {

namespace {

class MemoryNotificationCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_queue; }
    void runQueue() { m_queue.runAll(); }

private:
    memory::Clock m_clock;
    memory::DispatchQueue m_queue { m_clock };
    shared::NotificationCenter m_center;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, NotificationCenterContract, MemoryNotificationCenter);

}
