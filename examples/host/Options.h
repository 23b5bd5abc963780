#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace zelvora::examples {

struct Options {
    /// The local service's.
    std::uint16_t servicePort = 0;
    /// With "ca.pem" and "server.pem".
    std::filesystem::path certificates;
    /// Where the app keeps its data; empty for the app's own place.
    std::filesystem::path data;
    /// With a walk the program drives itself: "first", or "second" for a restart with the data of the first.
    std::string walk;
    /// Where a walk saves its pictures.
    std::filesystem::path pictures = ".";
};

/// Absent, with a sentence on standard error, where the arguments are wrong.
[[nodiscard]] std::optional<Options> readOptions(int count, char** arguments);

}
