#pragma once

#include <string_view>

namespace zelvora::uikit {

/// Whether the system's JSON reader may be given the bytes: it takes other encodings for UTF-8, some halves of
/// surrogate pairs for characters, and overflows the stack where brackets nest too deep. The reader itself reports all
/// other text that is not JSON.
[[nodiscard]] bool isSafeToReadAsJSON(std::string_view bytes);

}
