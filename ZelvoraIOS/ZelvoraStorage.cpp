#include "ZelvoraIOS/ZelvoraStorage.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraPlatform/Platform.h"

#include <mutex>

namespace zelvora {

namespace {

using platform::Array;
using platform::Platform;
using platform::Value;

constexpr char const* KEY_SHOP_ID = "shop_id";
constexpr double SHOP_ID_EXPIRATION = 86400.0;
constexpr char const* KEY_EVENT_DATA = "tracking_event";
// An upload holds each event in an array in an object, and JSON nests no deeper than the store does.
constexpr std::size_t EVENT_NESTING = Value::maximumNesting - 2;

platform::UserDefaults& storage()
{
    static auto& s_storage = Platform::current().standardUserDefaults();
    return s_storage;
}

std::string PREFIX()
{
    return "ZelvoraSDK_Storage_" + Platform::current().mainBundle().bundleIdentifier().value_or("unknown") + "_";
}

struct EntryKeys {
    explicit EntryKeys(std::string const& key) : value(PREFIX() + key), timestamp(value + "_ts"), expiry(value + "_exp")
    {
    }

    std::string value;
    std::string timestamp;
    std::string expiry;
};

bool isPropertyList(Value const& value)
{
    return !value.isNull() && value.nesting() <= Value::maximumNesting;
}

bool hasExpired(EntryKeys const& keys)
{
    auto const timestamp = storage().object(keys.timestamp);
    auto const date = timestamp ? timestamp->date() : std::nullopt;
    if (!date)
        return false;
    auto const stored = storage().object(keys.expiry);
    auto const expiry = stored ? stored->number() : std::nullopt;
    if (!expiry)
        return false;
    return *expiry < Platform::current().clock().now().timeIntervalSince(*date);
}

// Each change of the queue is a read and a write of the whole; the page saves events on the main thread while the
// loader's thread removes those that were sent.
std::mutex& queueMutex()
{
    static std::mutex s_mutex;
    return s_mutex;
}

}

void ZelvoraStorage::set(std::optional<Value> const& value, std::string const& key, std::optional<double> expireSec)
{
    ZelvoraLogger::d("set(forKey: " + key + ", value: " + debugDescription(value) + ")");
    if (value && !isPropertyList(*value)) {
        ZelvoraLogger::e("set(forKey: " + key + ") refused a value that is not a property list");
        return;
    }
    EntryKeys const keys(key);
    storage().setObject(value, keys.value);
    if (!expireSec) {
        storage().removeObject(keys.timestamp);
        storage().removeObject(keys.expiry);
        return;
    }
    storage().setObject(Platform::current().clock().now(), keys.timestamp);
    storage().setDouble(*expireSec, keys.expiry);
}

std::optional<Value> ZelvoraStorage::get(std::string const& key)
{
    EntryKeys const keys(key);
    if (hasExpired(keys)) {
        remove(key);
        return std::nullopt;
    }
    auto value = storage().object(keys.value);
    ZelvoraLogger::d("get(forKey: " + key + ", value: " + debugDescription(value) + ")");
    return value;
}

std::optional<std::string> ZelvoraStorage::getString(std::string const& key)
{
    auto const value = get(key);
    auto const* text = value ? value->text() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

void ZelvoraStorage::remove(std::string const& key)
{
    EntryKeys const keys(key);
    storage().removeObject(keys.value);
    storage().removeObject(keys.timestamp);
    storage().removeObject(keys.expiry);
}

void ZelvoraStorage::saveShopId(std::string const& shopId)
{
    set(shopId, KEY_SHOP_ID, SHOP_ID_EXPIRATION);
}

std::optional<std::string> ZelvoraStorage::getValidShopId()
{
    return getString(KEY_SHOP_ID);
}

void ZelvoraStorage::saveEventTrackingData(platform::Dictionary const& event)
{
    if (event.nesting() > EVENT_NESTING) {
        // In the queue it would keep back every later event too.
        ZelvoraLogger::e("saveEventTrackingData refused an event that nests too deep to be uploaded");
        return;
    }
    std::scoped_lock const lock(queueMutex());
    set(getEventTrackingData().appending(event), KEY_EVENT_DATA);
}

Array ZelvoraStorage::getEventTrackingData()
{
    auto const value = get(KEY_EVENT_DATA);
    auto const* events = value ? value->array() : nullptr;
    if (!events || !events->holdsOnly(Value::Kind::Dictionary))
        return {};
    return *events;
}

void ZelvoraStorage::removeEventTrackingData(std::ptrdiff_t count)
{
    if (count < 0) {
        ZelvoraLogger::e("removeEventTrackingData refused a negative count");
        return;
    }
    std::scoped_lock const lock(queueMutex());
    auto const events = getEventTrackingData();
    if (count < static_cast<std::ptrdiff_t>(events.size())) {
        set(events.droppingFirst(static_cast<std::size_t>(count)), KEY_EVENT_DATA);
        return;
    }
    remove(KEY_EVENT_DATA);
}

void ZelvoraStorage::clearEventTrackingData()
{
    std::scoped_lock const lock(queueMutex());
    remove(KEY_EVENT_DATA);
}

}
