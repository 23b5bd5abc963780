#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "ZelvoraContract/DispatchQueueContract.h"
#include "ZelvoraContract/ThreadedQueueHarness.h"

namespace zelvora::tests {

using ThreadPool = ThreadedQueueHarness<shared::ThreadPoolQueue,
    +[](shared::ThreadPoolQueue& queue) -> platform::DispatchQueue& { return queue; }>;

INSTANTIATE_TYPED_TEST_SUITE_P(ThreadPool, DispatchQueueContract, ThreadPool);

}
