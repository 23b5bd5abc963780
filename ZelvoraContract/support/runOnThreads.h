#pragma once

#include <functional>
#include <thread>
#include <vector>

namespace zelvora::tests {

/// Runs `work` on `count` threads at once, passing each its number from 0 on, and waits for all of them.
inline void runOnThreads(int count, std::function<void(int number)> const& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back(work, number);
    for (auto& thread : threads)
        thread.join();
}

}
