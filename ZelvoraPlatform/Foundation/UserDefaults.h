#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <optional>
#include <string>

namespace zelvora::platform {

/// The host app's preferences: a persistent, string-keyed store of property-list values. Any thread; each call is
/// atomic, a sequence of calls is not.
///
/// When a write returns, every reader in the process sees the value. How soon it survives the death of the process is
/// up to the platform's own store: the phone's hands it to another process; an adapter that keeps its own store writes
/// it before the call returns, and then only a power cut may lose the latest writes. An adapter's own store logs a
/// failure to write; the new value is kept in memory and written with the next write. Callers could not act on such a
/// failure, so it is not reported.
///
/// The caller must not store a bare null marker or a value that nests deeper than `Value::maximumNesting`. Null markers
/// inside containers are kept.
class ZELVORA_API UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The value stored last under the key, if any.
    [[nodiscard]] virtual std::optional<Value> object(std::string const& key) = 0;
    /// Replaces the value under the key. An absent value removes the entry.
    virtual void setObject(std::optional<Value> value, std::string const& key) = 0;
    /// The same as `setObject` with a number.
    virtual void setDouble(double number, std::string const& key) = 0;
    /// Does nothing if there is no entry.
    virtual void removeObject(std::string const& key) = 0;
};

}
