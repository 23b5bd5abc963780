#pragma once

#include "ZelvoraPlatform/Concurrency/Task.h"

namespace zelvora::platform {

/// Runs both tasks concurrently, each starting on the awaiter's thread, and finishes when both have, on the thread of
/// the later one.
Task<void> whenAll(Task<void> first, Task<void> second);

}
