#include "ZelvoraAdapters/skeleton/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/TrackingContract.h"

namespace zelvora::tests {

namespace {

using skeleton::missing;

class SkeletonUser final {
public:
    platform::ATTrackingManager& manager() { return m_manager; }
    void setStatus(platform::ATTrackingAuthorizationStatus) { missing("SkeletonUser::setStatus"); }
    bool isAsking() { missing("SkeletonUser::isAsking"); }
    void answer(bool) { missing("SkeletonUser::answer"); }
    bool runUntil(std::function<bool()> const&) { missing("SkeletonUser::runUntil"); }
    void restart() { missing("SkeletonUser::restart"); }

private:
    skeleton::ATTrackingManager m_manager;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonTracking, TrackingContract, SkeletonUser);

}
