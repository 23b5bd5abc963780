#include "ZelvoraAdapters/uikit/Concurrency/DispatchQueue.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace zelvora::uikit {

namespace {

using Work = platform::DispatchQueue::Work;

void* contextOf(Work work)
{
    return std::make_unique<Work>(std::move(work)).release();
}

void run(void* context)
{
    @autoreleasepool {
        std::unique_ptr<Work> const work(static_cast<Work*>(context));
        (*work)();
    }
}

}

void DispatchQueue::async(Work work)
{
    dispatch_async_f(m_queue, contextOf(std::move(work)), run);
}

void DispatchQueue::asyncAfter(platform::TimeInterval delay, Work work)
{
    // Not by `dispatch_after`: the system does not promise that a block whose time has passed runs after the blocks
    // that were submitted before it.
    if (!(delay > 0)) {
        async(std::move(work));
        return;
    }
    // The system counts nanoseconds in 64 bits, which last 292 years, and does not document a block that is never due.
    constexpr platform::TimeInterval century = 100 * 365.25 * 86400;
    auto const nanoseconds = static_cast<std::int64_t>(std::min(delay, century) * NSEC_PER_SEC);
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), m_queue, contextOf(std::move(work)), run);
}

}
