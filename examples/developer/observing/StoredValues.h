#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "examples/developer/observing/Json.h"
#include "examples/developer/observing/Text.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zelvora::developer {

/// A value that pages and the SDK keep in the app.
struct StoredValue {
    std::string key;
    Json value;
    /// How long it was stored for, in seconds; absent if it does not expire.
    std::optional<double> expiry;
    /// How much of that is left; below 0 the next read removes the value.
    std::optional<double> secondsLeft;

    bool operator==(StoredValue const&) const = default;
};

/// Reads the SDK's part of the preferences. Other than the SDK's own reads it removes nothing and writes nothing in the
/// log.
class StoredValues final {
public:
    /// `prefix` begins the SDK's keys in the preferences.
    StoredValues(platform::UserDefaults& preferences, std::string prefix)
        : m_preferences(preferences)
        , m_prefix(std::move(prefix))
    {
    }

    /// The prefix of the SDK's keys in an app of this identifier.
    [[nodiscard]] static std::string prefixOf(std::string const& bundleIdentifier);

    /// Of these keys of the preferences, the values there are now, in the order of their keys, without the event queue.
    [[nodiscard]] std::vector<StoredValue> all(std::set<std::string> const& keys, platform::Date now) const;
    [[nodiscard]] std::optional<StoredValue> find(std::string const& key, platform::Date now) const;
    /// The events that wait for upload, oldest first.
    [[nodiscard]] Json events() const;

private:
    platform::UserDefaults& m_preferences;
    std::string m_prefix;
};

/// For people, such as "6 d 23 h".
[[nodiscard]] Text durationText(double seconds);
/// What is left of a value's time, for people.
[[nodiscard]] Text timeLeftText(StoredValue const& value);

}
