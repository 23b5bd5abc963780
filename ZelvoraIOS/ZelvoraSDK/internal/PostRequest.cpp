#include "ZelvoraIOS/ZelvoraSDK/internal/PostRequest.h"

#include "ZelvoraPlatform/Platform.h"

#include <utility>

namespace zelvora::internal {

std::expected<platform::URLRequest, platform::Error> makePostRequest(
    platform::URL url, std::map<std::string, std::string> httpHeaderFields, platform::Dictionary const& body)
{
    auto data = platform::Platform::current().jsonSerialization().data(body, platform::JSONWritingOptions::None);
    if (!data)
        return std::unexpected(data.error());
    return platform::URLRequest {
        .url = std::move(url),
        .httpMethod = "POST",
        .httpHeaderFields = std::move(httpHeaderFields),
        .httpBody = *std::move(data),
    };
}

}
