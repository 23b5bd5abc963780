#include "ZelvoraIOS/ZelvoraStorage.h"

#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"
#include "tests/support/StandardOutput.h"

#include <cmath>
#include <limits>
#include <thread>

namespace zelvora::tests {

namespace {

using platform::Data;
using platform::Date;
using Contents = memory::UserDefaults::Contents;
using Calls = std::vector<std::string>;

constexpr double oneDay = 86400.0;
constexpr char const* refusal = "set(forKey: a) refused a value that is not a property list";

class ZelvoraStorageTest : public SDKTest {
protected:
    using SDKTest::SDKTest;

    [[nodiscard]] Contents contents() const { return platform.standardUserDefaults().contents(); }
    [[nodiscard]] Calls calls() const { return platform.standardUserDefaults().calls(); }
    void advance(double seconds) { platform.clock().advance(seconds); }
};

// Arrays nested in arrays to this depth.
Value nested(std::size_t depth)
{
    Value value = "leaf";
    for (std::size_t i = 0; i < depth; ++i)
        value = Array { value };
    return value;
}

TEST_F(ZelvoraStorageTest, AValueIsKeptUnderThePrefixTheBundleIdentifierAndTheKey)
{
    ZelvoraStorage::set("v", "a");
    EXPECT_EQ(contents(), (Contents { { "ZelvoraSDK_Storage_com.example.host_a", "v" } }));
}

TEST_F(ZelvoraStorageTest, WithoutABundleIdentifierEveryKeyBeginsWithUnknown)
{
    platform.mainBundle().setBundleIdentifier(std::nullopt);
    ZelvoraStorage::set("v", "a", 10);
    EXPECT_EQ(contents(),
        (Contents { { "ZelvoraSDK_Storage_unknown_a", "v" },
            { "ZelvoraSDK_Storage_unknown_a_ts", platform.clock().now() },
            { "ZelvoraSDK_Storage_unknown_a_exp", 10 } }));
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
}

TEST_F(ZelvoraStorageTest, ThePrefixIsBuiltAtEveryCall)
{
    ZelvoraStorage::set("v", "a");
    platform.mainBundle().setBundleIdentifier("com.example.renamed");
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    ZelvoraStorage::set("w", "a");
    EXPECT_EQ(contents(),
        (Contents {
            { "ZelvoraSDK_Storage_com.example.host_a", "v" }, { "ZelvoraSDK_Storage_com.example.renamed_a", "w" } }));
}

TEST_F(ZelvoraStorageTest, AnEmptyKeyIsAKey)
{
    ZelvoraStorage::set("v", "");
    EXPECT_EQ(contents(), (Contents { { "ZelvoraSDK_Storage_com.example.host_", "v" } }));
    EXPECT_EQ(ZelvoraStorage::get(""), "v");
}

TEST_F(ZelvoraStorageTest, KeysAreTakenExactlyAsTheyAre)
{
    ZelvoraStorage::set("v", "키 one/two");
    EXPECT_EQ(contents(), (Contents { { "ZelvoraSDK_Storage_com.example.host_키 one/two", "v" } }));
    EXPECT_EQ(ZelvoraStorage::get("키 one/TWO"), std::nullopt);
}

TEST_F(ZelvoraStorageTest, AValueWithAnExpiryIsWrittenBeforeItsDateAndThatBeforeItsExpiry)
{
    ZelvoraStorage::set("v", "a", 10);
    EXPECT_EQ(calls(),
        (Calls { "setObject " + fullKey("a"), "setObject " + fullKey("a_ts"), "setDouble " + fullKey("a_exp") }));
    EXPECT_EQ(contents(),
        (Contents { { fullKey("a"), "v" }, { fullKey("a_ts"), platform.clock().now() }, { fullKey("a_exp"), 10.0 } }));
}

TEST_F(ZelvoraStorageTest, AValueWithoutAnExpiryIsWrittenBeforeDateAndExpiryAreDeletedInThatOrder)
{
    ZelvoraStorage::set("v", "a");
    EXPECT_EQ(calls(),
        (Calls { "setObject " + fullKey("a"), "removeObject " + fullKey("a_ts"), "removeObject " + fullKey("a_exp") }));
}

TEST_F(ZelvoraStorageTest, TheDateIsADateAndTheExpiryANumberKeptUnchanged)
{
    for (auto const expiry : { 0.0, -3.5, 0.25, 1e12 }) {
        ZelvoraStorage::set("v", "a", expiry);
        EXPECT_EQ(stored(fullKey("a_exp")), Value(expiry));
        EXPECT_EQ(stored(fullKey("a_ts")), Value(platform.clock().now()));
    }
}

TEST_F(ZelvoraStorageTest, AValueIsReturnedWithinItsExpiryAndRemovedWithAllItsEntriesAfterIt)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(5);
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    EXPECT_EQ(contents().size(), 3U);
    advance(6);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, AValueIsStillValidWhenExactlyItsExpiryHasPassed)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(10);
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    advance(0.001);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
}

TEST_F(ZelvoraStorageTest, AnExpiredEntryStaysInTheStoreUntilItIsRead)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(1000);
    ZelvoraStorage::set("other", "b");
    EXPECT_EQ(ZelvoraStorage::get("b"), "other");
    EXPECT_EQ(stored(fullKey("a")), "v");
}

TEST_F(ZelvoraStorageTest, AnExpiredReadDeletesValueDateAndExpiryInThatOrder)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(11);
    platform.standardUserDefaults().clearCalls();
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_EQ(calls(),
        (Calls {
            "removeObject " + fullKey("a"), "removeObject " + fullKey("a_ts"), "removeObject " + fullKey("a_exp") }));
}

TEST_F(ZelvoraStorageTest, AnExpiredReadLogsNothing)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(11);
    platform.log().clear();
    StandardOutput const output;
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_TRUE(logMessages().empty());
    EXPECT_EQ(output.text(), "");
}

TEST_F(ZelvoraStorageTest, AReadThatFindsAValidValueWritesNothing)
{
    ZelvoraStorage::set("v", "a", 10);
    platform.standardUserDefaults().clearCalls();
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    EXPECT_EQ(ZelvoraStorage::get("nothing"), std::nullopt);
    EXPECT_TRUE(calls().empty());
}

TEST_F(ZelvoraStorageTest, AValueWrittenWithoutExpiryNeverInheritsAnEarlierOne)
{
    ZelvoraStorage::set("v", "a", 10);
    ZelvoraStorage::set("w", "a");
    EXPECT_EQ(contents(), (Contents { { fullKey("a"), "w" } }));
    advance(1e9);
    EXPECT_EQ(ZelvoraStorage::get("a"), "w");
}

TEST_F(ZelvoraStorageTest, AWriteRestartsTheLifetime)
{
    ZelvoraStorage::set("v", "a", 10);
    advance(9);
    ZelvoraStorage::set("w", "a", 10);
    advance(9);
    EXPECT_EQ(ZelvoraStorage::get("a"), "w");
}

TEST_F(ZelvoraStorageTest, AnAbsentValueDeletesTheEntryAndStillWritesDateAndExpiry)
{
    ZelvoraStorage::set("v", "a");
    platform.standardUserDefaults().clearCalls();
    ZelvoraStorage::set(std::nullopt, "a", 60);
    EXPECT_EQ(calls(),
        (Calls { "setObject " + fullKey("a"), "setObject " + fullKey("a_ts"), "setDouble " + fullKey("a_exp") }));
    EXPECT_EQ(contents(), (Contents { { fullKey("a_ts"), platform.clock().now() }, { fullKey("a_exp"), 60 } }));
}

TEST_F(ZelvoraStorageTest, WhatAnAbsentValueLeftIsDeletedByTheFirstReadAfterItsExpiry)
{
    ZelvoraStorage::set(std::nullopt, "a", 60);
    advance(59);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_EQ(contents().size(), 2U);
    advance(2);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, AnAbsentValueWithoutExpiryDeletesAllThreeEntries)
{
    ZelvoraStorage::set("v", "a", 60);
    ZelvoraStorage::set(std::nullopt, "a");
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, AValueWithAnExpiryOfZeroIsValidOnlyWhileNoTimePasses)
{
    ZelvoraStorage::set("v", "a", 0);
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    advance(0.000001);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, ANegativeExpiryIsOverAtTheFirstRead)
{
    ZelvoraStorage::set("v", "a", -1);
    EXPECT_EQ(contents().size(), 3U);
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, AnInfiniteOrNaNLifetimeNeverExpires)
{
    ZelvoraStorage::set("v", "a", std::numeric_limits<double>::infinity());
    ZelvoraStorage::set("w", "b", std::numeric_limits<double>::quiet_NaN());
    advance(1e9);
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    EXPECT_EQ(ZelvoraStorage::get("b"), "w");
}

TEST_F(ZelvoraStorageTest, AWallClockThatWasSetBackMakesNothingExpire)
{
    ZelvoraStorage::set("v", "a", 10);
    platform.clock().set({ platform.clock().now().timeIntervalSince1970 - oneDay });
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
}

TEST_F(ZelvoraStorageTest, ElapsedTimeIsThatOfTheWallClock)
{
    ZelvoraStorage::set("v", "a", 10);
    platform.clock().set({ platform.clock().now().timeIntervalSince1970 + 11 });
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
}

TEST_F(ZelvoraStorageTest, ATimestampThatIsNotADateMeansNoExpiry)
{
    for (auto const& timestamp : { Value("2020-01-01"), Value(0), Value(true), Value(Array {}), Value(Data { "x" }) }) {
        Contents const foreign { { fullKey("a"), "v" }, { fullKey("a_ts"), timestamp }, { fullKey("a_exp"), 1 } };
        platform.standardUserDefaults().setContents(foreign);
        advance(1000);
        EXPECT_EQ(ZelvoraStorage::get("a"), "v");
        EXPECT_EQ(contents(), foreign);
    }
}

TEST_F(ZelvoraStorageTest, AnExpiryThatIsNotANumberMeansNoExpiry)
{
    for (auto const& expiry : { Value("1"), Value(Date { 1 }), Value(Array { 1 }), Value(Data { "1" }) }) {
        Contents const foreign { { fullKey("a"), "v" }, { fullKey("a_ts"), platform.clock().now() },
            { fullKey("a_exp"), expiry } };
        platform.standardUserDefaults().setContents(foreign);
        advance(1000);
        EXPECT_EQ(ZelvoraStorage::get("a"), "v");
        EXPECT_EQ(contents(), foreign);
    }
}

TEST_F(ZelvoraStorageTest, ADateWithoutExpiryOrAnExpiryWithoutDateMeansNoExpiry)
{
    platform.standardUserDefaults().setContents(
        { { fullKey("a"), "v" }, { fullKey("a_ts"), Date { 0 } }, { fullKey("b"), "w" }, { fullKey("b_exp"), -1 } });
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    EXPECT_EQ(ZelvoraStorage::get("b"), "w");
    EXPECT_EQ(contents().size(), 4U);
}

TEST_F(ZelvoraStorageTest, SetLogsTheCallersKeyAndTheValueAtDebugLevel)
{
    StandardOutput const output;
    Value const value = Array { "text", 1, true, Dictionary { { "k", platform::Null {} } } };
    ZelvoraStorage::set(value, "a", 10);
    auto const line = "set(forKey: a, value: " + debugDescription(value) + ")";
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Debug, line } }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] " + line + "\n");
}

TEST_F(ZelvoraStorageTest, SetLogsAnAbsentValueAsNil)
{
    ZelvoraStorage::set(std::nullopt, "a");
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Debug, "set(forKey: a, value: nil)" } }));
}

TEST_F(ZelvoraStorageTest, GetLogsTheCallersKeyAndWhatItFoundAtDebugLevel)
{
    ZelvoraStorage::set(7, "a");
    platform.log().clear();
    StandardOutput const output;
    EXPECT_EQ(ZelvoraStorage::get("a"), Value(7));
    EXPECT_EQ(ZelvoraStorage::get("nothing"), std::nullopt);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug, "get(forKey: a, value: " + debugDescription(Value(7)) + ")" },
            { OSLogType::Debug, "get(forKey: nothing, value: nil)" } }));
    EXPECT_EQ(output.lines().size(), 2U);
}

TEST_F(ZelvoraStorageTest, LogLinesAreBoundedHoweverLongTheValueIs)
{
    ZelvoraStorage::set(std::string(1'000'000, 'x'), "a");
    EXPECT_TRUE(ZelvoraStorage::get("a"));
    for (auto const& message : logMessages())
        EXPECT_LT(message.text.size(), 700U);
}

TEST_F(ZelvoraStorageTest, RemoveDeletesValueDateAndExpiryInThatOrderAndLogsNothing)
{
    ZelvoraStorage::set("v", "a", 10);
    ZelvoraStorage::set("w", "ab");
    platform.standardUserDefaults().clearCalls();
    platform.log().clear();
    StandardOutput const output;
    ZelvoraStorage::remove("a");
    EXPECT_EQ(calls(),
        (Calls {
            "removeObject " + fullKey("a"), "removeObject " + fullKey("a_ts"), "removeObject " + fullKey("a_exp") }));
    EXPECT_EQ(contents(), (Contents { { fullKey("ab"), "w" } }));
    EXPECT_TRUE(logMessages().empty());
    EXPECT_EQ(output.text(), "");
}

TEST_F(ZelvoraStorageTest, RemovingWhatIsNotThereDoesNothing)
{
    ZelvoraStorage::remove("a");
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, EveryKindOfPropertyListValueComesBackAsItWasGiven)
{
    std::vector<Value> const values { "", "text 한글", 0, 1, -0.5, 1e300, true, false, Date { 12.5 },
        Data { std::string("\0\xff", 2) }, Array {}, Array { 1, "a", Array { true } }, Dictionary {},
        Dictionary { { "a", Array { Dictionary { { "b", Date { 1 } } } } }, { "c", Data { "d" } } } };
    for (auto const& value : values) {
        ZelvoraStorage::set(value, "a");
        auto const read = ZelvoraStorage::get("a");
        ASSERT_TRUE(read);
        EXPECT_EQ(read->kind(), value.kind());
        EXPECT_EQ(*read, value);
    }
}

TEST_F(ZelvoraStorageTest, ABooleanNeverBecomesANumberNorTheOtherWay)
{
    ZelvoraStorage::set(true, "flag");
    ZelvoraStorage::set(1, "count");
    EXPECT_EQ(ZelvoraStorage::get("flag"), Value(true));
    EXPECT_EQ(ZelvoraStorage::get("count"), Value(1));
    EXPECT_NE(ZelvoraStorage::get("flag"), ZelvoraStorage::get("count"));
}

TEST_F(ZelvoraStorageTest, EmptyTextIsAValueAndNotAbsence)
{
    ZelvoraStorage::set("", "a");
    EXPECT_EQ(ZelvoraStorage::get("a"), "");
    EXPECT_EQ(ZelvoraStorage::getString("a"), "");
}

TEST_F(ZelvoraStorageTest, NullMarkersInsideContainersAreKept)
{
    Value const value = Dictionary { { "null", platform::Null {} }, { "list", Array { platform::Null {} } } };
    ZelvoraStorage::set(value, "a");
    EXPECT_EQ(ZelvoraStorage::get("a"), value);
}

TEST_F(ZelvoraStorageTest, ABareNullMarkerIsRefusedWithOneErrorLineAndWhatWasStoredStays)
{
    ZelvoraStorage::set("v", "a", 10);
    auto const before = contents();
    platform.standardUserDefaults().clearCalls();
    platform.log().clear();
    ZelvoraStorage::set(Value(), "a");
    ZelvoraStorage::set(Value(), "a", 99);
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(logMessages(OSLogType::Error), std::vector<std::string>(2, refusal)) << "one for each call";
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
}

TEST_F(ZelvoraStorageTest, AValueThatNestsTooDeepIsRefusedWithOneErrorLineAndWhatWasStoredStays)
{
    ZelvoraStorage::set("v", "a");
    platform.standardUserDefaults().clearCalls();
    platform.log().clear();
    ZelvoraStorage::set(nested(Value::maximumNesting + 1), "a");
    ZelvoraStorage::set(nested(100'000), "a", 5);
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(logMessages(OSLogType::Error), std::vector<std::string>(2, refusal));
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
}

TEST_F(ZelvoraStorageTest, AValueThatNestsAsDeepAsTheStoreTakesIsKept)
{
    ZelvoraStorage::set(nested(Value::maximumNesting), "a");
    EXPECT_EQ(ZelvoraStorage::get("a"), nested(Value::maximumNesting));
    EXPECT_TRUE(logMessages(OSLogType::Error).empty());
}

TEST_F(ZelvoraStorageTest, GetStringReturnsText)
{
    ZelvoraStorage::set("v", "a", 10);
    EXPECT_EQ(ZelvoraStorage::getString("a"), "v");
}

TEST_F(ZelvoraStorageTest, GetStringOfAnythingButTextIsNothingAndDeletesNothing)
{
    for (auto const& value : { Value(42), Value(true), Value(Array { "v" }), Value(Dictionary {}), Value(Date { 1 }),
             Value(Data { "v" }) }) {
        ZelvoraStorage::set(value, "a", 10);
        EXPECT_EQ(ZelvoraStorage::getString("a"), std::nullopt);
        EXPECT_EQ(stored(fullKey("a")), value);
        EXPECT_EQ(contents().size(), 3U);
    }
    EXPECT_EQ(ZelvoraStorage::getString("nothing"), std::nullopt);
}

TEST_F(ZelvoraStorageTest, GetStringDeletesWhatHasExpiredWhateverItsKind)
{
    ZelvoraStorage::set("v", "a", 10);
    ZelvoraStorage::set(42, "b", 10);
    advance(11);
    EXPECT_EQ(ZelvoraStorage::getString("a"), std::nullopt);
    EXPECT_EQ(ZelvoraStorage::getString("b"), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, GetStringLogsAsGetDoes)
{
    ZelvoraStorage::set("v", "a");
    platform.log().clear();
    EXPECT_EQ(ZelvoraStorage::getString("a"), "v");
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> {
            { OSLogType::Debug, "get(forKey: a, value: " + debugDescription(Value("v")) + ")" } }));
}

TEST_F(ZelvoraStorageTest, TheShopIdIsKeptUnderItsKeyForADay)
{
    ZelvoraStorage::saveShopId("shop-9");
    EXPECT_EQ(contents(),
        (Contents { { fullKey("shop_id"), "shop-9" }, { fullKey("shop_id_ts"), platform.clock().now() },
            { fullKey("shop_id_exp"), 86400.0 } }));
}

TEST_F(ZelvoraStorageTest, TheShopIdIsValidFor86400SecondsAndDeletedByTheReadAfterwards)
{
    ZelvoraStorage::saveShopId("shop-9");
    advance(oneDay);
    EXPECT_EQ(ZelvoraStorage::getValidShopId(), "shop-9");
    advance(0.001);
    EXPECT_EQ(ZelvoraStorage::getValidShopId(), std::nullopt);
    EXPECT_TRUE(contents().empty());
}

TEST_F(ZelvoraStorageTest, AShopIdThatWasNeverSavedOrIsNoTextIsNone)
{
    EXPECT_EQ(ZelvoraStorage::getValidShopId(), std::nullopt);
    ZelvoraStorage::set(42, "shop_id");
    EXPECT_EQ(ZelvoraStorage::getValidShopId(), std::nullopt);
    EXPECT_EQ(stored(fullKey("shop_id")), Value(42));
}

TEST_F(ZelvoraStorageTest, AnotherLibrarysEntriesAreLeftAlone)
{
    platform.standardUserDefaults().setContents({ { "a", "theirs" }, { "a_ts", Date { 0 } }, { "a_exp", 0 } });
    EXPECT_EQ(ZelvoraStorage::get("a"), std::nullopt);
    ZelvoraStorage::set("ours", "a");
    ZelvoraStorage::remove("a");
    EXPECT_EQ(contents(), (Contents { { "a", "theirs" }, { "a_ts", Date { 0 } }, { "a_exp", 0 } }));
}

TEST_F(ZelvoraStorageTest, ThreadsMayReadAndWriteAtOnce)
{
    auto const work = [](std::string const& key) {
        for (int i = 0; i < 200; ++i) {
            ZelvoraStorage::set(i, key, 100);
            EXPECT_EQ(ZelvoraStorage::get(key), Value(i));
            ZelvoraStorage::set(i, "shared", 100);
            EXPECT_TRUE(ZelvoraStorage::get("shared"));
        }
    };
    std::thread first([&] { work("first"); });
    std::thread second([&] { work("second"); });
    first.join();
    second.join();
    EXPECT_EQ(stored(fullKey("shared")), Value(199));
}

class LaterLaunchTest : public ZelvoraStorageTest {
protected:
    LaterLaunchTest()
        : ZelvoraStorageTest({ .now = { memory::Clock::start.timeIntervalSince1970 + oneDay },
              .storedValues = {
                  { fullKey("kept"), "v" },
                  { fullKey("fresh"), "v" },
                  { fullKey("fresh_ts"), memory::Clock::start },
                  { fullKey("fresh_exp"), oneDay },
                  { fullKey("stale"), "v" },
                  { fullKey("stale_ts"), memory::Clock::start },
                  { fullKey("stale_exp"), oneDay - 1 },
              } })
    {
    }
};

TEST_F(LaterLaunchTest, WhatAnEarlierLaunchStoredIsReadByTheSameRules)
{
    EXPECT_EQ(ZelvoraStorage::get("kept"), "v");
    EXPECT_EQ(ZelvoraStorage::get("fresh"), "v");
    EXPECT_EQ(ZelvoraStorage::get("stale"), std::nullopt);
    EXPECT_EQ(contents().size(), 4U);
}

TEST(ZelvoraStorageOrderTest, AWriteIsLoggedBeforeItIsMade)
{
    auto& platform = tests::install<WatchingPlatform>();
    std::vector<bool> wasLogged;
    platform.watchStoring([&](std::string const&) {
        wasLogged.push_back(platform.memory.log().holds(
            OSLogType::Debug, "set(forKey: a, value: " + debugDescription(Value("v")) + ")"));
    });
    ZelvoraStorage::set("v", "a");
    EXPECT_EQ(wasLogged, (std::vector<bool> { true }));
}

TEST(ZelvoraStorageOrderTest, ThePreferencesAreAskedForAtTheFirstUseAndKept)
{
    auto& platform = tests::install<WatchingPlatform>();
    EXPECT_EQ(platform.preferencesCount(), 0U);
    ZelvoraStorage::set("v", "a", 10);
    EXPECT_EQ(ZelvoraStorage::get("a"), "v");
    ZelvoraStorage::remove("a");
    EXPECT_EQ(platform.preferencesCount(), 1U);
}

}

}
