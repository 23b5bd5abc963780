#include "ZelvoraIOS/ZelvoraStorage.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/internal/EventQueue.h"
#include "ZelvoraPlatform/Platform.h"

namespace zelvora {

namespace {

using platform::Platform;
using platform::Value;

constexpr char const* KEY_SHOP_ID = "shop_id";
constexpr double SHOP_ID_EXPIRATION = 86400.0;

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
    internal::EventQueue::save(event);
}

platform::Array ZelvoraStorage::getEventTrackingData()
{
    return internal::EventQueue::events();
}

void ZelvoraStorage::removeEventTrackingData(std::ptrdiff_t count)
{
    internal::EventQueue::removeFirst(count);
}

void ZelvoraStorage::clearEventTrackingData()
{
    internal::EventQueue::clear();
}

}
