#pragma once

#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// Runs both tasks concurrently, each starting on the awaiter's thread, and finishes when both have, on the thread of
/// the later one.
ZELVORA_API Task<void> whenAll(Task<void> first, Task<void> second);

}
