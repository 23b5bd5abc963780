#pragma once

#include "ZelvoraPlatform/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace zelvora::platform {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] ZELVORA_API bool isValidUTF8(std::string_view bytes);

/// The bytes as text; absent if they are not well-formed UTF-8.
[[nodiscard]] ZELVORA_API std::optional<std::string> decodeUTF8(std::string_view bytes);

}
