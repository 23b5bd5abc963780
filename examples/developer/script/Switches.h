#pragma once

#include "examples/developer/observing/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::developer {

enum class ServiceState : std::uint8_t { Works, Refuses };
enum class NetworkState : std::uint8_t { On, Slow, Off };
enum class Look : std::uint8_t { Light, Dark };

/// In points.
struct ScreenSize {
    int width = 0;
    int height = 0;

    bool operator==(ScreenSize const&) const = default;
};
inline constexpr ScreenSize phoneSize { 390, 844 };
inline constexpr ScreenSize tabletSize { 768, 1024 };

/// What a developer switches while a page runs.
struct Switches {
    ServiceState service = ServiceState::Works;
    NetworkState network = NetworkState::On;
    Language language = Language::English;
    Look look = Look::Light;
    ScreenSize size = phoneSize;

    bool operator==(Switches const&) const = default;
};

/// The switches with one of them at another place, as a script names both: "network", "slow". Absent if there is no
/// such switch or place.
[[nodiscard]] std::optional<Switches> switched(Switches switches, std::string_view name, std::string_view place);

/// "phone", "tablet", or width and height as in "320x640", each from 200 to 2000.
[[nodiscard]] std::optional<ScreenSize> readScreenSize(std::string_view text);

}
