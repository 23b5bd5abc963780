#include "ZelvoraAdapters/gtk/Tracking/ASIdentifierManager.h"

#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"

namespace zelvora::gtk {

ASIdentifierManager::ASIdentifierManager(TrackingStore& store) : m_store(store) { }

std::string ASIdentifierManager::advertisingIdentifier() const
{
    if (m_store.status() != platform::ATTrackingAuthorizationStatus::Authorized)
        return "00000000-0000-0000-0000-000000000000";
    return m_store.identifier();
}

}
