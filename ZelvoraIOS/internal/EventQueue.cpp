#include "ZelvoraIOS/internal/EventQueue.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraStorage.h"

#include <mutex>

namespace zelvora::internal {

using platform::Array;
using platform::Value;

namespace {

constexpr char const* KEY_EVENT_DATA = "tracking_event";
// An upload puts each event into an array inside an object, and JSON may nest no deeper than the store.
constexpr std::size_t EVENT_NESTING = Value::maximumNesting - 2;

// Each change reads and writes the whole queue. Pages save events on the main thread while the loader's thread removes
// those that were uploaded.
std::mutex& queueMutex()
{
    static std::mutex s_mutex;
    return s_mutex;
}

}

void EventQueue::save(platform::Dictionary const& event)
{
    if (event.nesting() > EVENT_NESTING) {
        // In the queue it would make every upload fail, and so hold up all later events.
        ZelvoraLogger::e("saveEventTrackingData refused an event that nests too deep to be uploaded");
        return;
    }
    std::scoped_lock const lock(queueMutex());
    ZelvoraStorage::set(events().appending(event), KEY_EVENT_DATA);
}

Array EventQueue::events()
{
    auto const value = ZelvoraStorage::get(KEY_EVENT_DATA);
    auto const* events = value ? value->array() : nullptr;
    if (!events || !events->holdsOnly(Value::Kind::Dictionary))
        return {};
    return *events;
}

void EventQueue::removeFirst(std::ptrdiff_t count)
{
    if (count < 0) {
        ZelvoraLogger::e("removeEventTrackingData refused a negative count");
        return;
    }
    std::scoped_lock const lock(queueMutex());
    auto const queued = events();
    if (count < static_cast<std::ptrdiff_t>(queued.size())) {
        ZelvoraStorage::set(queued.droppingFirst(static_cast<std::size_t>(count)), KEY_EVENT_DATA);
        return;
    }
    ZelvoraStorage::remove(KEY_EVENT_DATA);
}

void EventQueue::clear()
{
    std::scoped_lock const lock(queueMutex());
    ZelvoraStorage::remove(KEY_EVENT_DATA);
}

}
