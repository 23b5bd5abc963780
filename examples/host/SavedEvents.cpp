#include "examples/host/SavedEvents.h"

#include "ZelvoraIOS/ZelvoraStorage.h"

#include <algorithm>
#include <map>

namespace zelvora::examples {

SavedEvents::Arrivals SavedEvents::arrivals(RemoteService& service) const
{
    std::map<std::string, int> counts;
    for (auto const& event : service.collectedEvents())
        ++counts[event.value("eventId", "")];
    Arrivals arrivals;
    for (auto const& id : m_ids) {
        if (counts[id] == 0)
            arrivals.missing.push_back(id);
        else if (counts[id] > 1)
            ++arrivals.repeated;
    }
    return arrivals;
}

bool SavedEvents::isQueued(std::string const& eventId)
{
    auto const events = ZelvoraStorage::getEventTrackingData();
    return std::ranges::any_of(events, [&eventId](auto const& event) {
        auto const* id = event.dictionary()->find("eventId");
        return id && id->text() && *id->text() == eventId;
    });
}

std::size_t SavedEvents::queued()
{
    return ZelvoraStorage::getEventTrackingData().size();
}

}
