#include "examples/developer/observing/StoredValues.h"

#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/examples/developer/ObservedSDK.h"

namespace zelvora::developer {

namespace {

class StoredValuesTest : public ObservedSDK {
protected:
    [[nodiscard]] std::vector<StoredValue> all() { return values.all(observed.storedKeys(), observed.clock().now()); }
    [[nodiscard]] std::vector<std::string> keys()
    {
        std::vector<std::string> keys;
        for (auto const& value : all())
            keys.push_back(value.key);
        return keys;
    }

    StoredValues values { observed.preferences(), StoredValues::prefixOf("com.example.host") };
};

}

TEST_F(StoredValuesTest, AValueIsListedWithTheTimeThatItHasLeft)
{
    ZelvoraStorage::set("v", "brief", 60);
    ZelvoraStorage::set(7, "lasting");
    memory.clock().advance(20);
    ASSERT_EQ(keys(), (std::vector<std::string> { "brief", "lasting" }));
    EXPECT_EQ(all().front(), (StoredValue { .key = "brief", .value = "v", .expiry = 60, .secondsLeft = 40 }));
    EXPECT_EQ(all().back(), (StoredValue { .key = "lasting", .value = 7, .expiry = {}, .secondsLeft = {} }));
}

TEST_F(StoredValuesTest, LookingDoesNotRemoveAnExpiredValueThoughTheSDKsReadDoes)
{
    ZelvoraStorage::set("v", "brief", 60);
    observed.pass(61);
    EXPECT_EQ(all().front().secondsLeft, -1);
    EXPECT_EQ(keys().size(), 1U);
    EXPECT_FALSE(ZelvoraStorage::get("brief"));
    EXPECT_TRUE(keys().empty());
}

TEST_F(StoredValuesTest, APagesOwnKeyMayEndAsThoseOfTheExpiryDo)
{
    ZelvoraStorage::set(1, "a");
    ZelvoraStorage::set(2, "b_ts");
    EXPECT_EQ(keys(), (std::vector<std::string> { "a", "b_ts" }));
}

TEST_F(StoredValuesTest, TheQueueIsNoValueButTheEventsInIt)
{
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "a" } });
    EXPECT_TRUE(keys().empty());
    EXPECT_EQ(values.events(), Json::parse(R"([{"eventId":"a"}])"));
}

TEST_F(StoredValuesTest, AnEmptyQueueHasNoEvents)
{
    EXPECT_EQ(values.events(), Json::array());
}

TEST(DurationTextTest, ADurationIsToldInItsTwoLargestUnits)
{
    EXPECT_EQ(durationText(0).english, "0 s");
    EXPECT_EQ(durationText(0.4).english, "1 s");
    EXPECT_EQ(durationText(59).english, "59 s");
    EXPECT_EQ(durationText(60).english, "1 min");
    EXPECT_EQ(durationText(61).english, "1 min 1 s");
    EXPECT_EQ(durationText(3'605).english, "1 h");
    EXPECT_EQ(durationText(604'799).english, "6 d 23 h");
    EXPECT_EQ(durationText(604'800).korean, "7일");
    EXPECT_EQ(durationText(1e300).english, "forever");
}

TEST(DurationTextTest, WhatIsLeftIsToldForPeople)
{
    StoredValue value { .key = "k", .value = 1, .expiry = 60, .secondsLeft = 40 };
    EXPECT_EQ(timeLeftText(value).english, "40 s left");
    value.secondsLeft = -1;
    EXPECT_EQ(timeLeftText(value).english, "expired: the next read removes it");
    value.secondsLeft = {};
    EXPECT_EQ(timeLeftText(value).korean, "만료되지 않음");
}

}
