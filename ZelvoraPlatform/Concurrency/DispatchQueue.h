#pragma once

#include "ZelvoraPlatform/Concurrency/Block.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::platform {

/// Runs blocks. `async` may be called on any thread and is always later, also on the queue's own thread; a serial queue
/// keeps the order of submission. A block that is never run is destroyed with the queue.
class ZELVORA_API DispatchQueue {
public:
    using Work = Block<void()>;

    virtual ~DispatchQueue() = default;

    virtual void async(Work work) = 0;
    /// Not before `delay` seconds have passed; blocks that fall due together run in the order of submission.
    virtual void asyncAfter(TimeInterval delay, Work work) = 0;
};

}
