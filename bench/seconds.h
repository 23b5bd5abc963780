#pragma once

#include <chrono>
#include <cstddef>

namespace zelvora::bench {

/// How long a call of the work takes, on average of so many.
template<typename Work>
[[nodiscard]] double seconds(Work&& work, std::size_t repetitions = 1)
{
    auto const begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < repetitions; ++i)
        work();
    auto const duration = std::chrono::steady_clock::now() - begin;
    return std::chrono::duration<double>(duration).count() / static_cast<double>(repetitions);
}

/// How long a call of the work takes after a pause, as when events come one by one. The lock of the journal's file is
/// given back by then.
template<typename Work>
[[nodiscard]] double secondsAfterPause(Work&& work)
{
    constexpr std::chrono::milliseconds pause(4);
    auto const begin = std::chrono::steady_clock::now();
    // Not asleep: what it takes the processor to wake up is not what is measured.
    while (std::chrono::steady_clock::now() - begin < pause) { }
    return seconds(work);
}

}
