#include "ZelvoraIOS/internal/EventQueue.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraIOS/internal/StoredEntry.h"

#include <mutex>
#include <optional>

namespace zelvora::internal {

using platform::Array;
using platform::Value;

namespace {

constexpr char const* KEY_EVENT_DATA = "tracking_event";
// An upload puts each event into an array inside an object, and JSON may nest no deeper than the store.
constexpr std::size_t EVENT_NESTING = Value::maximumNesting - 2;

// Each change reads and writes the whole queue. Pages save events on the main thread while the loader's thread removes
// those that were uploaded. Recursive for observers of the preferences.
std::recursive_mutex& queueMutex()
{
    static std::recursive_mutex s_mutex;
    return s_mutex;
}

Array eventsIn(std::optional<Value> const& value)
{
    auto const* events = value ? value->array() : nullptr;
    if (!events || !events->holdsOnly(Value::Kind::Dictionary))
        return {};
    return *events;
}

bool areOneVersion(Array const& a, Array const& b)
{
    auto const difference = a.differenceFrom(b);
    return difference && difference->dropped == 0 && difference->firstAppended == a.size();
}

// Replaces the queue by what `change` makes of it; an absent result removes the entry. The host's log may be slow or
// change the queue itself, so the lines are written before the queue is locked. If the queue changes in between, they
// describe it as it was before that.
template<typename Change>
void changeQueue(Change const& change)
{
    StoredEntry const entry(KEY_EVENT_DATA);
    auto const seen = eventsIn(getLogged(KEY_EVENT_DATA, entry));
    std::optional<Value> changed = change(seen);
    if (changed)
        logSet(KEY_EVENT_DATA, changed);

    std::scoped_lock const lock(queueMutex());
    // Appending to one version twice would copy it.
    if (auto const queued = eventsIn(entry.value()); !areOneVersion(queued, seen))
        changed = change(queued);
    if (changed)
        entry.write(changed);
    else
        entry.remove();
}

}

void EventQueue::save(platform::Dictionary const& event)
{
    if (event.nesting() > EVENT_NESTING) {
        // In the queue it would make every upload fail, and so hold up all later events.
        ZelvoraLogger::e("saveEventTrackingData refused an event that nests too deep to be uploaded");
        return;
    }
    changeQueue([&event](Array const& queued) { return std::optional(queued.appending(event)); });
}

Array EventQueue::events()
{
    return eventsIn(ZelvoraStorage::get(KEY_EVENT_DATA));
}

void EventQueue::removeFirst(std::ptrdiff_t count)
{
    if (count < 0) {
        ZelvoraLogger::e("removeEventTrackingData refused a negative count");
        return;
    }
    changeQueue([count](Array const& queued) -> std::optional<Array> {
        if (count >= static_cast<std::ptrdiff_t>(queued.size()))
            return std::nullopt;
        return queued.droppingFirst(static_cast<std::size_t>(count));
    });
}

void EventQueue::clear()
{
    std::scoped_lock const lock(queueMutex());
    StoredEntry(KEY_EVENT_DATA).remove();
}

}
