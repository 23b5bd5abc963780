#pragma once

#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"

namespace zelvora::gtk {

class TrackingStore;

/// A random identifier that is kept with the app's data, so it tells one install from another and nothing else. As on
/// the phone it is given away only once the user has agreed, and not made before.
class ASIdentifierManager final : public platform::ASIdentifierManager {
public:
    /// The store outlives the manager.
    explicit ASIdentifierManager(TrackingStore& store);

    // platform::ASIdentifierManager
    [[nodiscard]] std::string advertisingIdentifier() const override;

private:
    TrackingStore& m_store;
};

}
