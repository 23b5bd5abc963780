#include "ZelvoraAdapters/uikit/Concurrency/DispatchQueue.h"
#include "ZelvoraContract/DispatchQueueContract.h"
#include "tests/uikit/doubles/Dispatch.h"

#include <chrono>

namespace zelvora::tests {

namespace {

class SystemQueue {
public:
    explicit SystemQueue(dispatch_queue_t queue) : m_queue(queue) { }

    platform::DispatchQueue& queue() { return m_queue; }
    bool runUntil(std::function<bool()> const& done) { return doubles::runMainUntil(done); }
    platform::TimeInterval elapsed() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point const m_start = Clock::now();
    uikit::DispatchQueue m_queue;
};

struct MainQueue final : SystemQueue {
    MainQueue() : SystemQueue(dispatch_get_main_queue()) { }
};

struct GlobalQueue final : SystemQueue {
    GlobalQueue() : SystemQueue(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0)) { }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(PhoneMain, DispatchQueueContract, MainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(PhoneMain, SerialQueueContract, MainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(PhoneGlobal, DispatchQueueContract, GlobalQueue);

}
