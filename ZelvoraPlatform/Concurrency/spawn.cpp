#include "ZelvoraPlatform/Concurrency/spawn.h"

#include "ZelvoraPlatform/Concurrency/resumeOn.h"

#include <coroutine>
#include <utility>

namespace zelvora::platform {

namespace {

// A coroutine that owns itself: it runs at once and its frame is destroyed when it ends.
struct Detached {
    struct promise_type {
        Detached get_return_object() noexcept { return {}; }
        std::suspend_never initial_suspend() noexcept { return {}; }
        std::suspend_never final_suspend() noexcept { return {}; }
        void return_void() noexcept { }
        [[noreturn]] void unhandled_exception() { fatalError("an exception left a spawned task"); }
    };
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-reference-coroutine-parameters): used before the first suspension only.
Detached run(DispatchQueue& queue, Task<void> task)
{
    co_await resumeOn(queue);
    co_await task;
}

}

void spawn(DispatchQueue& queue, Task<void> task)
{
    run(queue, std::move(task));
}

}
