#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <expected>
#include <map>
#include <string>

namespace zelvora::internal {

/// A POST request with a compact JSON body. Fails with the JSON writer's error if JSON cannot represent the body.
[[nodiscard]] std::expected<platform::URLRequest, platform::Error> makePostRequest(
    platform::URL url, std::map<std::string, std::string> httpHeaderFields, platform::Dictionary const& body);

}
