#pragma once

#include "tests/simulation/Story.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zelvora::simulation {

enum class Trace : std::uint8_t { No, Yes };

/// Where the preferences live: in memory, or in a journal whose file fails at times.
enum class Store : std::uint8_t { Memory, Journal };

/// How a story ended: with the first thing that went wrong, if anything did.
struct Verdict {
    std::optional<std::string> failure {};
    /// The step that went wrong.
    std::size_t step = 0;
};

/// Lives through a story. Each life of the app is a process of its own, forked from this one, because the platform and
/// the facade are one per process: what survives the app's death goes on to the next life through a pipe. So do a crash
/// and an app that stops itself become failures of the story.
[[nodiscard]] Verdict live(Story const& story, Store store, Trace trace = Trace::No);

/// The shortest story that still fails, as far as leaving out steps leads.
[[nodiscard]] Story shortened(Story story, Store store, Verdict verdict);

}
