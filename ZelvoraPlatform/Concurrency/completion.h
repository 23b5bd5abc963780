#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"

#include <atomic>
#include <coroutine>
#include <optional>
#include <utility>

namespace zelvora::platform {

/// Awaits a callback: `start` is called with a completion handler, and the coroutine continues on the thread that calls
/// it, with its argument as the result.
template<typename Result, typename Start>
class [[nodiscard]] Completion final {
public:
    explicit Completion(Start start) : m_start(std::move(start)) { }

    bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> awaiter)
    {
        m_start(CompletionHandler<void(Result)>([this, awaiter](Result result) {
            m_result.emplace(std::move(result));
            if (m_other.exchange(true))
                awaiter.resume();
        }));
        // Whoever comes second goes on: the callback may have been called already, here or on another thread. Once it
        // has been, nothing of this object may be touched by the first.
        return !m_other.exchange(true);
    }
    Result await_resume() { return std::move(*m_result); }

private:
    Start m_start;
    std::optional<Result> m_result;
    std::atomic<bool> m_other = false;
};

template<typename Result, typename Start>
Completion<Result, Start> completion(Start start)
{
    return Completion<Result, Start>(std::move(start));
}

}
