#pragma once

#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

namespace zelvora::uikit {

/// Completions that the system is to call later, on any thread. Shared with the blocks that the system keeps, so that a
/// service which is destroyed can still complete what it owes. Any thread.
template<typename Result>
class PendingCompletions final {
public:
    using Completion = platform::CompletionHandler<void(Result)>;

    /// The number by which to complete it.
    [[nodiscard]] std::uint64_t add(Completion completion)
    {
        std::scoped_lock const lock(m_mutex);
        m_completions.emplace(++m_last, std::move(completion));
        return m_last;
    }

    /// Does nothing if it was completed already.
    void complete(std::uint64_t number, Result result)
    {
        std::unique_lock lock(m_mutex);
        auto node = m_completions.extract(number);
        lock.unlock();
        if (!node.empty())
            node.mapped()(std::move(result));
    }

    /// Also those that are added meanwhile.
    void completeAll(Result const& result)
    {
        while (auto const number = first())
            complete(number, result);
    }

private:
    [[nodiscard]] std::uint64_t first()
    {
        std::scoped_lock const lock(m_mutex);
        return m_completions.empty() ? 0 : m_completions.begin()->first;
    }

    std::mutex m_mutex;
    std::map<std::uint64_t, Completion> m_completions;
    std::uint64_t m_last = 0;
};

}
