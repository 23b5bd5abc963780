#pragma once

#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"

namespace zelvora::gtk {

class TrackingStore;

/// A random identifier that is stored with the app's data, so it identifies one install and nothing else. As on the
/// phone, it is disclosed only after the user has agreed; it is not generated before.
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
