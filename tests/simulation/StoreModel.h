#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::simulation {

using Lines = std::vector<std::string>;

/// What the preferences must hold: values with an expiry, and the queue of events. Each operation appends the effects
/// that it must have.
class StoreModel final {
public:
    using Value = platform::Value;
    using Entries = std::map<std::string, Value>;

    StoreModel(std::optional<std::string> const& bundleIdentifier, Entries entries);

    void setNow(platform::Date now) { m_now = now; }

    void set(std::optional<Value> const& value, std::string const& key, std::optional<double> expiry, Lines& lines);
    std::optional<Value> get(std::string const& key, Lines& lines);
    void remove(std::string const& key, Lines& lines);

    platform::Array events(Lines& lines);
    void saveEvent(platform::Dictionary const& event, Lines& lines);
    /// Removes the oldest events and returns them.
    platform::Array removeEvents(std::size_t count, Lines& lines);

    [[nodiscard]] Entries const& entries() const { return m_entries; }
    /// Replaces what is modelled, after an app that died in the middle of an operation.
    void adopt(Entries entries) { m_entries = std::move(entries); }
    [[nodiscard]] std::string const& prefix() const { return m_prefix; }
    /// When entries expire, for tests of that very moment.
    [[nodiscard]] std::vector<double> momentsOfExpiry() const;
    /// The queue as it is, without reading it.
    [[nodiscard]] platform::Array queued() const;

private:
    [[nodiscard]] Value const* find(std::string const& fullKey) const;
    void write(std::string const& fullKey, Value value, Lines& lines);
    void erase(std::string const& fullKey, Lines& lines);

    std::string m_prefix;
    Entries m_entries;
    platform::Date m_now;
};

}
