#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string_view>

namespace zelvora::platform {

/// Stops the process after writing "Fatal error: " and the message on standard error. For programming errors only:
/// a broken invariant or a call that the interface forbids. Any thread.
[[noreturn]] ZELVORA_API void fatalError(std::string_view message);

}
