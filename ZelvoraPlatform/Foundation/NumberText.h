#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora::platform {

class Value;

/// The shortest decimal text that reads back as the same number, in every locale. A whole number below 10^16 is its
/// digits, as programs that read integers expect; that is how far the phone writes digits. A number that is not finite
/// is "nan", "inf" or "-inf".
[[nodiscard]] ZELVORA_API std::string numberText(double number);
/// The same for a value that is a number. An integer that no double can hold is its digits.
[[nodiscard]] ZELVORA_API std::string numberText(Value const& number);
/// Appends it to a text that has many of them.
ZELVORA_API void appendNumberText(std::string& text, Value const& number);

}
