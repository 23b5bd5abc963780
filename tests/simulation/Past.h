#pragma once

#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "tests/simulation/Model.h"
#include "tests/simulation/Random.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::simulation {

/// What a life of the app begins with: what earlier lives left, and what the service knows.
struct Past {
    std::optional<std::string> bundleIdentifier = "com.example.host";
    memory::UserDefaults::Contents stored {};
    platform::Date now {};
    platform::ATTrackingAuthorizationStatus status = platform::ATTrackingAuthorizationStatus::NotDetermined;
    int lastEvent = 0;
    Delivery delivery {};
    /// The file of the preferences; absent if they live in memory, as `stored` between two lives.
    std::optional<std::string> journal {};
    /// What the file may hold: one thing, unless writes have failed. Empty before the first life.
    std::vector<memory::UserDefaults::Contents> possible {};
};

/// What the first life of a world begins with.
[[nodiscard]] Past makePast(std::uint64_t seed);

/// For the pipe between two lives.
[[nodiscard]] platform::Value valueOf(Past const& past);
[[nodiscard]] Past pastIn(platform::Value const& value);

}
