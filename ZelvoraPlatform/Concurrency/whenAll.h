#pragma once

#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// Runs both tasks concurrently and ends when both have ended, on the thread of the later one. Both start on the
/// awaiter's thread: the second one when the first one suspends or ends.
ZELVORA_API Task<void> whenAll(Task<void> first, Task<void> second);

}
