#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "tests/contract/DispatchQueueContract.h"
#include "tests/contract/ThreadedQueueHarness.h"

namespace zelvora::tests {

using ThreadPool = ThreadedQueueHarness<shared::ThreadPoolQueue,
    +[](shared::ThreadPoolQueue& queue) -> platform::DispatchQueue& { return queue; }>;

INSTANTIATE_TYPED_TEST_SUITE_P(ThreadPool, DispatchQueueContract, ThreadPool);

}
