#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"

#include <atomic>
#include <coroutine>
#include <optional>
#include <utility>

namespace zelvora::platform {

/// Awaits a callback: calls `start` with a completion handler and gives the handler's argument as the result.
///
///     using Result = std::expected<URLSession::Answer, Error>;
///     auto const start = [&](CompletionHandler<void(Result)> handler) {
///         session.dataTask(request, std::move(handler));
///     };
///     auto const result = co_await completion<Result>(start);
///
/// The coroutine continues on the thread that calls the handler, or on its own thread if the handler was called before
/// `start` returned. Use `resumeOn` if the thread matters.
template<typename Result, typename Start>
class [[nodiscard]] Completion final {
public:
    /// Nothing is called before the object is awaited, which may be done once.
    explicit Completion(Start start) : m_start(std::move(start)) { }

    bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> awaiter)
    {
        m_start(CompletionHandler<void(Result)>([this, awaiter](Result result) {
            m_result.emplace(std::move(result));
            if (m_other.exchange(true))
                awaiter.resume();
        }));
        // Whichever of the two sides arrives second resumes the coroutine: the callback may have been called already,
        // here or on another thread. The first side must not touch this object after its exchange.
        return !m_other.exchange(true);
    }
    Result await_resume() { return std::move(*m_result); }

private:
    Start m_start;
    std::optional<Result> m_result;
    std::atomic<bool> m_other = false;
};

/// Makes a `Completion`: see there. `start` is called when the result is awaited, on the awaiter's thread.
template<typename Result, typename Start>
Completion<Result, Start> completion(Start start)
{
    return Completion<Result, Start>(std::move(start));
}

}
