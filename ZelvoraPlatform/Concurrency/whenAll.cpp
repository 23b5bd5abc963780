#include "ZelvoraPlatform/Concurrency/whenAll.h"

#include <atomic>
#include <coroutine>
#include <utility>

namespace zelvora::platform {

namespace {

// Counts both children and the awaiter itself. The last to arrive resumes the awaiter.
struct Rendezvous {
    std::atomic<int> outstanding = 3;
    std::coroutine_handle<> awaiter;

    [[nodiscard]] bool arriveLast() { return outstanding.fetch_sub(1, std::memory_order_acq_rel) == 1; }
};

struct Child {
    struct promise_type {
        Rendezvous* rendezvous;

        // Receives the parameters of `runChild`.
        promise_type(Rendezvous* shared, Task<void> const&) : rendezvous(shared) { }
        Child get_return_object() { return Child { std::coroutine_handle<promise_type>::from_promise(*this) }; }
        std::suspend_always initial_suspend() noexcept { return {}; }
        auto final_suspend() noexcept
        {
            struct Arrive {
                bool await_ready() noexcept { return false; }
                std::coroutine_handle<> await_suspend(std::coroutine_handle<promise_type> finished) noexcept
                {
                    auto* shared = finished.promise().rendezvous;
                    if (shared->arriveLast())
                        return shared->awaiter;
                    return std::noop_coroutine();
                }
                void await_resume() noexcept { }
            };
            return Arrive {};
        }
        void return_void() { }
        [[noreturn]] void unhandled_exception() { fatalError("an exception left a task"); }
    };

    std::coroutine_handle<promise_type> handle;
};

Child runChild(Rendezvous*, Task<void> task)
{
    co_await task;
}

class Both final {
public:
    Both(Task<void> first, Task<void> second)
        : m_first(runChild(&m_rendezvous, std::move(first)).handle)
        , m_second(runChild(&m_rendezvous, std::move(second)).handle)
    {
    }
    Both(Both const&) = delete;
    Both& operator=(Both const&) = delete;
    ~Both()
    {
        m_first.destroy();
        m_second.destroy();
    }

    bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> awaiter)
    {
        m_rendezvous.awaiter = awaiter;
        m_first.resume();
        m_second.resume();
        return !m_rendezvous.arriveLast();
    }
    void await_resume() const noexcept { }

private:
    Rendezvous m_rendezvous;
    std::coroutine_handle<> m_first;
    std::coroutine_handle<> m_second;
};

}

Task<void> whenAll(Task<void> first, Task<void> second)
{
    Both both(std::move(first), std::move(second));
    co_await both;
}

}
