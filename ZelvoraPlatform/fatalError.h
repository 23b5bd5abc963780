#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string_view>

namespace zelvora::platform {

/// Writes "Fatal error: " and the message to standard error and aborts the process. For programming errors only: a
/// broken invariant, or a call that an interface forbids. Any thread.
[[noreturn]] ZELVORA_API void fatalError(std::string_view message);

}
