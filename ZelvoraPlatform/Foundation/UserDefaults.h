#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <optional>
#include <string>

namespace zelvora::platform {

/// The host app's preferences: a persistent, string-keyed store of property-list values. Thread-safe per call.
///
/// A write is durable against the death of the process when the call returns. Null markers inside containers are kept.
/// The store takes no bare null marker and nothing that nests deeper than `Value::maximumNesting`: the caller sees to
/// that. Failures of the medium are logged by the adapter, the new value stays in memory and is written with the next
/// write; callers cannot act on them.
class ZELVORA_API UserDefaults {
public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<Value> object(std::string const& key) = 0;
    /// An absent value deletes the entry.
    virtual void setObject(std::optional<Value> value, std::string const& key) = 0;
    virtual void setDouble(double number, std::string const& key) = 0;
    virtual void removeObject(std::string const& key) = 0;
};

}
