#include "ZelvoraIOS/ZelvoraStorage.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/internal/EventQueue.h"
#include "ZelvoraIOS/internal/StoredEntry.h"

namespace zelvora {

namespace {

using internal::StoredEntry;
using platform::Value;

constexpr char const* KEY_SHOP_ID = "shop_id";
constexpr double SHOP_ID_EXPIRATION = 86400.0;

bool isPropertyList(Value const& value)
{
    return !value.isNull() && value.nesting() <= Value::maximumNesting;
}

}

void ZelvoraStorage::set(std::optional<Value> const& value, std::string const& key, std::optional<double> expireSec)
{
    internal::logSet(key, value);
    if (value && !isPropertyList(*value)) {
        ZelvoraLogger::e("set(forKey: " + key + ") refused a value that is not a property list");
        return;
    }
    StoredEntry(key).write(value, expireSec);
}

std::optional<Value> ZelvoraStorage::get(std::string const& key)
{
    return internal::getLogged(key, StoredEntry(key));
}

std::optional<std::string> ZelvoraStorage::getString(std::string const& key)
{
    auto const value = get(key);
    auto const* text = value ? value->text() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

void ZelvoraStorage::remove(std::string const& key)
{
    StoredEntry(key).remove();
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
