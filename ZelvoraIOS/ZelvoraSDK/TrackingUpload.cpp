#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDK/serviceAddresses.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <cstddef>
#include <utility>

namespace zelvora {

using platform::Array;
using platform::Dictionary;
using platform::JSONWritingOptions;
using platform::Platform;
using platform::URLSession;
using platform::Value;

namespace {

constexpr std::size_t batchLimit = 500;

bool isBlank(Value const* value)
{
    return !value || value->isNull() || (value->text() && value->text()->empty());
}

// As the collector takes it: no null marker, an event id and an advertising id in every event.
Dictionary normalised(Dictionary const& event, std::string const& adId)
{
    Dictionary::Entries entries;
    for (auto const& [key, value] : event)
        entries.emplace_back(key, value.isNull() ? Value("") : value);
    if (isBlank(event.find("eventId")))
        entries.emplace_back("eventId", "0");
    if (isBlank(event.find("adid")))
        entries.emplace_back("adid", adId);
    return Dictionary(std::move(entries));
}

Array normalised(Array const& batch, std::string const& adId)
{
    Array events;
    for (auto const& event : batch)
        events = events.appending(normalised(*event.dictionary(), adId));
    return events;
}

std::string readable(Array const& events)
{
    auto const written = Platform::current().jsonSerialization().data(events, JSONWritingOptions::PrettyPrinted);
    auto const text = written ? platform::decodeUTF8(written->bytes) : std::nullopt;
    return text ? *text : debugDescription(Value(events));
}

bool isSuccess(int status)
{
    constexpr int first = 200;
    constexpr int last = 299;
    return status >= first && status <= last;
}

void finishUpload(std::size_t count, std::expected<URLSession::Answer, platform::Error> const& result)
{
    if (!result) {
        ZelvoraLogger::e("sendTrackingData Network Error: " + result.error().localizedDescription);
        return;
    }
    constexpr int notHTTP = -1;
    auto const status = result->response.statusCode.value_or(notHTTP);
    if (!isSuccess(status)) {
        auto const body = platform::decodeUTF8(result->data.bytes).value_or("");
        ZelvoraLogger::e("sendTrackingData Failed (Status: " + std::to_string(status) + ", Body: " + body + ")");
        return;
    }
    ZelvoraLogger::d("sendTrackingData Success - Sent " + std::to_string(count) + " events");
    // By count, from the head: what was saved meanwhile stands behind.
    ZelvoraStorage::removeEventTrackingData(static_cast<std::ptrdiff_t>(count));
}

Value orNull(std::optional<std::string> const& text)
{
    return text ? Value(*text) : Value();
}

}

void ZelvoraSDK::sendTrackingData()
{
    auto const batch = ZelvoraStorage::getEventTrackingData().prefix(batchLimit);
    if (batch.isEmpty())
        return;
    auto const events = normalised(batch, read(&Properties::adId).value_or(""));
    ZelvoraLogger::d("sendTrackingData events: " + readable(events));

    auto url = platform::URL::parse(serviceAddresses().trackingEndpoint);
    if (!url)
        return;
    Dictionary const body { { "data", events }, { "profile", profile(read(&Properties::isDev)) } };
    auto data = Platform::current().jsonSerialization().data(body, JSONWritingOptions::None);
    if (!data) {
        ZelvoraLogger::e("sendTrackingData JSON Encoding Error");
        return;
    }
    platform::URLRequest request {
        .url = *std::move(url),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" } },
        .httpBody = *std::move(data),
    };
    Platform::current().urlSession().dataTask(
        std::move(request), [count = batch.size()](std::expected<URLSession::Answer, platform::Error> const& result) {
            finishUpload(count, result);
        });
}

void ZelvoraSDK::sendData()
{
    auto const properties = withProperties([](Properties const& all) { return all; });
    auto url = properties.apiURL ? platform::URL::parse(*properties.apiURL) : std::nullopt;
    if (!url)
        return;
    Dictionary const body { { "userKey", orNull(properties.userKey) }, { "apiKey", orNull(properties.apiKey) },
        { "adId", orNull(properties.adId) }, { "packageName", orNull(properties.packageName) } };
    auto data = Platform::current().jsonSerialization().data(body, JSONWritingOptions::None);
    if (!data)
        return;
    platform::URLRequest request {
        .url = *std::move(url),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json; utf-8" }, { "Accept", "application/json" } },
        .httpBody = *std::move(data),
    };
    Platform::current().urlSession().dataTask(std::move(request),
        [this](std::expected<URLSession::Answer, platform::Error> const& result) { acceptIdentity(result); });
}

void ZelvoraSDK::acceptIdentity(std::expected<URLSession::Answer, platform::Error> const& result)
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
    write(&Properties::shopId, *shopId);
    ZelvoraLogger::d("Shop ID: " + *shopId);
}

}
