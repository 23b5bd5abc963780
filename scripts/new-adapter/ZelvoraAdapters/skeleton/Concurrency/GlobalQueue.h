#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

namespace zelvora::skeleton {

/// Blocks run on other threads than the main one, several at once. `ZelvoraAdapters/shared` has such a queue:
/// `using GlobalQueue = shared::ThreadPoolQueue;` is all of it then.
class GlobalQueue final : public platform::DispatchQueue {
public:
    // platform::DispatchQueue
    void async(Work) override { missing("GlobalQueue::async"); }
    void asyncAfter(platform::TimeInterval, Work) override { missing("GlobalQueue::asyncAfter"); }
};

}
