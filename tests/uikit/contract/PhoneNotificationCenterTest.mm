#include "ZelvoraAdapters/uikit/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/uikit/Foundation/NotificationCenter.h"
#include "ZelvoraContract/NotificationCenterContract.h"
#include "tests/uikit/doubles/Dispatch.h"

namespace zelvora::tests {

namespace {

class PhoneCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_queue; }
    void runQueue() { doubles::runMainQueue(); }

private:
    uikit::DispatchQueue m_queue { dispatch_get_main_queue() };
    uikit::NotificationCenter m_center;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, NotificationCenterContract, PhoneCenter);

}
