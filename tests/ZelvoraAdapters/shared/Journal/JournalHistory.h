#pragma once

#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

/// A random but reproducible sequence of changes to a store: step n depends only on the seed, on n and on what is
/// stored, so that two processes agree on the content after any step.
class JournalHistory final {
public:
    using State = std::map<std::string, platform::Value>;

    explicit JournalHistory(std::uint64_t seed) : m_seed(seed) { }

    /// All keys that the steps use.
    [[nodiscard]] static std::vector<std::string> const& keys();
    [[nodiscard]] static State stateOf(platform::UserDefaults& store);

    /// Every step changes something.
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
