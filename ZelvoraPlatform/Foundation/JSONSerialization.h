#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstdint>
#include <expected>

namespace zelvora::platform {

enum class JSONWritingOptions : std::uint8_t { None, PrettyPrinted };

/// The platform's JSON reader and writer. Any thread.
class ZELVORA_API JSONSerialization {
public:
    virtual ~JSONSerialization() = default;

    /// Whether the value can be written: an array or a dictionary with nothing in it but null markers, booleans, finite
    /// numbers, text and such containers, nested no deeper than `Value::maximumNesting`.
    [[nodiscard]] virtual bool isValidJSONObject(Value const& value) const = 0;

    /// Compact unless pretty-printed. Numbers read back as the same number. Fails for what is not valid, and for text
    /// that is not UTF-8.
    [[nodiscard]] virtual std::expected<Data, Error> data(
        Value const& jsonObject, JSONWritingOptions options) const = 0;

    /// Reads a text whose top level is an array or an object; anything else, trailing text, and nesting deeper than
    /// `Value::maximumNesting` are errors.
    [[nodiscard]] virtual std::expected<Value, Error> jsonObject(Data const& data) const = 0;
};

}
