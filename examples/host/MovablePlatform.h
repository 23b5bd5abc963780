#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraAdapters/memory/ForwardingPlatform.h"

#include <atomic>
#include <memory>

namespace zelvora::examples {

/// The Linux platform with a wall clock that can be moved, so that what the SDK keeps for a time expires without a
/// wait. The user has refused to be tracked, so that nothing waits for a person.
class MovablePlatform final : public memory::ForwardingPlatform {
public:
    /// After `gtk_init`.
    explicit MovablePlatform(gtk::HostOptions options);

    /// Moves the clock that the SDK reads. Any thread.
    void passTime(platform::TimeInterval seconds) { m_clock.ahead += seconds; }

    // platform::Platform
    [[nodiscard]] platform::Clock& clock() override { return m_clock; }
    [[nodiscard]] platform::ATTrackingManager& trackingManager() override { return m_trackingManager; }

private:
    struct MovedClock final : platform::Clock {
        explicit MovedClock(MovablePlatform& platform) : owner(platform) { }

        // platform::Clock
        [[nodiscard]] platform::Date now() const override;

        MovablePlatform& owner;
        std::atomic<platform::TimeInterval> ahead = 0;
    };

    struct RefusedTracking final : platform::ATTrackingManager {
        // platform::ATTrackingManager
        [[nodiscard]] platform::ATTrackingAuthorizationStatus trackingAuthorizationStatus() const override;
        void requestTrackingAuthorization(
            platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion) override;
    };

    MovedClock m_clock { *this };
    RefusedTracking m_trackingManager;
};

}
