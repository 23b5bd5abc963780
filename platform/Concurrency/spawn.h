#pragma once

#include "platform/Concurrency/DispatchQueue.h"
#include "platform/Concurrency/Task.h"

namespace zelvora::platform {

/// Starts a task on the queue that nobody awaits. It owns itself and goes when it has finished.
void spawn(DispatchQueue& queue, Task<void> task);

}
