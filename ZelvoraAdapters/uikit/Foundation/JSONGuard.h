#pragma once

#include <string_view>

namespace zelvora::uikit {

/// Whether the system's JSON reader may be given the bytes: it takes other encodings for UTF-8, some halves of
/// surrogate pairs for characters, and overflows the stack where brackets nest too deep. What else is no JSON, it finds
/// itself.
[[nodiscard]] bool isSafeToReadAsJSON(std::string_view bytes);

}
