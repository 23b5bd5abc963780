#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/fatalError.h"

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace zelvora::platform {

template<typename Result>
class Task;

namespace detail {

/// The common part of all tasks' promises: a task starts when it is awaited, and when it ends its awaiter continues on
/// the same thread.
class ZELVORA_API TaskPromiseBase {
public:
    std::suspend_always initial_suspend() noexcept { return {}; }
    auto final_suspend() noexcept { return Final {}; }
    // Nothing throws across a layer, so an exception here is a programming error.
    [[noreturn]] void unhandled_exception() { fatalError("an exception left a task"); }

    void setContinuation(std::coroutine_handle<> continuation) { m_continuation = continuation; }

private:
    struct Final {
        bool await_ready() noexcept { return false; }
        template<typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) noexcept
        {
            return static_cast<TaskPromiseBase&>(finished.promise()).m_continuation;
        }
        void await_resume() noexcept { }
    };

    std::coroutine_handle<> m_continuation = std::noop_coroutine();
};

template<typename Result>
class TaskPromise final : public TaskPromiseBase {
public:
    Task<Result> get_return_object();
    void return_value(Result result) { m_result.emplace(std::move(result)); }
    Result takeResult() { return std::move(*m_result); }

private:
    std::optional<Result> m_result;
};

template<>
class TaskPromise<void> final : public TaskPromiseBase {
public:
    Task<void> get_return_object();
    void return_void() { }
    void takeResult() { }
};

}

/// An asynchronous operation, written as a coroutine.
///
///     Task<int> answer(DispatchQueue* queue)
///     {
///         co_await resumeOn(*queue); // from here on the queue
///         co_return 42;
///     }
///
///     auto task = answer(queue);
///     int const result = co_await task;
///
/// A task starts when it is awaited, on the awaiter's thread, and its awaiter continues on the thread of its last step.
/// Await it at most once; `spawn` runs one from code that is not a coroutine. A task owns its coroutine: if it is
/// destroyed without having been awaited, nothing runs; once started, it must not be destroyed before it ends. An
/// exception that leaves a task stops the process. Pass parameters by value: references may dangle by the time the
/// coroutine runs.
template<typename Result = void>
class [[nodiscard]] Task final {
public:
    using promise_type = detail::TaskPromise<Result>;
    /// The suspended coroutine that a task owns.
    using Handle = std::coroutine_handle<promise_type>;

    /// Takes ownership of a coroutine that has not started. Only the coroutine's own promise has such a handle.
    explicit Task(Handle handle) : m_handle(handle) { }
    /// The other task is left without a coroutine: it may only be destroyed.
    Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) { }
    Task& operator=(Task&&) = delete;
    ~Task()
    {
        if (m_handle)
            m_handle.destroy();
    }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiter) noexcept
    {
        m_handle.promise().setContinuation(awaiter);
        return m_handle;
    }
    Result await_resume() { return m_handle.promise().takeResult(); }

private:
    Handle m_handle;
};

template<typename Result>
Task<Result> detail::TaskPromise<Result>::get_return_object()
{
    return Task<Result>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

inline Task<void> detail::TaskPromise<void>::get_return_object()
{
    return Task<void>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

}
