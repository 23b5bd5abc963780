#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace zelvora::bench {

/// Runs two pieces of work in turn, round by round, so that both meet the same moods of the machine, and gives the
/// median of the rounds' ratios. An absolute time says nothing on a shared machine.
class Comparison final {
public:
    /// `repetitions` is how often each is called in one round.
    Comparison(std::size_t rounds, std::size_t repetitions) : m_rounds(rounds), m_repetitions(repetitions) { }

    /// Prints "NAME: so many times REFERENCE", with the spread over the middle half of the rounds.
    double print(std::string const& name, std::function<void()> const& work, std::string const& reference,
        std::function<void()> const& referenceWork) const;

private:
    [[nodiscard]] double seconds(std::function<void()> const& work) const;

    std::size_t m_rounds;
    std::size_t m_repetitions;
};

}
