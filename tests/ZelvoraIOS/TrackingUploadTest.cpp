#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"
#include "tests/ZelvoraIOS/support/RecordingPlatform.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/support/StandardOutput.h"

#include <limits>
#include <thread>

namespace zelvora::tests {

namespace {

using internal::serviceAddresses;
using platform::Data;
using platform::Date;
using platform::Null;
using Messages = std::vector<LogMessage>;
using Names = std::vector<std::string>;

constexpr std::string_view eventsPrefix = "sendTrackingData events: ";

class TrackingUploadTest : public SDKTest {
protected:
    [[nodiscard]] memory::URLSession& urlSession() { return platform.urlSession(); }
    [[nodiscard]] static Names queued() { return names(ZelvoraStorage::getEventTrackingData()); }
    static void setAdId(std::optional<std::string> adId)
    {
        ZelvoraSDKInspector::change([&adId](auto& properties) { properties.adId = std::move(adId); });
    }
    static void setDev(bool isDev)
    {
        ZelvoraSDKInspector::change([isDev](auto& properties) { properties.isDev = isDev; });
    }

    // The log without the store's lines.
    [[nodiscard]] Messages uploadMessages() const
    {
        auto messages = logMessages();
        std::erase_if(messages, [](LogMessage const& message) {
            return message.text.starts_with("get(forKey: ") || message.text.starts_with("set(forKey: ");
        });
        return messages;
    }
    // The events in the body of a request.
    [[nodiscard]] static Array sentEvents(platform::URLRequest const& request)
    {
        auto const body = bodyOf(request);
        auto const* events = body.dictionary() ? body.dictionary()->find("data") : nullptr;
        EXPECT_TRUE(events && events->array());
        return events && events->array() ? *events->array() : Array {};
    }
    // The event as the collector receives it.
    [[nodiscard]] Dictionary sent(Dictionary const& event)
    {
        ZelvoraStorage::clearEventTrackingData();
        ZelvoraStorage::saveEventTrackingData(event);
        sdk().sendTrackingData();
        auto const events = sentEvents(urlSession().requests().back());
        EXPECT_EQ(events.size(), 1U);
        EXPECT_EQ(ZelvoraStorage::getEventTrackingData(), Array { Value(event) }) << "the stored event is unchanged";
        return *events.at(0).dictionary();
    }
    void answer(int status, std::string body = {})
    {
        urlSession().answer(status, std::move(body));
        platform.runUntilIdle();
    }
    // Uploads the queue and returns what is logged about the answer.
    [[nodiscard]] Messages messagesAfter(int status, std::string body)
    {
        sdk().sendTrackingData();
        platform.log().clear();
        answer(status, std::move(body));
        return uploadMessages();
    }
};

TEST_F(TrackingUploadTest, AnEmptyQueueSendsAndLogsNothing)
{
    sdk().sendTrackingData();
    platform.runUntilIdle();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_EQ(uploadMessages(), Messages {});
}

TEST_F(TrackingUploadTest, AForeignValueInPlaceOfTheQueueSendsNothingAndStays)
{
    ZelvoraStorage::set("text", "tracking_event");
    sdk().sendTrackingData();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_EQ(stored(fullKey("tracking_event")), "text");
}

TEST_F(TrackingUploadTest, TheRequestIsAPostToTheCollectorWithTheContentTypeAndNothingElse)
{
    saveEvents(1);
    sdk().sendTrackingData();
    auto const requests = urlSession().requests();
    ASSERT_EQ(requests.size(), 1U);
    platform::URLRequest const expected {
        .url = *platform::URL::parse(serviceAddresses().trackingEndpoint),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" } },
        .httpBody = requests.front().httpBody,
        .timeoutInterval = 60,
    };
    EXPECT_EQ(requests.front(), expected);
}

TEST_F(TrackingUploadTest, TheBodyHasTheEventsAndTheProfileAndIsCompact)
{
    setAdId("ad-1");
    saveEvents(2);
    sdk().sendTrackingData();
    auto const request = urlSession().requests().front();
    auto const event = [](char const* name) {
        return Dictionary { { "name", name }, { "eventId", "0" }, { "adid", "ad-1" } };
    };
    EXPECT_EQ(
        bodyOf(request), Value(Dictionary { { "data", Array { event("0"), event("1") } }, { "profile", "prd" } }));
    EXPECT_EQ(request.httpBody.bytes.find_first_of(" \n\t"), std::string::npos);
}

TEST_F(TrackingUploadTest, DevelopmentSendsTheProfileDevToTheSameEndpoint)
{
    setDev(true);
    saveEvents(1);
    sdk().sendTrackingData();
    auto const request = urlSession().requests().front();
    EXPECT_EQ(*bodyOf(request).dictionary()->find("profile"), Value("dev"));
    EXPECT_EQ(request.url.absoluteString(), serviceAddresses().trackingEndpoint);
}

TEST_F(TrackingUploadTest, BeforeInitializeTheProfileIsPrdAndTheAdvertisingIdEmpty)
{
    EXPECT_EQ(*sent({}).find("adid"), Value(""));
    EXPECT_EQ(*bodyOf(urlSession().requests().back()).dictionary()->find("profile"), Value("prd"));
}

TEST_F(TrackingUploadTest, AnEventGetsItsMissingEventIdAndAdvertisingId)
{
    setAdId("ad-1");
    EXPECT_EQ(sent({}), (Dictionary { { "eventId", "0" }, { "adid", "ad-1" } }));
}

TEST_F(TrackingUploadTest, EmptyAndNullMembersAreFilledByWhatWasStored)
{
    setAdId("ad-1");
    EXPECT_EQ(sent({ { "eventId", "" }, { "adid", Null {} }, { "more", Null {} } }),
        (Dictionary { { "eventId", "0" }, { "adid", "ad-1" }, { "more", "" } }));
    EXPECT_EQ(sent({ { "eventId", Null {} }, { "adid", "" }, { "more", "" } }),
        (Dictionary { { "eventId", "0" }, { "adid", "ad-1" }, { "more", "" } }));
}

TEST_F(TrackingUploadTest, WithoutAnAdvertisingIdItIsSentEmpty)
{
    EXPECT_EQ(sent({ { "eventId", "" }, { "adid", Null {} }, { "more", Null {} } }),
        (Dictionary { { "eventId", "0" }, { "adid", "" }, { "more", "" } }));
}

TEST_F(TrackingUploadTest, AnEventIdThatIsANumberIsKept)
{
    EXPECT_EQ(*sent({ { "eventId", 7 } }).find("eventId"), Value(7));
}

TEST_F(TrackingUploadTest, AnyOtherEventIdAndAdvertisingIdIsKept)
{
    setAdId("ad-1");
    std::vector<Value> const others { "x", "0", " ", 0, -1.5, false, true, Array {}, Dictionary {}, Array { Null {} } };
    for (auto const& other : others) {
        auto const event = sent({ { "eventId", other }, { "adid", other } });
        EXPECT_EQ(*event.find("eventId"), other);
        EXPECT_EQ(*event.find("adid"), other);
    }
}

TEST_F(TrackingUploadTest, NamesAreComparedExactly)
{
    setAdId("ad-1");
    EXPECT_EQ(sent({ { "eventID", "" }, { "adId", Null {} } }),
        (Dictionary { { "eventID", "" }, { "adId", "" }, { "eventId", "0" }, { "adid", "ad-1" } }));
}

TEST_F(TrackingUploadTest, OnlyTheMembersOfTheEventItselfLoseTheirNulls)
{
    Value const nested = Dictionary { { "list", Array { Null {} } }, { "none", Null {} } };
    EXPECT_EQ(*sent({ { "nested", nested } }).find("nested"), nested);
}

TEST_F(TrackingUploadTest, AllOtherMembersAreSentUnchanged)
{
    Dictionary const event { { "eventId", "e" }, { "adid", "a" }, { "text", "\"quoted\" 한글 \n" }, { "n", 0.1 },
        { "flag", false }, { "nested", Dictionary { { "list", Array { 1, "two", true } } } } };
    EXPECT_EQ(sent(event), event);
}

TEST_F(TrackingUploadTest, TheNormalisedEventsAreLoggedAsPrettyPrintedJSON)
{
    setAdId("ad-1");
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "" }, { "more", Null {} } });
    platform.log().clear();
    StandardOutput const output;
    sdk().sendTrackingData();
    auto const messages = uploadMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages.front().type, OSLogType::Debug);
    ASSERT_TRUE(messages.front().text.starts_with(eventsPrefix)) << messages.front().text;
    auto const text = messages.front().text.substr(eventsPrefix.size());
    EXPECT_NE(text.find('\n'), std::string::npos);
    auto const read = platform.jsonSerialization().jsonObject({ text });
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, Value(Array { Dictionary { { "eventId", "0" }, { "more", "" }, { "adid", "ad-1" } } }));
    EXPECT_NE(output.text().find("[ZelvoraSDK-debug] " + messages.front().text + "\n"), std::string::npos);
}

TEST_F(TrackingUploadTest, AnEndpointThatIsNotAUrlEndsTheUploadSilentlyAfterTheEventsWereLogged)
{
    auto addresses = serviceAddresses();
    addresses.trackingEndpoint = "";
    platform.setServiceAddresses(addresses);
    saveEvents(2);
    platform.log().clear();
    sdk().sendTrackingData();
    platform.runUntilIdle();
    auto const messages = uploadMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_TRUE(messages.front().text.starts_with(eventsPrefix));
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_EQ(queued(), (Names { "0", "1" }));
}

TEST_F(TrackingUploadTest, AnEndpointThatIsNotAUrlIsFoundBeforeABodyThatCannotBeWritten)
{
    auto addresses = serviceAddresses();
    addresses.trackingEndpoint = "";
    platform.setServiceAddresses(addresses);
    ZelvoraStorage::saveEventTrackingData({ { "date", Date { 1 } } });
    sdk().sendTrackingData();
    EXPECT_TRUE(logMessages(OSLogType::Error).empty());
}

TEST_F(TrackingUploadTest, EventsThatJSONCannotRepresentAreDescribedAndReportedAndStay)
{
    std::vector<Value> const unwritable { Date { 1 }, Data { "x" }, std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(), Array { Date { 1 } }, "\xff" };
    for (auto const& value : unwritable) {
        ZelvoraStorage::clearEventTrackingData();
        ZelvoraStorage::saveEventTrackingData({ { "value", value }, { "name", "bad" } });
        ZelvoraStorage::saveEventTrackingData(makeEvent("good"));
        auto const before = platform.standardUserDefaults().contents();
        platform.log().clear();
        platform.standardUserDefaults().clearCalls();
        sdk().sendTrackingData();
        platform.runUntilIdle();

        auto const messages = uploadMessages();
        ASSERT_EQ(messages.size(), 2U) << debugDescription(value);
        EXPECT_EQ(messages[0].type, OSLogType::Debug);
        EXPECT_TRUE(messages[0].text.starts_with(eventsPrefix));
        EXPECT_EQ(messages[1], (LogMessage { OSLogType::Error, "sendTrackingData JSON Encoding Error" }));
        EXPECT_TRUE(urlSession().requests().empty());
        EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
        EXPECT_EQ(queued(), (Names { "bad", "good" }));
    }
}

TEST_F(TrackingUploadTest, AnEventAsDeepAsTheQueueTakesIsSent)
{
    Value deep = "leaf";
    while (deep.nesting() < Value::maximumNesting - 3)
        deep = Array { deep };
    ZelvoraStorage::saveEventTrackingData({ { "deep", deep } });
    ZelvoraStorage::saveEventTrackingData({ { "deeper", Array { deep } } });
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData(), Array { Value(Dictionary { { "deep", deep } }) });
    platform.log().clear();
    sdk().sendTrackingData();
    EXPECT_EQ(urlSession().requests().size(), 1U);
    EXPECT_TRUE(logMessages(OSLogType::Error).empty());
}

TEST_F(TrackingUploadTest, EventsThatJSONCannotRepresentAreLoggedByTheirDebugDescription)
{
    setAdId("ad-1");
    ZelvoraStorage::saveEventTrackingData({ { "eventId", Null {} }, { "when", Date { 1 } } });
    platform.log().clear();
    sdk().sendTrackingData();
    Value const normalised = Array { Dictionary { { "eventId", "0" }, { "when", Date { 1 } }, { "adid", "ad-1" } } };
    EXPECT_TRUE(platform.log().holds(OSLogType::Debug, std::string(eventsPrefix) + debugDescription(normalised)));
}

TEST_F(TrackingUploadTest, EverySuccessfulStatusRemovesTheEventsAndLogsTheirNumber)
{
    for (auto const status : { 200, 201, 202, 204, 226, 299 }) {
        saveEvents(3);
        EXPECT_EQ(messagesAfter(status, "ignored"),
            (Messages { { OSLogType::Debug, "sendTrackingData Success - Sent 3 events" } }))
            << status;
        EXPECT_TRUE(queued().empty()) << status;
        EXPECT_TRUE(platform.standardUserDefaults().contents().empty()) << "the entry is removed with its last event";
    }
}

TEST_F(TrackingUploadTest, ASuccessIsLoggedBeforeTheEventsAreRemoved)
{
    saveEvents(3);
    sdk().sendTrackingData();
    platform.log().clear();
    answer(200);
    auto const messages = logMessages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].text, "sendTrackingData Success - Sent 3 events");
    EXPECT_TRUE(messages[1].text.starts_with("get(forKey: tracking_event")) << messages[1].text;
}

TEST_F(TrackingUploadTest, EveryOtherStatusKeepsTheEventsAndLogsTheBody)
{
    saveEvents(3);
    for (auto const status : { 100, 199, 300, 301, 302, 304, 400, 404, 413, 429, 500, 503 }) {
        EXPECT_EQ(messagesAfter(status, "why not"),
            (Messages { { OSLogType::Error,
                "sendTrackingData Failed (Status: " + std::to_string(status) + ", Body: why not)" } }));
        EXPECT_EQ(queued(), (Names { "0", "1", "2" })) << status;
    }
}

TEST_F(TrackingUploadTest, AFailureWithoutABodyOrWithOneThatIsNotUTF8LogsNone)
{
    saveEvents(1);
    for (std::string const body : { "", "\xc3\x28" }) {
        EXPECT_EQ(messagesAfter(500, body),
            (Messages { { OSLogType::Error, "sendTrackingData Failed (Status: 500, Body: )" } }));
    }
}

TEST_F(TrackingUploadTest, AnAnswerThatIsNotHTTPHasTheStatusMinusOne)
{
    saveEvents(1);
    sdk().sendTrackingData();
    platform.log().clear();
    urlSession().answerNotHTTP("a file");
    platform.runUntilIdle();
    EXPECT_EQ(
        uploadMessages(), (Messages { { OSLogType::Error, "sendTrackingData Failed (Status: -1, Body: a file)" } }));
    EXPECT_EQ(queued(), (Names { "0" }));
}

TEST_F(TrackingUploadTest, ATransportErrorKeepsTheEventsAndLogsItsDescription)
{
    saveEvents(2);
    for (auto const& error :
        { memory::URLSession::notConnected(), memory::URLSession::timedOut(), memory::URLSession::cancelled() }) {
        sdk().sendTrackingData();
        platform.log().clear();
        urlSession().fail(error);
        platform.runUntilIdle();
        EXPECT_EQ(uploadMessages(),
            (Messages { { OSLogType::Error, "sendTrackingData Network Error: " + error.localizedDescription } }));
        EXPECT_EQ(queued(), (Names { "0", "1" }));
    }
}

TEST_F(TrackingUploadTest, NothingIsTriedAgainAndNothingIsReportedToTheHost)
{
    initializeAndFinish();
    saveEvents(1);
    sdk().sendTrackingData();
    auto const before = urlSession().requests().size();
    answer(500);
    platform.clock().advance(100'000);
    platform.runUntilIdle();
    EXPECT_EQ(urlSession().requests().size(), before);
    EXPECT_TRUE(errors.empty());
}

TEST_F(TrackingUploadTest, TheBodyOfASuccessIsNotRead)
{
    saveEvents(1);
    EXPECT_EQ(messagesAfter(200, "\xff not json"),
        (Messages { { OSLogType::Debug, "sendTrackingData Success - Sent 1 events" } }));
}

TEST_F(TrackingUploadTest, AHugeAnswerIsAccepted)
{
    saveEvents(1);
    std::string body;
    body.resize(50'000'000, 'x');
    EXPECT_EQ(messagesAfter(200, std::move(body)).size(), 1U);
    EXPECT_TRUE(queued().empty());
}

TEST_F(TrackingUploadTest, TheEventsAreRemovedOnTheLoadersQueue)
{
    saveEvents(1);
    sdk().sendTrackingData();
    urlSession().answer(200);
    (void)platform.mainQueue().runAll();
    (void)platform.globalQueue().runAll();
    EXPECT_EQ(queued(), (Names { "0" }));
    (void)urlSession().loaderQueue().runAll();
    EXPECT_TRUE(queued().empty());
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(TrackingUploadTest, TheRequestIsStartedOnTheCallersThreadBeforeTheCallReturns)
{
    saveEvents(1);
    sdk().sendTrackingData();
    EXPECT_EQ(urlSession().requests().size(), 1U);
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    EXPECT_TRUE(platform.globalQueue().isEmpty());
}

TEST_F(TrackingUploadTest, FiveHundredEventsGoInOneCall)
{
    saveEvents(500);
    sdk().sendTrackingData();
    EXPECT_EQ(sentEvents(urlSession().requests().front()).size(), 500U);
    answer(200);
    EXPECT_TRUE(queued().empty());
}

TEST_F(TrackingUploadTest, TwelveHundredEventsTakeThreeCallsOldestFirst)
{
    saveEvents(1200);
    std::size_t next = 0;
    for (auto const expected : { 500U, 500U, 200U }) {
        sdk().sendTrackingData();
        auto const events = sentEvents(urlSession().requests().back());
        ASSERT_EQ(events.size(), expected);
        EXPECT_EQ(names(events).front(), std::to_string(next));
        EXPECT_EQ(names(events).back(), std::to_string(next + expected - 1));
        platform.log().clear();
        answer(200);
        EXPECT_TRUE(platform.log().holds(
            OSLogType::Debug, "sendTrackingData Success - Sent " + std::to_string(expected) + " events"));
        next += expected;
        EXPECT_EQ(ZelvoraStorage::getEventTrackingData().size(), 1200 - next);
    }
    sdk().sendTrackingData();
    EXPECT_EQ(urlSession().requests().size(), 3U);
}

TEST_F(TrackingUploadTest, AnEventSavedDuringTheRequestIsStillQueuedAfterIt)
{
    saveEvents(2);
    sdk().sendTrackingData();
    ZelvoraStorage::saveEventTrackingData(makeEvent("meanwhile"));
    answer(200);
    EXPECT_EQ(queued(), (Names { "meanwhile" }));
    sdk().sendTrackingData();
    EXPECT_EQ(names(sentEvents(urlSession().requests().back())), (Names { "meanwhile" }));
}

TEST_F(TrackingUploadTest, OverlappingCallsSendTheSameEventsAndEachSuccessRemovesItsOwnNumber)
{
    saveEvents(2);
    sdk().sendTrackingData();
    ZelvoraStorage::saveEventTrackingData(makeEvent("2"));
    sdk().sendTrackingData();
    auto const requests = urlSession().requests();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(names(sentEvents(requests[0])), (Names { "0", "1" }));
    EXPECT_EQ(names(sentEvents(requests[1])), (Names { "0", "1", "2" }));
    for (auto const* name : { "3", "4", "5" })
        ZelvoraStorage::saveEventTrackingData(makeEvent(name));
    answer(200);
    EXPECT_EQ(queued(), (Names { "2", "3", "4", "5" }));
    answer(200);
    EXPECT_EQ(queued(), (Names { "5" })) << "also events that were never sent";
}

TEST_F(TrackingUploadTest, AQueueThatWasClearedDuringTheRequestStaysEmpty)
{
    saveEvents(2);
    sdk().sendTrackingData();
    ZelvoraStorage::clearEventTrackingData();
    answer(200);
    EXPECT_TRUE(queued().empty());
}

TEST_F(TrackingUploadTest, APageThatSavesWhileTheAnswerComesLosesNothing)
{
    saveEvents(100);
    sdk().sendTrackingData();
    urlSession().answer(200);
    std::thread loader([this] { (void)urlSession().loaderQueue().runAll(); });
    for (int i = 0; i < 200; ++i)
        ZelvoraStorage::saveEventTrackingData(makeEvent("meanwhile"));
    loader.join();
    EXPECT_EQ(queued(), Names(200, "meanwhile"));
}

TEST_F(TrackingUploadTest, AnyThreadMaySend)
{
    saveEvents(10);
    std::thread other([] {
        for (int i = 0; i < 20; ++i)
            sdk().sendTrackingData();
    });
    for (int i = 0; i < 20; ++i) {
        setAdId("ad-" + std::to_string(i));
        sdk().sendTrackingData();
    }
    other.join();
    EXPECT_EQ(urlSession().requests().size(), 40U);
}

TEST(TrackingUploadWriterTest, EventsWhoseJSONIsNotUTF8AreLoggedByTheirDebugDescriptionAndSent)
{
    auto& platform = install<RecordingPlatform>();
    platform.jsonSerialization().setOutput("\xff");
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "1" }, { "adid", "a" } });
    ZelvoraSDK::shared().sendTrackingData();
    Value const events = Array { Dictionary { { "eventId", "1" }, { "adid", "a" } } };
    EXPECT_TRUE(platform.memory.log().holds(OSLogType::Debug, std::string(eventsPrefix) + debugDescription(events)));
    ASSERT_EQ(platform.memory.urlSession().requests().size(), 1U);
    EXPECT_EQ(platform.memory.urlSession().requests().front().httpBody.bytes, "\xff");
}

}

}
