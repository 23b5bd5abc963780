#include "ZelvoraIOS/ZelvoraSDK/internal/IdentityUpload.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/PostRequest.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Platform.h"

#include <optional>
#include <string>
#include <utility>

namespace zelvora::internal {

using platform::Dictionary;
using platform::Platform;
using platform::URLSession;
using platform::Value;

namespace {

struct Identity {
    std::optional<std::string> apiURL;
    std::optional<std::string> userKey;
    std::optional<std::string> apiKey;
    std::optional<std::string> adId;
    std::optional<std::string> packageName;
};

Identity identityIn(Properties const& properties)
{
    return { properties.apiURL, properties.userKey, properties.apiKey, properties.adId, properties.packageName };
}

Value orNull(std::optional<std::string> const& text)
{
    return text ? Value(*text) : Value();
}

}

void IdentityUpload::sendData()
{
    auto const identity = m_properties.access(&identityIn);
    auto url = identity.apiURL ? platform::URL::parse(*identity.apiURL) : std::nullopt;
    if (!url)
        return;
    Dictionary const body { { "userKey", orNull(identity.userKey) }, { "apiKey", orNull(identity.apiKey) },
        { "adId", orNull(identity.adId) }, { "packageName", orNull(identity.packageName) } };
    auto request = makePostRequest(
        *std::move(url), { { "Content-Type", "application/json; utf-8" }, { "Accept", "application/json" } }, body);
    if (!request)
        return;
    Platform::current().urlSession().dataTask(*std::move(request),
        [this](std::expected<URLSession::Answer, platform::Error> const& result) { acceptIdentity(result); });
}

void IdentityUpload::acceptIdentity(std::expected<URLSession::Answer, platform::Error> const& result)
{
    constexpr int success = 200;
    if (!result || result->response.statusCode != success)
        return;
    auto const parsed = Platform::current().jsonSerialization().jsonObject(result->data);
    if (!parsed) {
        ZelvoraLogger::e("sendData JSON Parsing Error");
        return;
    }
    auto const* object = parsed->dictionary();
    auto const* value = object ? object->find("shop_id") : nullptr;
    auto const* shopId = value ? value->text() : nullptr;
    if (!shopId)
        return;
    ZelvoraStorage::saveShopId(*shopId);
    m_properties.set(&Properties::shopId, *shopId);
    ZelvoraLogger::d("Shop ID: " + *shopId);
}

}
