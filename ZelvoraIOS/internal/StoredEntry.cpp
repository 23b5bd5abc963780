#include "ZelvoraIOS/internal/StoredEntry.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/internal/joined.h"
#include "ZelvoraPlatform/Platform.h"

namespace zelvora::internal {

using platform::Platform;
using platform::Value;

namespace {

platform::UserDefaults& storage()
{
    static auto& s_storage = Platform::current().standardUserDefaults();
    return s_storage;
}

std::string prefixed(std::string const& key)
{
    auto const bundleIdentifier = Platform::current().mainBundle().bundleIdentifier();
    return joined({ "ZelvoraSDK_Storage_", bundleIdentifier ? *bundleIdentifier : "unknown", "_", key });
}

}

StoredEntry::StoredEntry(std::string const& key)
    : m_valueKey(prefixed(key))
    , m_timestampKey(joined({ m_valueKey, "_ts" }))
    , m_expiryKey(joined({ m_valueKey, "_exp" }))
{
}

std::optional<Value> StoredEntry::value() const
{
    return storage().object(m_valueKey);
}

bool StoredEntry::hasExpired() const
{
    auto const timestamp = storage().object(m_timestampKey);
    auto const date = timestamp ? timestamp->date() : std::nullopt;
    if (!date)
        return false;
    auto const stored = storage().object(m_expiryKey);
    auto const expiry = stored ? stored->number() : std::nullopt;
    if (!expiry)
        return false;
    return *expiry < Platform::current().clock().now().timeIntervalSince(*date);
}

void StoredEntry::write(std::optional<Value> const& value, std::optional<double> lifetime) const
{
    storage().setObject(value, m_valueKey);
    if (!lifetime) {
        storage().removeObject(m_timestampKey);
        storage().removeObject(m_expiryKey);
        return;
    }
    storage().setObject(Platform::current().clock().now(), m_timestampKey);
    storage().setDouble(*lifetime, m_expiryKey);
}

void StoredEntry::remove() const
{
    storage().removeObject(m_valueKey);
    storage().removeObject(m_timestampKey);
    storage().removeObject(m_expiryKey);
}

std::optional<Value> getLogged(std::string const& key, StoredEntry const& entry)
{
    if (entry.hasExpired()) {
        entry.remove();
        return std::nullopt;
    }
    auto value = entry.value();
    ZelvoraLogger::d(joined({ "get(forKey: ", key, ", value: ", debugDescription(value), ")" }));
    return value;
}

void logSet(std::string const& key, std::optional<Value> const& value)
{
    ZelvoraLogger::d(joined({ "set(forKey: ", key, ", value: ", debugDescription(value), ")" }));
}

}
