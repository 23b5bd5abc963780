#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <optional>
#include <string>

namespace zelvora {

/// The SDK's persistent store, in the host app's preferences: values with an optional lifetime, and the queue of
/// tracking events. Any thread.
///
/// A key K occupies up to three entries, under a prefix that names the app: the value, its date ("_ts") and its
/// lifetime ("_exp"). They are written and read one by one, so that a reader on another thread may see a new value with
/// the old date between them.
class ZELVORA_API ZelvoraStorage final {
public:
    using Value = platform::Value;

    /// Stores a value; absence deletes it. `expireSec` is its lifetime in seconds, kept as given; without one the value
    /// never expires, whatever was written before. A null marker, and a value that nests deeper than
    /// `Value::maximumNesting`, is no property list: it is refused with one error line, and what was stored stays.
    static void set(
        std::optional<Value> const& value, std::string const& key, std::optional<double> expireSec = std::nullopt);
    /// The value, unless it is older than its lifetime: then it is deleted.
    [[nodiscard]] static std::optional<Value> get(std::string const& key);
    /// The value where it is text.
    [[nodiscard]] static std::optional<std::string> getString(std::string const& key);
    static void remove(std::string const& key);

    /// Keeps the shop id for a day.
    static void saveShopId(std::string const& shopId);
    [[nodiscard]] static std::optional<std::string> getValidShopId();

    /// Appends an event to the queue, exactly as it is. One that nests deeper than an upload can hold, two levels less
    /// than `Value::maximumNesting`, is refused with one error line, and the queue stays.
    static void saveEventTrackingData(platform::Dictionary const& event);
    /// The queue, oldest event first; every element is a dictionary. Empty where there is none, or where something else
    /// is stored.
    [[nodiscard]] static platform::Array getEventTrackingData();
    /// Drops the oldest events. A negative count is refused with one error line.
    static void removeEventTrackingData(std::ptrdiff_t count);
    static void clearEventTrackingData();
};

}
