#pragma once

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zelvora::shared {

/// The first byte of an encoded value. Part of the file format.
enum class ValueTag : std::uint8_t { Null, False, True, Number, Text, Date, Data, Array, Dictionary, Unsigned, Signed };

/// Encodes a value so that it reads back exactly: its kind, the bits of its numbers, the order of its elements.
void appendValue(std::string& out, platform::Value const& value);

/// The beginning of an encoded array; the encoded elements must follow.
void appendArrayPrefix(std::string& out, std::size_t count);

/// Absent if the bytes are not a value, or one nested deeper than `nesting`.
[[nodiscard]] std::optional<platform::Value> readValue(
    ByteReader& in, std::size_t nesting = platform::Value::maximumNesting);

/// What is known of an encoded value without making it.
struct ValueShape {
    platform::Value::Kind kind = platform::Value::Kind::Null;
    /// As `Value::nesting`, or more if the bytes repeat a key.
    std::size_t nesting = 0;
};

/// Reads past the value that `readValue` would make; absent if it would make none.
[[nodiscard]] std::optional<ValueShape> skipValue(
    ByteReader& in, std::size_t nesting = platform::Value::maximumNesting);

}
