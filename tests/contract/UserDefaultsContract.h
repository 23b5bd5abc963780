#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "tests/support/runOnThreads.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace zelvora::tests {

/// What every preferences store promises. A harness makes an empty one:
///
///     platform::UserDefaults& store();
///     // Closes the store and opens it again. Does nothing if the store does not persist.
///     void restart();
template<typename Harness>
class UserDefaultsContract : public testing::Test {
protected:
    [[nodiscard]] std::optional<platform::Value> get(std::string const& key) { return m_harness.store().object(key); }
    void set(std::string const& key, platform::Value value) { m_harness.store().setObject(std::move(value), key); }
    void remove(std::string const& key) { m_harness.store().removeObject(key); }
    [[nodiscard]] platform::Array array(std::string const& key)
    {
        auto const value = get(key);
        return value && value->array() ? *value->array() : platform::Array {};
    }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, HasNothingUnderAKeyThatWasNeverSet)
{
    EXPECT_EQ(this->get("absent"), std::nullopt);
    EXPECT_EQ(this->get(""), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, KeepsEveryKindOfValueUnchanged)
{
    using namespace platform;
    std::vector<Value> const values { true, false, 0, 1, -2.5, "", "text 텍스트", Value { std::string("a\0b", 3) },
        Date { 1'700'000'000.25 }, Data { std::string("\0\xff\x80", 3) }, Data {}, Array {}, Dictionary {},
        Array { 1, true, "1", Date { 1 }, Data { "1" }, Array { Array {} }, Dictionary { { "k", 1 } } },
        Dictionary { { "", "" }, { "b", Array { 2, 1 } }, { "a", false }, { std::string("n\0l", 3), 3 } } };
    for (std::size_t i = 0; i < values.size(); ++i)
        this->set("key" + std::to_string(i), values[i]);
    for (int launch = 0; launch < 2; ++launch) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            auto const value = this->get("key" + std::to_string(i));
            ASSERT_TRUE(value) << i;
            EXPECT_EQ(value->kind(), values[i].kind()) << i;
            EXPECT_EQ(*value, values[i]) << i;
        }
        this->m_harness.restart();
    }
}

TYPED_TEST_P(UserDefaultsContract, KeepsNullMarkersInsideContainers)
{
    using namespace platform;
    Value const value { Array { Null {}, Dictionary { { "null", Null {} } } } };
    this->set("key", value);
    EXPECT_EQ(this->get("key"), value);
    this->m_harness.restart();
    EXPECT_EQ(this->get("key"), value);
}

TYPED_TEST_P(UserDefaultsContract, KeepsEveryBitOfANumber)
{
    using Limits = std::numeric_limits<double>;
    for (double const number : { 0.0, -0.0, 0.1, 1e300, Limits::denorm_min(), Limits::infinity(), std::nan("") }) {
        this->m_harness.store().setDouble(number, "key");
        this->m_harness.restart();
        auto const value = this->get("key");
        ASSERT_TRUE(value && value->number());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(*value->number()), std::bit_cast<std::uint64_t>(number));
    }
}

TYPED_TEST_P(UserDefaultsContract, DistinguishesABooleanFromANumber)
{
    this->set("key", true);
    this->set("key", 1);
    EXPECT_EQ(this->get("key"), platform::Value { 1 });
    this->set("key", true);
    this->m_harness.restart();
    EXPECT_EQ(this->get("key"), platform::Value { true });
}

TYPED_TEST_P(UserDefaultsContract, ReplacesAnEarlierValue)
{
    this->set("key", "text");
    this->set("key", platform::Array { 1 });
    this->set("other", 2);
    EXPECT_EQ(this->get("key"), platform::Value(platform::Array { 1 }));
    this->m_harness.restart();
    EXPECT_EQ(this->get("key"), platform::Value(platform::Array { 1 }));
    EXPECT_EQ(this->get("other"), platform::Value { 2 });
}

TYPED_TEST_P(UserDefaultsContract, RemovesAnEntryByEitherCall)
{
    this->set("a", 1);
    this->set("b", 2);
    this->set("kept", 3);
    this->remove("a");
    this->m_harness.store().setObject(std::nullopt, "b");
    for (int launch = 0; launch < 2; ++launch) {
        EXPECT_EQ(this->get("a"), std::nullopt);
        EXPECT_EQ(this->get("b"), std::nullopt);
        EXPECT_EQ(this->get("kept"), platform::Value { 3 });
        this->m_harness.restart();
    }
}

TYPED_TEST_P(UserDefaultsContract, RemovingAnAbsentKeyDoesNothing)
{
    this->remove("absent");
    this->m_harness.store().setObject(std::nullopt, "absent");
    EXPECT_EQ(this->get("absent"), std::nullopt);
    this->set("absent", 1);
    EXPECT_EQ(this->get("absent"), platform::Value { 1 });
}

TYPED_TEST_P(UserDefaultsContract, DistinguishesKeysByEveryByte)
{
    this->set("key", 1);
    this->set("Key", 2);
    this->set("key ", 3);
    this->set(std::string("key\0", 4), 4);
    this->set("열쇠", 5);
    this->m_harness.restart();
    EXPECT_EQ(this->get("key"), platform::Value { 1 });
    EXPECT_EQ(this->get("Key"), platform::Value { 2 });
    EXPECT_EQ(this->get("key "), platform::Value { 3 });
    EXPECT_EQ(this->get(std::string("key\0", 4)), platform::Value { 4 });
    EXPECT_EQ(this->get("열쇠"), platform::Value { 5 });
}

TYPED_TEST_P(UserDefaultsContract, KeepsAQueueThatIsReadExtendedDroppedAndWrittenBack)
{
    using namespace platform;
    for (int i = 0; i < 1'000; ++i) {
        this->set("queue", this->array("queue").appending(Dictionary { { "number", i } }));
        if (i % 100 == 99)
            this->set("queue", this->array("queue").droppingFirst(90));
        if (i % 250 == 125)
            this->m_harness.restart();
    }
    this->m_harness.restart();
    auto const queue = this->array("queue");
    ASSERT_EQ(queue.size(), 100U);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(queue.at(static_cast<std::size_t>(i)), Value(Dictionary { { "number", 900 + i } }));
}

TYPED_TEST_P(UserDefaultsContract, KeepsAValueOfTheMaximumNesting)
{
    using namespace platform;
    Value value { Array {} };
    while (value.nesting() < Value::maximumNesting)
        value = value.nesting() % 2 == 0 ? Value(Array { value }) : Value(Dictionary { { "k", value } });
    this->set("key", value);
    this->m_harness.restart();
    EXPECT_EQ(this->get("key"), value);
}

TYPED_TEST_P(UserDefaultsContract, LaterWritesDoNotChangeAValueThatWasRead)
{
    using namespace platform;
    this->set("key", Array { 1 });
    auto const before = this->get("key");
    this->set("key", this->array("key").appending(2));
    this->remove("key");
    EXPECT_EQ(before, Value(Array { 1 }));
}

TYPED_TEST_P(UserDefaultsContract, ServesManyThreadsAtOnce)
{
    constexpr int perThread = 200;
    auto& store = this->m_harness.store();
    runOnThreads(4, [&](int thread) {
        auto const key = "key" + std::to_string(thread);
        for (int i = 0; i < perThread; ++i) {
            store.setDouble(i, key);
            EXPECT_EQ(store.object(key), platform::Value { i });
            store.setObject(platform::Value { i }, "shared");
            EXPECT_TRUE(store.object("shared"));
        }
    });
    this->m_harness.restart();
    for (int thread = 0; thread < 4; ++thread)
        EXPECT_EQ(this->get("key" + std::to_string(thread)), platform::Value { perThread - 1 });
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, HasNothingUnderAKeyThatWasNeverSet, KeepsEveryKindOfValueUnchanged,
    KeepsNullMarkersInsideContainers, KeepsEveryBitOfANumber, DistinguishesABooleanFromANumber, ReplacesAnEarlierValue,
    RemovesAnEntryByEitherCall, RemovingAnAbsentKeyDoesNothing, DistinguishesKeysByEveryByte,
    KeepsAQueueThatIsReadExtendedDroppedAndWrittenBack, KeepsAValueOfTheMaximumNesting,
    LaterWritesDoNotChangeAValueThatWasRead, ServesManyThreadsAtOnce);

}
