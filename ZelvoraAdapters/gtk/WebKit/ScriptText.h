#pragma once

#include <string>
#include <string_view>

namespace zelvora::gtk {

/// Parses a number as the engine writes it, in any locale; also "NaN", "Infinity" and "-Infinity".
[[nodiscard]] double scriptNumber(std::string_view text);

/// Decodes a well-formed JSON string literal to UTF-8; a lone surrogate becomes U+FFFD.
[[nodiscard]] std::string unquoteScriptText(std::string_view literal);

}
