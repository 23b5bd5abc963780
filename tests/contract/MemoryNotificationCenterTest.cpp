#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/memory/ForwardingNotificationCenter.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraContract/NotificationCenterContract.h"

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

class ForwardedNotificationCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_target.queue(); }
    void runQueue() { m_target.runQueue(); }

private:
    MemoryNotificationCenter m_target;
    memory::ForwardingNotificationCenter m_center { m_target.center() };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, NotificationCenterContract, MemoryNotificationCenter);
INSTANTIATE_TYPED_TEST_SUITE_P(Forwarded, NotificationCenterContract, ForwardedNotificationCenter);

}
