#pragma once

#include "ZelvoraAdapters/shared/Journal/ByteReader.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zelvora::shared {

/// The byte that a value begins with in the journal. Part of the file format.
enum class ValueTag : std::uint8_t { Null, False, True, Number, Text, Date, Data, Array, Dictionary };

/// A value as bytes that read back as the same value: its kind, the bits of its numbers, the order of its elements.
void appendValue(std::string& out, platform::Value const& value);

/// What the encoding of an array begins with; its elements follow.
void appendArrayPrefix(std::string& out, std::size_t count);

/// Absent where the bytes are no value, or one that nests deeper than `nesting`.
[[nodiscard]] std::optional<platform::Value> readValue(
    ByteReader& in, std::size_t nesting = platform::Value::maximumNesting);

}
