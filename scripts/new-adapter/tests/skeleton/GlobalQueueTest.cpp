#include "ZelvoraAdapters/skeleton/Concurrency/GlobalQueue.h"

#include "ZelvoraContract/DispatchQueueContract.h"
#include "ZelvoraContract/ThreadedQueueHarness.h"

namespace zelvora::tests {

namespace {

using SkeletonGlobalQueue = ThreadedQueueHarness<skeleton::GlobalQueue,
    +[](skeleton::GlobalQueue& queue) -> platform::DispatchQueue& { return queue; }>;

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonGlobalQueue, DispatchQueueContract, SkeletonGlobalQueue);

}
