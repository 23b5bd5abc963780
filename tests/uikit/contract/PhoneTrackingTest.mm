#include "ZelvoraAdapters/uikit/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/uikit/Tracking/ATTrackingManager.h"
#include "ZelvoraContract/TrackingContract.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/Tracking.h"

#include <memory>

namespace zelvora::tests {

namespace {

class PhoneUser final {
public:
    platform::ATTrackingManager& manager() { return *m_manager; }
    void setStatus(platform::ATTrackingAuthorizationStatus status)
    {
        doubles::setTrackingStatus(static_cast<ATTrackingManagerAuthorizationStatus>(status));
    }
    bool isAsking() { return doubles::isAskingToTrack(); }
    void answer(bool allow) { doubles::answerTracking(allow); }
    bool runUntil(std::function<bool()> const& done) { return doubles::runMainUntil(done); }
    void restart()
    {
        m_manager.reset();
        m_manager = std::make_unique<uikit::ATTrackingManager>();
    }

private:
    std::unique_ptr<uikit::ATTrackingManager> m_manager = std::make_unique<uikit::ATTrackingManager>();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, TrackingContract, PhoneUser);

TEST(ASIdentifierManagerTest, TheIdentifierIsTheSystemsInUpperCase)
{
    doubles::setAdvertisingIdentifier("01234567-89AB-CDEF-0123-456789ABCDEF");
    EXPECT_EQ(uikit::ASIdentifierManager().advertisingIdentifier(), "01234567-89AB-CDEF-0123-456789ABCDEF");
}

}
