// The queues of the system: the main queue, which a test runs, and the global one with threads of its own. They never
// end.
#import "tests/uikit/doubles/Dispatch.h"

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using Lock = std::unique_lock<std::mutex>;

struct Item {
    dispatch_function_t work = nullptr;
    void* context = nullptr;
};

}

struct dispatch_queue_s {
    /// The item that is due next, if any.
    std::optional<Item> take(Lock const&)
    {
        auto const now = Clock::now();
        while (!delayed.empty() && delayed.begin()->first <= now) {
            ready.push_back(delayed.begin()->second);
            delayed.erase(delayed.begin());
        }
        if (ready.empty())
            return std::nullopt;
        Item const item = ready.front();
        ready.pop_front();
        return item;
    }

    void wait(Lock& lock, std::optional<Clock::time_point> until = std::nullopt)
    {
        if (!delayed.empty())
            until = until ? std::min(*until, delayed.begin()->first) : delayed.begin()->first;
        if (until)
            changed.wait_until(lock, *until);
        else
            changed.wait(lock);
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Item> ready;
    // In the order of submission where they are due at once.
    std::multimap<Clock::time_point, Item> delayed;
};

namespace {

// Never destroyed: the threads of the global queue run until the process ends.
dispatch_queue_t mainQueue()
{
    static auto* const s_queue = new dispatch_queue_s;
    return s_queue;
}

void work(dispatch_queue_t queue)
{
    GSRegisterCurrentThread();
    Lock lock(queue->mutex);
    while (true) {
        if (auto const item = queue->take(lock)) {
            lock.unlock();
            item->work(item->context);
            lock.lock();
        } else {
            queue->wait(lock);
        }
    }
}

dispatch_queue_t globalQueue()
{
    static auto* const s_queue = [] {
        constexpr int threads = 4;
        auto* const queue = new dispatch_queue_s;
        for (int number = 0; number < threads; ++number)
            std::thread(work, queue).detach();
        return queue;
    }();
    return s_queue;
}

void submit(dispatch_queue_t queue, Item item)
{
    {
        std::scoped_lock const lock(queue->mutex);
        queue->ready.push_back(item);
    }
    queue->changed.notify_all();
}

void runBlock(void* context)
{
    @autoreleasepool {
        dispatch_block_t const block = (__bridge_transfer dispatch_block_t)context;
        block();
    }
}

}

extern "C" {

dispatch_queue_t dispatch_get_main_queue(void)
{
    return mainQueue();
}

dispatch_queue_t dispatch_get_global_queue(intptr_t, uintptr_t)
{
    return globalQueue();
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta)
{
    if (when == DISPATCH_TIME_FOREVER)
        return when;
    auto const now = static_cast<dispatch_time_t>(Clock::now().time_since_epoch().count());
    auto const base = when == DISPATCH_TIME_NOW ? now : when;
    if (delta > 0 && base > INT64_MAX - static_cast<dispatch_time_t>(delta))
        return DISPATCH_TIME_FOREVER;
    return base + static_cast<dispatch_time_t>(delta);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block)
{
    submit(queue, { runBlock, (__bridge_retained void*)[block copy] });
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work)
{
    submit(queue, { work, context });
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work)
{
    auto const due = when == DISPATCH_TIME_FOREVER ? INT64_MAX : static_cast<int64_t>(when);
    {
        std::scoped_lock const lock(queue->mutex);
        queue->delayed.emplace(Clock::time_point(Clock::duration(due)), Item { work, context });
    }
    queue->changed.notify_all();
}
}

namespace zelvora::doubles {

std::size_t runMainQueue()
{
    auto* const queue = mainQueue();
    std::size_t count = 0;
    Lock lock(queue->mutex);
    while (auto const item = queue->take(lock)) {
        lock.unlock();
        item->work(item->context);
        ++count;
        lock.lock();
    }
    return count;
}

bool runMainUntil(std::function<bool()> const& done)
{
    constexpr auto patience = std::chrono::seconds(30);
    auto* const queue = mainQueue();
    auto const deadline = Clock::now() + patience;
    while (!done()) {
        if (Clock::now() > deadline)
            return false;
        Lock lock(queue->mutex);
        auto const item = queue->take(lock);
        // What another thread does may not concern this queue.
        if (!item)
            queue->wait(lock, Clock::now() + std::chrono::milliseconds(1));
        lock.unlock();
        if (item)
            item->work(item->context);
    }
    return true;
}

}
