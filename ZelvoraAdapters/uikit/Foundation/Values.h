#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#import <Foundation/Foundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Conversions between the system's objects and ours. Any thread.
namespace zelvora::uikit {

/// How a null marker is written: as the system's own null, or as a dictionary that the preferences accept.
enum class Nulls : std::uint8_t { Native, Reserved };

/// Absent (nil) if the bytes are not UTF-8. A NUL is kept.
[[nodiscard]] NSString* stringOf(std::string_view text);

/// The text as UTF-8; empty for nil. A lone surrogate becomes U+FFFD.
[[nodiscard]] std::string textOf(NSString* string);

/// Absent (nil) if a text in the value is not UTF-8, or if the value nests deeper than `Value::maximumNesting`.
[[nodiscard]] id objectOf(platform::Value const& value, Nulls nulls = Nulls::Native);

/// Absent for nil, and if the object or one inside it is of a class that no `Value` stands for, a key is not text, or
/// the containers nest deeper than `Value::maximumNesting`. Only the system's two booleans are booleans; every other
/// number is a double, or exact if it is an integer that no double can hold.
[[nodiscard]] std::optional<platform::Value> valueOf(id object, Nulls nulls = Nulls::Native);

}
