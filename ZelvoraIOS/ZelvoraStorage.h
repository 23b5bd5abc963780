#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <optional>
#include <string>

namespace zelvora {

/// The SDK's persistent store, in the host app's preferences: values with an optional lifetime, and the queue of
/// tracking events. Any thread.
///
///     ZelvoraStorage::set("light", "theme", 3600);            // for an hour
///     auto const theme = ZelvoraStorage::getString("theme");  // absent after that
///
/// Each key has up to three entries in the preferences, under a prefix that names the app: the value, the date it was
/// written ("_ts") and its lifetime ("_exp"). They are read and written one at a time, so that another thread may see a
/// new value together with the old date. A failure to write to disk is logged by the platform; callers cannot act on
/// it.
class ZELVORA_API ZelvoraStorage final {
public:
    /// Text, a number, a boolean, a date, bytes, or an array or dictionary of these.
    using Value = platform::Value;

    /// Stores a value, or removes what is stored if it is absent. `expireSec` is the lifetime in seconds; without one,
    /// the value never expires, even if an earlier value under the key had a lifetime. A null marker, and a value that
    /// nests deeper than `Value::maximumNesting`, cannot be stored: that logs one error line and changes nothing.
    static void set(
        std::optional<Value> const& value, std::string const& key, std::optional<double> expireSec = std::nullopt);
    /// The stored value. One that is older than its lifetime is removed and reported as absent.
    [[nodiscard]] static std::optional<Value> get(std::string const& key);
    /// The stored value if it is text, else nothing.
    [[nodiscard]] static std::optional<std::string> getString(std::string const& key);
    /// Removes the value with its date and its lifetime. Does nothing if there is none.
    static void remove(std::string const& key);

    /// Stores the shop id for a day.
    static void saveShopId(std::string const& shopId);
    /// The shop id, unless it is older than a day.
    [[nodiscard]] static std::optional<std::string> getValidShopId();

    /// Appends an event to the queue, unchanged. An event that nests too deep to be uploaded, that is deeper than
    /// `Value::maximumNesting` less two, is dropped with one error line.
    static void saveEventTrackingData(platform::Dictionary const& event);
    /// The queue, oldest event first; every element is a dictionary. Empty if nothing, or something else, is stored.
    [[nodiscard]] static platform::Array getEventTrackingData();
    /// Removes the `count` oldest events, or all if there are fewer. A negative count logs one error line and changes
    /// nothing.
    static void removeEventTrackingData(std::ptrdiff_t count);
    /// Empties the queue, also of events that were never sent.
    static void clearEventTrackingData();
};

}
