#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// Starts a task on the queue that nobody awaits. It owns itself and goes when it has finished.
ZELVORA_API void spawn(DispatchQueue& queue, Task<void> task);

}
