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

    /// Prints and returns the median ratio of `work` to `referenceWork`. The line ends with the quartiles of the
    /// ratios.
    double print(std::string const& name, std::function<void()> const& work, std::string const& reference,
        std::function<void()> const& referenceWork) const;

    /// As `print`, for work that needs preparations which are not measured: each call returns the seconds that its own
    /// part took. `repetitions` is not used.
    double printTimes(std::string const& name, std::function<double()> const& work, std::string const& reference,
        std::function<double()> const& referenceWork) const;

private:
    [[nodiscard]] double seconds(std::function<void()> const& work) const;

    std::size_t m_rounds;
    std::size_t m_repetitions;
};

}
