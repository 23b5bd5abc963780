#include "ZelvoraAdapters/skeleton/Foundation/NotificationCenter.h"

#include "ZelvoraAdapters/skeleton/Concurrency/MainQueue.h"
#include "ZelvoraContract/NotificationCenterContract.h"

namespace zelvora::tests {

namespace {

class SkeletonNotificationCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_queue; }
    void runQueue() { m_queue.run(0.001); }

private:
    skeleton::NotificationCenter m_center;
    skeleton::MainQueue m_queue;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonNotificationCenter, NotificationCenterContract, SkeletonNotificationCenter);

}
