#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingUpload.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/PostRequest.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <cstddef>
#include <utility>

namespace zelvora::internal {

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

// As the collector accepts it: no null markers, and every event has an event id and an advertising id.
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

bool isSuccessful(int status)
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
    if (!isSuccessful(status)) {
        auto const body = platform::decodeUTF8(result->data.bytes).value_or("");
        ZelvoraLogger::e("sendTrackingData Failed (Status: " + std::to_string(status) + ", Body: " + body + ")");
        return;
    }
    ZelvoraLogger::d("sendTrackingData Success - Sent " + std::to_string(count) + " events");
    // The sent events are still at the head: events saved during the upload were appended.
    ZelvoraStorage::removeEventTrackingData(static_cast<std::ptrdiff_t>(count));
}

}

void TrackingUpload::sendTrackingData() const
{
    auto const batch = ZelvoraStorage::getEventTrackingData().prefix(batchLimit);
    if (batch.isEmpty())
        return;
    auto const [adId, isDev] =
        m_properties.access([](Properties const& all) { return std::pair(all.adId.value_or(""), all.isDev); });
    auto const events = normalised(batch, adId);
    ZelvoraLogger::d("sendTrackingData events: " + readable(events));

    auto url = platform::URL::parse(serviceAddresses().trackingEndpoint);
    if (!url)
        return;
    auto request = makePostRequest(*std::move(url), { { "Content-Type", "application/json" } },
        { { "data", events }, { "profile", profile(isDev) } });
    if (!request) {
        ZelvoraLogger::e("sendTrackingData JSON Encoding Error");
        return;
    }
    Platform::current().urlSession().dataTask(
        *std::move(request), [count = batch.size()](std::expected<URLSession::Answer, platform::Error> const& result) {
            finishUpload(count, result);
        });
}

}
