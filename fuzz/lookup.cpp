// Any answer to the lookup ends it: with a shop id that is stored, or without one.

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/ShopIdLookup.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Concurrency/spawn.h"
#include "fuzz/FuzzPlatform.h"
#include "fuzz/require.h"

#include <cstdint>
#include <string>
#include <utility>

using namespace zelvora;

namespace {

// The first byte chooses the kind of answer; the rest is its body.
fuzz::HeldSession::Result answer(std::uint8_t kind, std::string body)
{
    switch (kind) {
    case 0:
        return std::unexpected(platform::Error { .domain = "", .code = 0, .localizedDescription = std::move(body) });
    case 1:
        return platform::URLSession::Answer { .data = { std::move(body) }, .response = {} };
    case 2:
        return platform::URLSession::Answer { .data = { std::move(body) }, .response = { .statusCode = 404 } };
    default:
        return platform::URLSession::Answer { .data = { std::move(body) }, .response = { .statusCode = 200 } };
    }
}

platform::Task<void> lookUp(internal::ShopIdLookup& lookup, bool& hasEnded)
{
    auto fetching = lookup.fetchShopId("key");
    co_await fetching;
    hasEnded = true;
}

}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    if (size == 0)
        return -1;
    auto& platform = fuzz::FuzzPlatform::shared();
    internal::GuardedProperties properties;
    internal::ShopIdLookup lookup { properties };
    bool hasEnded = false;
    platform::spawn(platform.globalQueue(), lookUp(lookup, hasEnded));
    platform.runUntilIdle();
    platform.urlSession().settle(answer(bytes[0], { reinterpret_cast<char const*>(bytes) + 1, size - 1 }));
    platform.runUntilIdle();
    fuzz::require(hasEnded, "every answer ends the lookup");
    fuzz::require(properties.get(&internal::Properties::shopId) == ZelvoraStorage::getValidShopId(),
        "a shop id that is found is stored");
    platform.reset();
    return 0;
}
