#pragma once

#include <functional>
#include <thread>
#include <vector>

namespace zelvora::tests {

/// Runs `work` on so many threads at once, each with its number, and waits for them all.
inline void runOnThreads(int count, std::function<void(int number)> const& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back(work, number);
    for (auto& thread : threads)
        thread.join();
}

}
