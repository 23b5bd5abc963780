#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <limits>
#include <thread>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::Data;
using platform::Date;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

class EventQueueTest : public SDKTest {
protected:
    [[nodiscard]] static Names queued() { return names(ZelvoraStorage::getEventTrackingData()); }
    [[nodiscard]] Calls calls() const { return platform.standardUserDefaults().calls(); }
    void storeUnderTheKey(Value value)
    {
        platform.standardUserDefaults().setContents({ { fullKey("tracking_event"), std::move(value) } });
    }
};

TEST_F(EventQueueTest, AFreshInstallHasAnEmptyQueue)
{
    EXPECT_TRUE(ZelvoraStorage::getEventTrackingData().isEmpty());
    EXPECT_TRUE(calls().empty());
}

TEST_F(EventQueueTest, EventsAreKeptOldestFirstAsOneArrayUnderTheKey)
{
    saveEvents(3);
    EXPECT_EQ(queued(), (Names { "0", "1", "2" }));
    auto const contents = platform.standardUserDefaults().contents();
    EXPECT_EQ(contents.size(), 1U);
    EXPECT_EQ(stored(fullKey("tracking_event")), Value(Array { makeEvent("0"), makeEvent("1"), makeEvent("2") }));
}

TEST_F(EventQueueTest, AnEventIsKeptExactlyAsThePageSentIt)
{
    Dictionary const event { { "eventId", "" }, { "adid", platform::Null {} }, { "n", 7 }, { "flag", true },
        { "nested", Dictionary { { "list", Array { 1, "two", platform::Null {}, Dictionary {} } } } },
        { "한글", "값" } };
    ZelvoraStorage::saveEventTrackingData(event);
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData(), Array { Value(event) });
}

TEST_F(EventQueueTest, AnEmptyEventIsAnEvent)
{
    ZelvoraStorage::saveEventTrackingData({});
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData(), Array { Value(Dictionary {}) });
}

TEST_F(EventQueueTest, EqualEventsAreAllKept)
{
    ZelvoraStorage::saveEventTrackingData(makeEvent("same"));
    ZelvoraStorage::saveEventTrackingData(makeEvent("same"));
    EXPECT_EQ(queued(), (Names { "same", "same" }));
}

TEST_F(EventQueueTest, TheQueueIsWrittenWithoutExpiryAndDeletesWhatAnExpiryLeft)
{
    platform.standardUserDefaults().setContents(
        { { fullKey("tracking_event_ts"), "no date" }, { fullKey("tracking_event_exp"), 1 } });
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    EXPECT_EQ(calls(),
        (Calls { "setObject " + fullKey("tracking_event"), "removeObject " + fullKey("tracking_event_ts"),
            "removeObject " + fullKey("tracking_event_exp") }));
    EXPECT_EQ(platform.standardUserDefaults().contents().size(), 1U);
}

TEST_F(EventQueueTest, EventsNeverExpire)
{
    saveEvents(1);
    platform.clock().advance(1e9);
    EXPECT_EQ(queued(), (Names { "0" }));
}

TEST_F(EventQueueTest, ReadingTheQueueLogsTheReadEveryTimeAndWritesNothing)
{
    saveEvents(1);
    platform.log().clear();
    platform.standardUserDefaults().clearCalls();
    (void)ZelvoraStorage::getEventTrackingData();
    (void)ZelvoraStorage::getEventTrackingData();
    auto const messages = logMessages();
    ASSERT_EQ(messages.size(), 2U);
    for (auto const& message : messages) {
        EXPECT_EQ(message.type, OSLogType::Debug);
        EXPECT_TRUE(message.text.starts_with("get(forKey: tracking_event, value: ")) << message.text;
    }
    EXPECT_TRUE(calls().empty());
}

TEST_F(EventQueueTest, SavingLogsTheReadAndThenTheWrite)
{
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    auto const messages = logMessages(OSLogType::Debug);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0], "get(forKey: tracking_event, value: nil)");
    EXPECT_EQ(
        messages[1], "set(forKey: tracking_event, value: " + debugDescription(Value(Array { makeEvent("a") })) + ")");
}

TEST_F(EventQueueTest, RemovingTwoOfThreeLeavesTheNewest)
{
    saveEvents(3);
    ZelvoraStorage::removeEventTrackingData(2);
    EXPECT_EQ(queued(), (Names { "2" }));
}

TEST_F(EventQueueTest, RemovingAsManyAsThereAreRemovesTheEntry)
{
    saveEvents(3);
    platform.standardUserDefaults().clearCalls();
    ZelvoraStorage::removeEventTrackingData(3);
    EXPECT_EQ(calls(),
        (Calls { "removeObject " + fullKey("tracking_event"), "removeObject " + fullKey("tracking_event_ts"),
            "removeObject " + fullKey("tracking_event_exp") }));
    EXPECT_EQ(ZelvoraStorage::get("tracking_event"), std::nullopt);
}

TEST_F(EventQueueTest, RemovingMoreThanThereAreRemovesTheEntry)
{
    saveEvents(2);
    ZelvoraStorage::removeEventTrackingData(3);
    EXPECT_EQ(ZelvoraStorage::get("tracking_event"), std::nullopt);
    EXPECT_TRUE(platform.standardUserDefaults().contents().empty());

    saveEvents(2);
    ZelvoraStorage::removeEventTrackingData(std::numeric_limits<std::ptrdiff_t>::max());
    EXPECT_TRUE(platform.standardUserDefaults().contents().empty());
}

TEST_F(EventQueueTest, RemovingNoneFromAnEmptyQueueRemovesTheEntry)
{
    storeUnderTheKey(Array {});
    ZelvoraStorage::removeEventTrackingData(0);
    EXPECT_TRUE(platform.standardUserDefaults().contents().empty());
    ZelvoraStorage::removeEventTrackingData(0);
    EXPECT_EQ(ZelvoraStorage::get("tracking_event"), std::nullopt);
}

TEST_F(EventQueueTest, RemovingNoneRewritesTheQueueUnchanged)
{
    saveEvents(2);
    auto const before = platform.standardUserDefaults().contents();
    platform.standardUserDefaults().clearCalls();
    ZelvoraStorage::removeEventTrackingData(0);
    EXPECT_EQ(calls(),
        (Calls { "setObject " + fullKey("tracking_event"), "removeObject " + fullKey("tracking_event_ts"),
            "removeObject " + fullKey("tracking_event_exp") }));
    EXPECT_EQ(platform.standardUserDefaults().contents(), before);
}

TEST_F(EventQueueTest, ANegativeCountIsRefusedWithOneErrorLineAndTheQueueStays)
{
    saveEvents(2);
    platform.log().clear();
    ZelvoraStorage::removeEventTrackingData(-1);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Error, "removeEventTrackingData refused a negative count" } }));
    EXPECT_EQ(queued(), (Names { "0", "1" }));
}

TEST_F(EventQueueTest, EventsSavedAfterTheBatchWasTakenSurviveItsRemoval)
{
    saveEvents(3);
    auto const batch = ZelvoraStorage::getEventTrackingData();
    ZelvoraStorage::saveEventTrackingData(makeEvent("later"));
    ZelvoraStorage::removeEventTrackingData(static_cast<std::ptrdiff_t>(batch.size()));
    EXPECT_EQ(queued(), (Names { "later" }));
    EXPECT_EQ(names(batch), (Names { "0", "1", "2" }));
}

TEST_F(EventQueueTest, ClearingDeletesTheEntryAndItsCompanions)
{
    saveEvents(2);
    platform.standardUserDefaults().clearCalls();
    ZelvoraStorage::clearEventTrackingData();
    EXPECT_EQ(calls(),
        (Calls { "removeObject " + fullKey("tracking_event"), "removeObject " + fullKey("tracking_event_ts"),
            "removeObject " + fullKey("tracking_event_exp") }));
    EXPECT_TRUE(queued().empty());
    ZelvoraStorage::clearEventTrackingData();
    EXPECT_TRUE(queued().empty());
}

TEST_F(EventQueueTest, AForeignValueUnderTheKeyReadsAsEmptyAndIsNotDeleted)
{
    std::vector<Value> const foreign { "text", 7, true, Date { 1 }, Data { "x" }, makeEvent("alone"),
        Array { "no event" }, Array { makeEvent("a"), 7 }, Array { makeEvent("a"), platform::Null {} },
        Array { Value(Array { makeEvent("a") }) } };
    for (auto const& value : foreign) {
        storeUnderTheKey(value);
        EXPECT_TRUE(ZelvoraStorage::getEventTrackingData().isEmpty()) << debugDescription(value);
        EXPECT_EQ(stored(fullKey("tracking_event")), value);
    }
}

TEST_F(EventQueueTest, TheNextEventOverwritesAForeignValue)
{
    for (auto const& value : { Value("text"), Value(Array { makeEvent("a"), 7 }) }) {
        storeUnderTheKey(value);
        ZelvoraStorage::saveEventTrackingData(makeEvent("first"));
        EXPECT_EQ(queued(), (Names { "first" }));
    }
}

TEST_F(EventQueueTest, RemovingFromAForeignValueRemovesTheEntry)
{
    storeUnderTheKey("text");
    ZelvoraStorage::removeEventTrackingData(1);
    EXPECT_TRUE(platform.standardUserDefaults().contents().empty());
}

TEST_F(EventQueueTest, AnEventThatNestsAsDeepAsAnUploadCanHoldIsQueued)
{
    Value deep = "leaf";
    while (deep.nesting() < Value::maximumNesting - 3)
        deep = Array { deep };
    saveEvents(1);
    ZelvoraStorage::saveEventTrackingData({ { "name", "deep" }, { "deep", deep } });
    EXPECT_EQ(queued(), (Names { "0", "deep" }));
}

TEST_F(EventQueueTest, AnEventThatNestsDeeperIsRefusedWithOneErrorLineAndTheQueueStays)
{
    Value deep = "leaf";
    while (deep.nesting() < Value::maximumNesting - 2)
        deep = Array { deep };
    saveEvents(2);
    platform.log().clear();
    ZelvoraStorage::saveEventTrackingData({ { "name", "too deep" }, { "deep", deep } });
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> {
            { OSLogType::Error, "saveEventTrackingData refused an event that nests too deep to be uploaded" } }));
    EXPECT_EQ(queued(), (Names { "0", "1" }));
    ZelvoraStorage::saveEventTrackingData(makeEvent("next"));
    EXPECT_EQ(queued(), (Names { "0", "1", "next" }));
}

TEST_F(EventQueueTest, NumbersThatJSONCannotRepresentAreKept)
{
    ZelvoraStorage::saveEventTrackingData({ { "inf", std::numeric_limits<double>::infinity() } });
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData(),
        Array { Value(Dictionary { { "inf", std::numeric_limits<double>::infinity() } }) });
}

TEST_F(EventQueueTest, ThereIsNoCapOnTheNumberOfEvents)
{
    constexpr std::size_t count = 3000;
    // The log in memory would keep every line.
    platform.log().setEnabled(OSLogType::Debug, false);
    saveEvents(count);
    auto const events = ZelvoraStorage::getEventTrackingData();
    EXPECT_EQ(events.size(), count);
    EXPECT_EQ(names(events).back(), std::to_string(count - 1));
}

TEST_F(EventQueueTest, ALogLineCostsTheSameHoweverLongTheQueueIs)
{
    saveEvents(5000);
    platform.log().clear();
    ZelvoraStorage::saveEventTrackingData(makeEvent("last"));
    for (auto const& message : logMessages())
        EXPECT_LT(message.text.size(), 700U);
}

TEST_F(EventQueueTest, ThreadsThatSaveAtOnceLoseNothing)
{
    constexpr std::size_t threadCount = 4;
    constexpr std::size_t eventsEach = 250;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (std::size_t event = 0; event < eventsEach; ++event)
                ZelvoraStorage::saveEventTrackingData(makeEvent(std::to_string(thread) + ":" + std::to_string(event)));
        });
    }
    for (auto& thread : threads)
        thread.join();

    Names expected;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        for (std::size_t event = 0; event < eventsEach; ++event)
            expected.push_back(std::to_string(thread) + ":" + std::to_string(event));
    }
    auto found = queued();
    std::ranges::sort(found);
    std::ranges::sort(expected);
    EXPECT_EQ(found, expected);
}

TEST_F(EventQueueTest, EachThreadsEventsKeepTheirOrder)
{
    auto const save = [](std::string const& prefix) {
        for (int i = 0; i < 200; ++i)
            ZelvoraStorage::saveEventTrackingData(makeEvent(prefix + std::to_string(1000 + i)));
    };
    std::thread first([&] { save("a"); });
    std::thread second([&] { save("b"); });
    first.join();
    second.join();
    Names ofFirst;
    Names ofSecond;
    for (auto const& name : queued())
        (name.starts_with('a') ? ofFirst : ofSecond).push_back(name);
    EXPECT_EQ(ofFirst.size(), 200U);
    EXPECT_EQ(ofSecond.size(), 200U);
    EXPECT_TRUE(std::ranges::is_sorted(ofFirst));
    EXPECT_TRUE(std::ranges::is_sorted(ofSecond));
}

TEST_F(EventQueueTest, RemovalOnOneThreadWhileAnotherSavesAndAThirdReadsLosesNothing)
{
    constexpr int saved = 500;
    saveEvents(100);
    std::atomic<bool> isOver = false;
    std::thread saver([] {
        for (int i = 0; i < saved; ++i)
            ZelvoraStorage::saveEventTrackingData(makeEvent("new"));
    });
    std::thread remover([] {
        for (int i = 0; i < 100; ++i)
            ZelvoraStorage::removeEventTrackingData(1);
    });
    std::thread reader([&isOver] {
        while (!isOver) {
            for (auto const& name : queued())
                EXPECT_FALSE(name.empty());
        }
    });
    saver.join();
    remover.join();
    isOver = true;
    reader.join();
    EXPECT_EQ(queued(), Names(saved, "new"));
}

TEST_F(EventQueueTest, ClearingWhileAnotherThreadSavesLeavesNoGapInTheQueue)
{
    std::thread saver([] {
        for (int i = 0; i < 300; ++i)
            ZelvoraStorage::saveEventTrackingData(makeEvent(std::to_string(1000 + i)));
    });
    std::thread clearer([] {
        for (int i = 0; i < 50; ++i)
            ZelvoraStorage::clearEventTrackingData();
    });
    saver.join();
    clearer.join();
    ZelvoraStorage::saveEventTrackingData(makeEvent("9999"));
    auto const left = queued();
    // The newest events are left, without a gap: clearing removes all events that are queued and none that come later.
    ASSERT_FALSE(left.empty());
    EXPECT_EQ(left.back(), "9999");
    for (std::size_t i = 0; i + 1 < left.size(); ++i)
        EXPECT_EQ(left[i], std::to_string(1300 - (left.size() - 1) + i));
}

TEST(EventQueueOrderTest, AClearingThatComesWhileAnEventIsSavedTakesThatEventToo)
{
    auto& platform = tests::install<WatchingPlatform>();
    std::thread clearer;
    std::atomic<bool> isCleared = false;
    int readings = 0;
    platform.watchReading([&](std::string const& key) {
        // The first reading is for the log line.
        if (!key.ends_with("_tracking_event") || ++readings != 2)
            return;
        clearer = std::thread([&isCleared] {
            ZelvoraStorage::clearEventTrackingData();
            isCleared = true;
        });
        // The saver has read the queue but not written it. A clearing that does not wait for the saver finishes here.
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
        while (!isCleared && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
    });
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    platform.watchReading(nullptr);
    clearer.join();
    EXPECT_TRUE(ZelvoraStorage::getEventTrackingData().isEmpty());
}

// Notes the lines that tell a change of the queue from reading it.
bool isQueueLine(std::string const& line)
{
    return line.contains("tracking_event");
}

TEST(EventQueueHostTest, ALogThatSavesAnEventLosesNone)
{
    auto& platform = tests::install<WatchingPlatform>();
    int nested = 0;
    platform.watchLog([&nested](std::string const& line) {
        if (!isQueueLine(line) || nested == 3)
            return;
        ++nested;
        ZelvoraStorage::saveEventTrackingData(makeEvent("from the log"));
    });
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    platform.watchLog(nullptr);
    EXPECT_EQ(
        names(ZelvoraStorage::getEventTrackingData()), (Names { "from the log", "from the log", "from the log", "a" }));
}

TEST(EventQueueHostTest, AnObserverOfThePreferencesMaySaveAnEvent)
{
    auto& platform = tests::install<WatchingPlatform>();
    bool hasSaved = false;
    platform.watchStored([&hasSaved](std::string const& key) {
        if (key.ends_with("_tracking_event") && !std::exchange(hasSaved, true))
            ZelvoraStorage::saveEventTrackingData(makeEvent("from the observer"));
    });
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    EXPECT_EQ(names(ZelvoraStorage::getEventTrackingData()), (Names { "a", "from the observer" }));
}

TEST(EventQueueHostTest, ASlowLogHoldsUpNoOtherThread)
{
    auto& platform = tests::install<WatchingPlatform>();
    ZelvoraStorage::saveEventTrackingData(makeEvent("0"));
    auto const logging = std::this_thread::get_id();
    int waits = 0;
    platform.watchLog([&](std::string const& line) {
        if (!isQueueLine(line) || std::this_thread::get_id() != logging)
            return;
        ++waits;
        // It does not return before another thread has changed the queue in every way.
        std::thread([] {
            ZelvoraStorage::saveEventTrackingData(makeEvent("b"));
            ZelvoraStorage::removeEventTrackingData(1);
            ZelvoraStorage::clearEventTrackingData();
            ZelvoraStorage::saveEventTrackingData(makeEvent("c"));
        }).join();
    });
    ZelvoraStorage::saveEventTrackingData(makeEvent("a"));
    EXPECT_EQ(waits, 2);
    ZelvoraStorage::removeEventTrackingData(1);
    platform.watchLog(nullptr);
    EXPECT_EQ(names(ZelvoraStorage::getEventTrackingData()), (Names {}));
}

TEST_F(EventQueueTest, AQueueFromAnEarlierLaunchIsContinued)
{
    storeUnderTheKey(Array { makeEvent("old") });
    ZelvoraStorage::saveEventTrackingData(makeEvent("new"));
    EXPECT_EQ(queued(), (Names { "old", "new" }));
}

}

}
