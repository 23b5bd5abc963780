#pragma once

// CMake fills this in from ZELVORA_ADDRESS_* in cmake/ZelvoraAddresses.cmake.

namespace zelvora::internal::defaultAddresses {

inline constexpr char const* productionWebHost = "shop.zelvora.example";
inline constexpr char const* developmentWebHost = "shop-dev.zelvora.example";
inline constexpr char const* productionApiBase = "https://api.zelvora.example";
inline constexpr char const* developmentApiBase = "https://api-dev.zelvora.example";
inline constexpr char const* lookupEndpoint = "https://lookup.zelvora.example/";
inline constexpr char const* trackingEndpoint = "https://collector.zelvora.example/v1/events";

}
