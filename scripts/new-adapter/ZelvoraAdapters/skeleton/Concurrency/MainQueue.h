#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

namespace zelvora::skeleton {

/// Blocks run on the main thread, one at a time, when the platform's run loop gets to them. Where there is no such
/// loop, `run` is the loop.
class MainQueue final : public platform::DispatchQueue {
public:
    /// Lets the run loop turn for so long, on the main thread: the blocks that are due by then run inside this call,
    /// and one that submits itself again does not prolong it. Nothing but `first-use` and the tests call it, as an app
    /// runs its loop itself.
    void run(platform::TimeInterval) { missing("MainQueue::run"); }

    // platform::DispatchQueue
    void async(Work) override { missing("MainQueue::async"); }
    void asyncAfter(platform::TimeInterval, Work) override { missing("MainQueue::asyncAfter"); }
};

}
