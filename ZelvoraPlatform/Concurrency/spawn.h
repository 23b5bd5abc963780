#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// Starts a task that is not awaited, later on the queue. The task destroys itself when it ends. If the queue is
/// destroyed before the task starts, the task never runs and is not destroyed.
ZELVORA_API void spawn(DispatchQueue& queue, Task<void> task);

}
