#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/memory/Tracking/ATTrackingManager.h"
#include "ZelvoraContract/TrackingContract.h"

#include <optional>

namespace zelvora::tests {

namespace {

class MemoryTracking final {
public:
    using Status = platform::ATTrackingAuthorizationStatus;

    platform::ATTrackingManager& manager() { return *m_manager; }
    void setStatus(Status status) { m_manager->setStatus(status); }
    bool isAsking() { return m_manager->pendingRequestCount() > 0; }
    void answer(bool allow) { m_manager->answer(allow ? Status::Authorized : Status::Denied); }
    bool runUntil(std::function<bool()> const& done)
    {
        m_queue.runAll();
        return done();
    }
    void restart()
    {
        auto const status = m_manager->trackingAuthorizationStatus();
        m_manager.emplace(m_queue);
        m_manager->setStatus(status);
    }

private:
    memory::Clock m_clock;
    memory::DispatchQueue m_queue { m_clock };
    std::optional<memory::ATTrackingManager> m_manager { std::in_place, m_queue };
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TrackingContract, MemoryTracking);

}
