#pragma once

#include "examples/service/Http.h"

#include <string_view>

namespace zelvora::examples {

/// A customer of the service.
struct Shop {
    std::string_view apiKey;
    std::string_view shopId;
    std::string_view koreanName;
    std::string_view englishName;
};

/// Null if there is no such shop.
[[nodiscard]] Shop const* shopWithId(std::string_view shopId);

/// The lookup: answers an API key with its shop.
[[nodiscard]] Reply answerLookup(Request const& request);
/// The API: answers an app's identity keys with its shop.
[[nodiscard]] Reply answerIdentity(Request const& request);

}
