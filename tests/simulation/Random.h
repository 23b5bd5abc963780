#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zelvora::simulation {

/// Numbers that follow from a seed alone, on every machine and with every standard library.
class Random final {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) { }

    std::uint64_t next()
    {
        m_state += 0x9E3779B97F4A7C15ULL;
        auto mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31U);
    }
    /// 0 if `count` is 0.
    std::size_t below(std::size_t count) { return count == 0 ? 0 : static_cast<std::size_t>(next() % count); }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template<typename Range>
    auto const& pick(Range const& range)
    {
        std::span const all(range);
        return all[below(all.size())];
    }

private:
    std::uint64_t m_state;
};

}
