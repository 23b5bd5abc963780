#include "examples/developer/script/Switches.h"

#include <array>
#include <charconv>

namespace zelvora::developer {

namespace {

template<typename Place>
using Named = std::pair<std::string_view, Place>;

constexpr std::array services { Named<ServiceState> { "works", ServiceState::Works },
    Named<ServiceState> { "refuses", ServiceState::Refuses } };
constexpr std::array networks { Named<NetworkState> { "on", NetworkState::On },
    Named<NetworkState> { "slow", NetworkState::Slow }, Named<NetworkState> { "off", NetworkState::Off } };
constexpr std::array languages { Named<Language> { "ko", Language::Korean },
    Named<Language> { "en", Language::English } };
constexpr std::array looks { Named<Look> { "light", Look::Light }, Named<Look> { "dark", Look::Dark } };

template<typename Place, std::size_t count>
bool put(Place& place, std::array<Named<Place>, count> const& names, std::string_view wanted)
{
    for (auto const& [name, named] : names) {
        if (name != wanted)
            continue;
        place = named;
        return true;
    }
    return false;
}

std::optional<int> readLength(std::string_view text)
{
    constexpr int shortest = 200;
    constexpr int longest = 2000;
    auto length = 0;
    auto const* const end = text.data() + text.size();
    auto const read = std::from_chars(text.data(), end, length);
    if (read.ec != std::errc() || read.ptr != end || length < shortest || length > longest)
        return std::nullopt;
    return length;
}

}

std::optional<ScreenSize> readScreenSize(std::string_view text)
{
    if (text == "phone")
        return phoneSize;
    if (text == "tablet")
        return tabletSize;
    auto const cross = text.find('x');
    if (cross == std::string_view::npos)
        return std::nullopt;
    auto const width = readLength(text.substr(0, cross));
    auto const height = readLength(text.substr(cross + 1));
    return width && height ? std::optional(ScreenSize { *width, *height }) : std::nullopt;
}

std::optional<Switches> switched(Switches switches, std::string_view name, std::string_view place)
{
    auto isKnown = false;
    if (name == "service")
        isKnown = put(switches.service, services, place);
    if (name == "network")
        isKnown = put(switches.network, networks, place);
    if (name == "language")
        isKnown = put(switches.language, languages, place);
    if (name == "look")
        isKnown = put(switches.look, looks, place);
    if (name == "size") {
        auto const size = readScreenSize(place);
        isKnown = size.has_value();
        switches.size = size.value_or(switches.size);
    }
    return isKnown ? std::optional(switches) : std::nullopt;
}

}
