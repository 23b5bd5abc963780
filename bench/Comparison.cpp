#include "bench/Comparison.h"

#include "bench/documentedFigure.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

namespace zelvora::bench {

namespace {

// The SDK logs to standard output.
void printLine(std::string const& name, double figure, std::string const& unit, std::string const& spread)
{
    auto const documented = documentedFigure(name, unit);
    std::fprintf(stderr, "  %-58s %7.2f %s%s; in the docs: %s\n", name.c_str(), figure, unit.c_str(), spread.c_str(),
        documented.empty() ? "nothing" : documented.c_str());
}

void printRatios(std::string const& name, Comparison::Ratios const& ratios, std::string const& reference)
{
    std::array<char, 64> spread {};
    std::snprintf(spread.data(), spread.size(), " (%.2f to %.2f)", ratios.lower, ratios.upper);
    printLine(name, ratios.median, "times " + reference, spread.data());
}

}

Comparison Comparison::preparedBy(std::function<void()> prepare) const
{
    auto prepared = *this;
    prepared.m_prepare = std::move(prepare);
    return prepared;
}

double Comparison::seconds(std::function<void()> const& work) const
{
    auto const begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < m_repetitions; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Comparison::Ratios Comparison::measure(
    std::function<void()> const& work, std::function<void()> const& referenceWork) const
{
    auto const prepareAndWork = [&] {
        if (m_prepare)
            m_prepare();
        return seconds(work);
    };
    return measureTimes(prepareAndWork, [&] { return seconds(referenceWork); });
}

Comparison::Ratios Comparison::measureTimes(
    std::function<double()> const& work, std::function<double()> const& referenceWork) const
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
    return {
        .median = ratios[ratios.size() / 2],
        .lower = ratios[ratios.size() / 4],
        .upper = ratios[ratios.size() * 3 / 4],
    };
}

void Comparison::print(std::string const& name, std::function<void()> const& work, std::string const& reference,
    std::function<void()> const& referenceWork) const
{
    printRatios(name, measure(work, referenceWork), reference);
}

void Comparison::printTimes(std::string const& name, std::function<double()> const& work, std::string const& reference,
    std::function<double()> const& referenceWork) const
{
    printRatios(name, measureTimes(work, referenceWork), reference);
}

void printFigure(std::string const& name, double figure, std::string const& unit)
{
    printLine(name, figure, unit, "");
}

}
