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
    // Behind what was submitted before, which the system does not say of a time that has passed.
    if (!(delay > 0)) {
        async(std::move(work));
        return;
    }
    // The system's count of nanoseconds ends after 292 years, and it does not say what a block does that is due never.
    constexpr platform::TimeInterval century = 100 * 365.25 * 86400;
    auto const nanoseconds = static_cast<std::int64_t>(std::min(delay, century) * NSEC_PER_SEC);
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), m_queue, contextOf(std::move(work)), run);
}

}
