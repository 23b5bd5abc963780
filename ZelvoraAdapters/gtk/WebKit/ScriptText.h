#pragma once

#include <string>
#include <string_view>

namespace zelvora::gtk {

/// A number as the engine writes it, whatever the locale; also "NaN", "Infinity" and "-Infinity".
[[nodiscard]] double scriptNumber(std::string_view text);

/// The text that a well-formed JSON string literal stands for, as UTF-8; half a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string unquoteScriptText(std::string_view literal);

}
