#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace zelvora::bench {

/// Compares the time of some work with that of a reference. Both run in alternation, round by round, so that changes in
/// the machine's speed affect both; the result is the median of the rounds' ratios. Absolute times would say little on
/// a shared machine.
class Comparison final {
public:
    /// `repetitions` is the number of calls of each in one round.
    Comparison(std::size_t rounds, std::size_t repetitions) : m_rounds(rounds), m_repetitions(repetitions) { }

    /// The same, with something that is done before the work in each round and not timed.
    [[nodiscard]] Comparison preparedBy(std::function<void()> prepare) const;

    /// The ratios of the rounds: their median and their quartiles.
    struct Ratios {
        double median = 0;
        double lower = 0;
        double upper = 0;
    };
    [[nodiscard]] Ratios measure(std::function<void()> const& work, std::function<void()> const& referenceWork) const;
    /// As `measure`, for work that needs preparations which are not measured: each call returns the seconds that its
    /// own part took. `repetitions` is not used.
    [[nodiscard]] Ratios measureTimes(
        std::function<double()> const& work, std::function<double()> const& referenceWork) const;
    /// Measures and prints them, with the median that the docs have for the same two names.
    void print(std::string const& name, std::function<void()> const& work, std::string const& reference,
        std::function<void()> const& referenceWork) const;

    /// As `print`, for times as `measureTimes` takes them.
    void printTimes(std::string const& name, std::function<double()> const& work, std::string const& reference,
        std::function<double()> const& referenceWork) const;

private:
    [[nodiscard]] double seconds(std::function<void()> const& work) const;

    std::size_t m_rounds;
    std::size_t m_repetitions;
    std::function<void()> m_prepare;
};

/// Prints a figure that is no ratio of times, and the one that the docs have for the same name and unit.
void printFigure(std::string const& name, double figure, std::string const& unit);

}
