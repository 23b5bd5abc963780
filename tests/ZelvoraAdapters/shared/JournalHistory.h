#pragma once

#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

/// A made-up life of a store: what its step number n does follows from the seed, from n and from what is stored, so
/// that two processes agree on what the store holds after any step.
class JournalHistory final {
public:
    using State = std::map<std::string, platform::Value>;

    explicit JournalHistory(std::uint64_t seed) : m_seed(seed) { }

    /// Every key that any step touches.
    [[nodiscard]] static std::vector<std::string> const& keys();
    [[nodiscard]] static State stateOf(platform::UserDefaults& store);

    /// Always changes something.
    void takeStep(std::uint64_t number, platform::UserDefaults& store) const;
    void takeStep(std::uint64_t number, State& state) const;

private:
    struct Change {
        std::string key;
        std::optional<platform::Value> value;
    };

    template<typename Read>
    [[nodiscard]] Change change(std::uint64_t number, Read const& read) const;

    std::uint64_t m_seed;
};

}
