#pragma once

#include "ZelvoraPlatform/Concurrency/Block.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::platform {

/// Runs blocks asynchronously. Any thread may submit them, the queue's own included. A serial queue runs one block at a
/// time, in the order of submission; a concurrent queue starts them in that order and may run several at once. Blocks
/// that have not started when the queue is destroyed are destroyed with it; a block that is destroyed may submit
/// another one, which is then destroyed too. A block must not be empty.
class ZELVORA_API DispatchQueue {
public:
    /// What a queue runs once, and destroys when it has run.
    using Work = Block<void()>;

    virtual ~DispatchQueue() = default;

    /// Never runs the block inside this call.
    virtual void async(Work work) = 0;
    /// Runs the block no earlier than `delay` seconds from now. Blocks that are due at the same time run in the order
    /// of submission. A negative delay and NaN count as 0, which is not inside this call either; an infinite delay
    /// never ends.
    virtual void asyncAfter(TimeInterval delay, Work work) = 0;
};

}
