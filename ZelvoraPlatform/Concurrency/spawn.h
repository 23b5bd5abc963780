#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Concurrency/Task.h"

namespace zelvora::platform {

/// Starts a task on the queue that nobody awaits. It owns itself and goes when it has finished.
void spawn(DispatchQueue& queue, Task<void> task);

}
