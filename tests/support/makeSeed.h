#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace zelvora::tests {

/// A new random seed in every run, or the one in ZELVORA_TEST_SEED, which repeats a run. It is printed.
[[nodiscard]] inline std::uint64_t makeSeed()
{
    std::random_device device;
    std::uint64_t seed = device();
    if (auto const* const given = std::getenv("ZELVORA_TEST_SEED"))
        seed = std::strtoull(given, nullptr, 10);
    std::printf("ZELVORA_TEST_SEED=%llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    return seed;
}

}
