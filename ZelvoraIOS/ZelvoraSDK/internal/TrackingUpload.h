#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"

namespace zelvora::internal {

/// Uploads the queue of tracking events to the collector.
class TrackingUpload final {
public:
    explicit TrackingUpload(GuardedProperties const& properties) : m_properties(properties) { }

    /// Sends the oldest events in one batch and removes them, on the loader's queue, once the collector has accepted
    /// them. The outcome is only logged. Any thread. Overlapping calls send the same events twice, and may remove later
    /// events that were never sent.
    void sendTrackingData() const;

private:
    GuardedProperties const& m_properties;
};

}
