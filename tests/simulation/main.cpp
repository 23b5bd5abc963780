#include "tests/simulation/Life.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

using namespace zelvora::simulation;

struct Options {
    std::uint64_t first = 1;
    std::uint64_t count = 10'000;
    std::size_t steps = 200;
    bool trace = false;
    Store store = Store::Memory;
};

constexpr char const* usage =
    "usage: zelvora_simulate [--seeds N] [--first SEED] [--seed SEED [--trace]] [--steps N] [--journal]\n";

bool read(std::span<char*> arguments, Options& options)
{
    for (std::size_t place = 1; place < arguments.size(); ++place) {
        std::string_view const name = arguments[place];
        if (name == "--trace") {
            options.trace = true;
            continue;
        }
        if (name == "--journal") {
            options.store = Store::Journal;
            continue;
        }
        if (place + 1 == arguments.size())
            return false;
        auto const number = std::strtoull(arguments[++place], nullptr, 10);
        if (name == "--seeds")
            options.count = number;
        else if (name == "--first")
            options.first = number;
        else if (name == "--steps")
            options.steps = number;
        else if (name == "--seed") {
            options.first = number;
            options.count = 1;
        } else
            return false;
    }
    return true;
}

void tell(Story const& story, Store store, Verdict const& verdict)
{
    std::fprintf(stderr, "World %llu goes wrong in step %zu of %zu: %s\n", static_cast<unsigned long long>(story.seed),
        verdict.step, story.steps.size(), verdict.failure->c_str());
    std::fprintf(stderr, "Its shortest story:\n");
    auto const shortest = shortened(story, store, verdict);
    auto const again = live(shortest, store, Trace::Yes);
    std::fprintf(stderr, "Step %zu: %s\n", again.step, again.failure.value_or("it does not go wrong again").c_str());
    std::fprintf(stderr, "Again, with every step: ./run simulate --seed %llu --trace%s\n",
        static_cast<unsigned long long>(story.seed), store == Store::Journal ? " --journal" : "");
}

}

int main(int count, char** arguments)
{
    Options options;
    if (!read({ arguments, static_cast<std::size_t>(count) }, options)) {
        std::fputs(usage, stderr);
        return 2;
    }
    auto const begin = std::chrono::steady_clock::now();
    for (std::uint64_t number = 0; number < options.count; ++number) {
        auto const story = makeStory(options.first + number, options.steps);
        auto const verdict = live(story, options.store, options.trace ? Trace::Yes : Trace::No);
        if (!verdict.failure)
            continue;
        std::fprintf(stderr, "After %llu worlds:\n", static_cast<unsigned long long>(number + 1));
        tell(story, options.store, verdict);
        return 1;
    }
    std::chrono::duration<double> const taken = std::chrono::steady_clock::now() - begin;
    std::printf("%llu worlds of %zu steps, in %.1f seconds: all as it must be\n",
        static_cast<unsigned long long>(options.count), options.steps, taken.count());
}
