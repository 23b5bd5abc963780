#include "ZelvoraIOS/ZelvoraSDK/internal/ShopIdLookup.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/PostRequest.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/reportError.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Concurrency/completion.h"
#include "ZelvoraPlatform/Concurrency/resumeOn.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace zelvora::internal {

using platform::Dictionary;
using platform::Platform;
using platform::Task;
using platform::URLSession;
using platform::Value;

namespace {

std::expected<platform::URLRequest, platform::Error> makeLookupRequest(
    platform::URL url, std::string const& apiKey, bool isDev)
{
    return makePostRequest(std::move(url), { { "Content-Type", "application/json" }, { "Accept", "application/json" } },
        { { "profile", profile(isDev) }, { "api_key", apiKey } });
}

Value const* member(Value const& object, std::string_view name)
{
    auto const* dictionary = object.dictionary();
    return dictionary ? dictionary->find(name) : nullptr;
}

// The text at "data" → "shopId", if the answer has that shape.
std::optional<std::string> shopIdIn(Value const& answer)
{
    auto const* data = member(answer, "data");
    auto const* shopId = data ? member(*data, "shopId") : nullptr;
    auto const* text = shopId ? shopId->text() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

}

Task<void> ShopIdLookup::fetchShopId(std::string apiKey)
{
    if (auto stored = ZelvoraStorage::getValidShopId()) {
        m_properties.set(&Properties::shopId, stored);
        ZelvoraLogger::d("Shop ID exists : " + *stored);
        co_return;
    }
    auto url = platform::URL::parse(serviceAddresses().lookupEndpoint);
    if (!url)
        co_return;

    auto request = makeLookupRequest(*std::move(url), apiKey, m_properties.get(&Properties::isDev));
    if (!request) {
        auto const& description = request.error().localizedDescription;
        ZelvoraLogger::e(description);
        fail(description);
        co_return;
    }
    ZelvoraLogger::d("fetchShopId Request URL: " + request->url.absoluteString());
    ZelvoraLogger::d("fetchShopId Request Body: " + platform::decodeUTF8(request->httpBody.bytes).value_or(""));

    auto performance = performRequest(*std::move(request));
    auto const answer = co_await performance;
    if (!answer) {
        auto const& description = answer.error().localizedDescription;
        ZelvoraLogger::e("fetchShopId Exception: " + description);
        fail(description);
        co_return;
    }
    acceptLookup(*answer);
}

Task<std::expected<URLSession::Answer, platform::Error>> ShopIdLookup::performRequest(platform::URLRequest request)
{
    auto start = [&request](URLSession::Completion handler) {
        Platform::current().urlSession().dataTask(std::move(request), std::move(handler));
    };
    auto dataTask = platform::completion<std::expected<URLSession::Answer, platform::Error>>(start);
    auto answer = co_await dataTask;
    // The SDK does not work on the loader's own queue.
    co_await platform::resumeOn(Platform::current().globalQueue());
    co_return answer;
}

void ShopIdLookup::acceptLookup(URLSession::Answer const& answer)
{
    if (!answer.response.statusCode) {
        fail("Not a HTTP response");
        return;
    }
    constexpr int success = 200;
    if (auto const status = *answer.response.statusCode; status != success) {
        auto const code = std::to_string(status);
        auto const body = platform::decodeUTF8(answer.data.bytes).value_or("No error body");
        ZelvoraLogger::e("fetchShopId Error " + code + " - Error Body: " + body);
        fail("fetchShopId - " + code);
        return;
    }
    auto const parsed = Platform::current().jsonSerialization().jsonObject(answer.data);
    if (!parsed) {
        auto const& description = parsed.error().localizedDescription;
        ZelvoraLogger::e("fetchShopId Exception: " + description);
        fail(description);
        return;
    }
    auto const shopId = shopIdIn(*parsed);
    if (!shopId)
        return;
    ZelvoraStorage::saveShopId(*shopId);
    m_properties.set(&Properties::shopId, shopId);
    ZelvoraLogger::d("Shop ID: " + *shopId);
}

void ShopIdLookup::fail(std::string const& detail)
{
    reportError(m_properties, ZelvoraSDKError::internalApiError(detail));
}

}
