#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"

#include <coroutine>

namespace zelvora::platform {

/// Awaited, continues the coroutine on the queue, never inside the call. If the queue is destroyed before that, the
/// coroutine stays suspended forever.
class [[nodiscard]] ZELVORA_API ResumeOn final {
public:
    /// The queue must exist when the object is awaited.
    explicit ResumeOn(DispatchQueue& queue) : m_queue(queue) { }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> awaiter) const
    {
        m_queue.async([awaiter] { awaiter.resume(); });
    }
    void await_resume() const noexcept { }

private:
    DispatchQueue& m_queue;
};

/// Makes a `ResumeOn`: `co_await resumeOn(queue);` goes on with what follows on the queue.
inline ResumeOn resumeOn(DispatchQueue& queue)
{
    return ResumeOn(queue);
}

}
