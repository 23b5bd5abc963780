#include "bench/Comparison.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace zelvora::bench {

double Comparison::seconds(std::function<void()> const& work) const
{
    auto const begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < m_repetitions; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double Comparison::print(std::string const& name, std::function<void()> const& work, std::string const& reference,
    std::function<void()> const& referenceWork) const
{
    return printTimes(name, [&] { return seconds(work); }, reference, [&] { return seconds(referenceWork); });
}

double Comparison::printTimes(std::string const& name, std::function<double()> const& work,
    std::string const& reference, std::function<double()> const& referenceWork) const
{
    // A first call of each, which fills caches, is not counted.
    (void)work();
    (void)referenceWork();
    std::vector<double> ratios;
    for (std::size_t round = 0; round < m_rounds; ++round) {
        // They alternate in going first, in case the order matters.
        auto const workFirst = round % 2 == 0;
        auto const first = workFirst ? work() : referenceWork();
        auto const second = workFirst ? referenceWork() : work();
        ratios.push_back(workFirst ? first / second : second / first);
    }
    std::ranges::sort(ratios);
    auto const median = ratios[ratios.size() / 2];
    // The SDK logs to standard output.
    std::fprintf(stderr, "  %-58s %7.2f times %s (%.2f to %.2f)\n", name.c_str(), median, reference.c_str(),
        ratios[ratios.size() / 4], ratios[ratios.size() * 3 / 4]);
    return median;
}

}
