#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <optional>
#include <string>

namespace zelvora::internal {

/// What the preferences contain for one key of `ZelvoraStorage`: the value, the date it was written and its lifetime.
/// The class logs nothing. Any thread.
class StoredEntry final {
public:
    explicit StoredEntry(std::string const& key);

    /// The value, whether or not its lifetime is over.
    [[nodiscard]] std::optional<platform::Value> value() const;
    [[nodiscard]] bool hasExpired() const;
    /// `lifetime` is in seconds.
    void write(std::optional<platform::Value> const& value, std::optional<double> lifetime = std::nullopt) const;
    void remove() const;

private:
    std::string m_valueKey;
    std::string m_timestampKey;
    std::string m_expiryKey;
};

/// Reads the value of this entry and logs the line that every read logs for the key. An expired entry is removed and
/// reported as absent, without a line.
[[nodiscard]] std::optional<platform::Value> getLogged(std::string const& key, StoredEntry const& entry);

/// Logs the line that precedes every write under this key.
void logSet(std::string const& key, std::optional<platform::Value> const& value);

}
