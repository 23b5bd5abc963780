#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDK/serviceAddresses.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Concurrency/completion.h"
#include "ZelvoraPlatform/Concurrency/resumeOn.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <utility>

namespace zelvora {

using platform::Dictionary;
using platform::Platform;
using platform::Task;
using platform::URLSession;
using platform::Value;

namespace {

std::expected<platform::URLRequest, platform::Error> makeRequest(platform::URL url, Dictionary const& body)
{
    auto data = Platform::current().jsonSerialization().data(body, platform::JSONWritingOptions::None);
    if (!data)
        return std::unexpected(data.error());
    return platform::URLRequest {
        .url = std::move(url),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" }, { "Accept", "application/json" } },
        .httpBody = *std::move(data),
    };
}

Value const* member(Value const& object, std::string_view name)
{
    auto const* dictionary = object.dictionary();
    return dictionary ? dictionary->find(name) : nullptr;
}

// The text at "data" → "shopId", where the answer has that shape.
std::optional<std::string> shopIdIn(Value const& answer)
{
    auto const* data = member(answer, "data");
    auto const* shopId = data ? member(*data, "shopId") : nullptr;
    auto const* text = shopId ? shopId->text() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

}

Task<void> ZelvoraSDK::fetchShopId(std::string apiKey)
{
    if (auto stored = ZelvoraStorage::getValidShopId()) {
        write(&Properties::shopId, stored);
        ZelvoraLogger::d("Shop ID exists : " + *stored);
        co_return;
    }
    auto url = platform::URL::parse(serviceAddresses().lookupEndpoint);
    if (!url)
        co_return;

    Dictionary const body { { "profile", profile(read(&Properties::isDev)) }, { "api_key", apiKey } };
    auto request = makeRequest(*std::move(url), body);
    if (!request) {
        auto const& description = request.error().localizedDescription;
        ZelvoraLogger::e(description);
        report(ZelvoraSDKError::internalApiError(description));
        co_return;
    }
    ZelvoraLogger::d("fetchShopId Request URL: " + request->url.absoluteString());
    ZelvoraLogger::d("fetchShopId Request Body: " + platform::decodeUTF8(request->httpBody.bytes).value_or(""));

    auto performance = performRequest(*std::move(request));
    auto const answer = co_await performance;
    if (!answer) {
        auto const& description = answer.error().localizedDescription;
        ZelvoraLogger::e("fetchShopId Exception: " + description);
        report(ZelvoraSDKError::internalApiError(description));
        co_return;
    }
    acceptLookup(*answer);
}

Task<std::expected<URLSession::Answer, platform::Error>> ZelvoraSDK::performRequest(platform::URLRequest request)
{
    auto start = [&request](URLSession::Completion handler) {
        Platform::current().urlSession().dataTask(std::move(request), std::move(handler));
    };
    auto dataTask = platform::completion<std::expected<URLSession::Answer, platform::Error>>(start);
    auto answer = co_await dataTask;
    // The loader's own queue is not ours to work on.
    co_await platform::resumeOn(Platform::current().globalQueue());
    co_return answer;
}

void ZelvoraSDK::acceptLookup(URLSession::Answer const& answer)
{
    if (!answer.response.statusCode) {
        report(ZelvoraSDKError::internalApiError("Not a HTTP response"));
        return;
    }
    constexpr int success = 200;
    if (auto const status = *answer.response.statusCode; status != success) {
        auto const code = std::to_string(status);
        auto const body = platform::decodeUTF8(answer.data.bytes).value_or("No error body");
        ZelvoraLogger::e("fetchShopId Error " + code + " - Error Body: " + body);
        report(ZelvoraSDKError::internalApiError("fetchShopId - " + code));
        return;
    }
    auto const parsed = Platform::current().jsonSerialization().jsonObject(answer.data);
    if (!parsed) {
        auto const& description = parsed.error().localizedDescription;
        ZelvoraLogger::e("fetchShopId Exception: " + description);
        report(ZelvoraSDKError::internalApiError(description));
        return;
    }
    auto const shopId = shopIdIn(*parsed);
    if (!shopId)
        return;
    ZelvoraStorage::saveShopId(*shopId);
    write(&Properties::shopId, shopId);
    ZelvoraLogger::d("Shop ID: " + *shopId);
}

}
