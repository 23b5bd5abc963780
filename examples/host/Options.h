#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace zelvora::examples {

struct Options {
    /// The port of the local service.
    std::uint16_t servicePort = 0;
    /// The folder with the service's "ca.pem" and "server.pem".
    std::filesystem::path certificates;
    /// The folder for the app's data; empty for the default.
    std::filesystem::path data;
    /// "light" or "dark"; empty for what the system says.
    std::string appearance;
    /// Whether the app has the shop's processes ready while its home screen is shown.
    bool prewarms = false;
    /// If set, the program drives itself: "first", or "second" after a restart with the data of the first,
    /// "gallery", "opening", "soak" or "conformance".
    std::string walk;
    /// How often a soak opens the shop, and what decides about each time.
    int rounds = 500;
    std::uint32_t seed = 0;
    /// The folder for the pictures of a walk.
    std::filesystem::path pictures = ".";
    /// The file for what the page noted in "conformance".
    std::filesystem::path report = "conformance.json";
    /// The program that prints accessibility trees; empty if a walk saves none with its pictures.
    std::filesystem::path trees {};
};

/// If the arguments are invalid, prints a message to standard error and returns nothing.
[[nodiscard]] std::optional<Options> readOptions(int count, char** arguments);

}
