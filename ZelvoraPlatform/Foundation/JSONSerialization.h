#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstdint>
#include <expected>

namespace zelvora::platform {

/// How a text is laid out: compact, or indented for people. Where exactly the blanks are differs between adapters.
enum class JSONWritingOptions : std::uint8_t { None, PrettyPrinted };

/// The platform's JSON reader and writer, UTF-8 only. Any thread.
class ZELVORA_API JSONSerialization {
public:
    virtual ~JSONSerialization() = default;

    /// Whether JSON can represent the value: an array or a dictionary that contains only null markers, booleans, finite
    /// numbers, text and such containers, nested no deeper than `Value::maximumNesting`. Does not check that text is
    /// UTF-8.
    [[nodiscard]] virtual bool isValidJSONObject(Value const& value) const = 0;

    /// Writes compact text, unless pretty-printed. Each number reads back as the same number. Fails if the value is not
    /// a valid JSON object or contains text that is not UTF-8.
    [[nodiscard]] virtual std::expected<Data, Error> data(
        Value const& jsonObject, JSONWritingOptions options) const = 0;

    /// Reads a text whose top level is an array or an object. If a key repeats, the last entry wins. Fails for any
    /// other top level, trailing text, bytes that are not UTF-8, and nesting deeper than `Value::maximumNesting`.
    [[nodiscard]] virtual std::expected<Value, Error> jsonObject(Data const& data) const = 0;
};

}
