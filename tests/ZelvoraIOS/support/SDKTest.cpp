#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <string_view>
#include <utility>

namespace zelvora::platform {

void PrintTo(OSLogType type, std::ostream* stream)
{
    switch (type) {
    case OSLogType::Default:
        *stream << "default";
        return;
    case OSLogType::Info:
        *stream << "info";
        return;
    case OSLogType::Debug:
        *stream << "debug";
        return;
    case OSLogType::Error:
        *stream << "error";
        return;
    case OSLogType::Fault:
        *stream << "fault";
        return;
    }
}

void PrintTo(Value const& value, std::ostream* stream)
{
    *stream << debugDescription(value);
}

void PrintTo(Array const& array, std::ostream* stream)
{
    *stream << debugDescription(Value(array));
}

void PrintTo(Dictionary const& dictionary, std::ostream* stream)
{
    *stream << debugDescription(Value(dictionary));
}

void PrintTo(URL const& url, std::ostream* stream)
{
    *stream << url.absoluteString();
}

}

namespace zelvora {

void PrintTo(ZelvoraSDKError const& error, std::ostream* stream)
{
    *stream << error.code() << " (" << error.detail().value_or("no detail") << ")";
}

}

namespace zelvora::tests {

void PrintTo(LogMessage const& message, std::ostream* stream)
{
    PrintTo(message.type, stream);
    *stream << ": " << message.text;
}

SDKTest::SDKTest(memory::Options options) : platform(memory::install(std::move(options))) { }

ZelvoraSDK::Result SDKTest::initialize(Configuration configuration)
{
    return sdk().initialize(std::move(configuration.userKey), std::move(configuration.apiKey),
        configuration.isTrackingEnabled, configuration.isDev, configuration.allowsSwipeBack,
        std::move(configuration.headerViewProvider), std::move(configuration.footerViewProvider),
        configuration.delegate, [this](std::optional<ZelvoraSDKError> const& error) { errors.push_back(error); });
}

void SDKTest::initializeAndFinish(Configuration configuration, std::string const& shopId)
{
    auto const requestsBefore = platform.urlSession().requests().size();
    ASSERT_TRUE(initialize(std::move(configuration)));
    platform.runUntilIdle();
    if (platform.urlSession().requests().size() > requestsBefore)
        platform.urlSession().answer(200, R"({"data": {"shopId": ")" + shopId + R"("}})", requestsBefore);
    allowTrackingAndFinish();
}

void SDKTest::allowTrackingAndFinish()
{
    platform.clock().advance(0.1);
    platform.runUntilIdle();
    if (platform.trackingManager().pendingRequestCount() > 0)
        platform.trackingManager().answer(platform::ATTrackingAuthorizationStatus::Authorized);
    platform.runUntilIdle();
    ASSERT_FALSE(ZelvoraSDKInspector::isInitializing());
}

std::vector<LogMessage> SDKTest::logMessages() const
{
    constexpr std::string_view prefix = "[ZelvoraSDK] ";
    std::vector<LogMessage> messages;
    for (auto const& line : platform.log().lines()) {
        EXPECT_TRUE(line.text.starts_with(prefix)) << line.text;
        messages.push_back({ line.type, line.text.substr(prefix.size()) });
    }
    return messages;
}

std::vector<std::string> SDKTest::logMessages(OSLogType type) const
{
    std::vector<std::string> texts;
    for (auto& message : logMessages()) {
        if (message.type == type)
            texts.push_back(std::move(message.text));
    }
    return texts;
}

std::string SDKTest::fullKey(std::string const& key)
{
    return "ZelvoraSDK_Storage_com.example.host_" + key;
}

std::optional<Value> SDKTest::stored(std::string const& fullKey) const
{
    auto const contents = platform.standardUserDefaults().contents();
    auto const found = contents.find(fullKey);
    return found == contents.end() ? std::nullopt : std::optional(found->second);
}

Value SDKTest::bodyOf(platform::URLRequest const& request)
{
    auto const body = platform::Platform::current().jsonSerialization().jsonObject(request.httpBody);
    EXPECT_TRUE(body) << request.httpBody.bytes;
    return body.value_or(Value());
}

Dictionary makeEvent(std::string const& name)
{
    return { { "name", name } };
}

void saveEvents(std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        ZelvoraStorage::saveEventTrackingData(makeEvent(std::to_string(i)));
}

std::vector<std::string> names(Array const& events)
{
    std::vector<std::string> names;
    for (auto const& event : events) {
        auto const* entries = event.dictionary();
        auto const* name = entries ? entries->find("name") : nullptr;
        names.push_back(name && name->text() ? *name->text() : "");
    }
    return names;
}

}
