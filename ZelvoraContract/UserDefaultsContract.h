#pragma once

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// What every preferences store promises. A harness makes an empty one:
///
///     platform::UserDefaults& store();
///     // Closes the store and opens it again. Does nothing if the store does not persist.
///     void restart();
///     // What the next process finds if this one dies now: the stored values, opened once more while `store()` is
///     // still open, so that nothing is written by closing it. A store that locks its file is opened on a copy of the
///     // file. Absent if the platform's own store decides when it writes, or if nothing persists.
///     std::unique_ptr<platform::UserDefaults> openAsAfterDeath();
template<typename Harness>
class UserDefaultsContract : public testing::Test {
protected:
    static constexpr bool writesAtOnce = requires(Harness& harness) { harness.openAsAfterDeath(); };

    [[nodiscard]] std::optional<platform::Value> get(std::string const& key) { return m_harness.store().object(key); }
    void set(std::string const& key, platform::Value value) { m_harness.store().setObject(std::move(value), key); }
    void remove(std::string const& key) { m_harness.store().removeObject(key); }
    void restart()
    {
        m_harness.restart();
        ++m_restarts;
    }
    [[nodiscard]] std::string when() const
    {
        return m_restarts == 0 ? "before any restart" : "after restart " + std::to_string(m_restarts);
    }
    void expect(std::optional<platform::Value> const& expected, std::string const& key)
    {
        auto const value = get(key);
        EXPECT_TRUE(value == expected) << "\"" << key << "\" is " << shortText(value) << " and not "
                                       << shortText(expected) << ", " << when();
    }
    /// The same in the next process, if this one died now.
    void expectAfterDeath(std::optional<platform::Value> const& expected, std::string const& key)
    {
        if constexpr (writesAtOnce) {
            auto const value = m_harness.openAsAfterDeath()->object(key);
            EXPECT_TRUE(value == expected) << "\"" << key << "\" is " << shortText(value) << " and not "
                                           << shortText(expected) << " for a process that starts now";
        }
    }
    [[nodiscard]] platform::Array array(std::string const& key)
    {
        auto const value = get(key);
        return value && value->array() ? *value->array() : platform::Array {};
    }

    Harness m_harness;

private:
    /// Not hundreds of brackets.
    static std::string shortText(std::optional<platform::Value> const& value)
    {
        constexpr std::size_t enough = 160;
        auto const text = platform::debugDescription(value);
        if (text.size() <= enough)
            return text;
        return text.substr(0, enough) + "... (nesting " + std::to_string(value->nesting()) + ")";
    }

    int m_restarts = 0;
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, HasNothingUnderAKeyThatWasNeverSet)
{
    this->expect(std::nullopt, "absent");
    this->expect(std::nullopt, "");
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
            this->expect(values[i], "key" + std::to_string(i));
        }
        this->restart();
    }
}

TYPED_TEST_P(UserDefaultsContract, KeepsNullMarkersInsideContainers)
{
    using namespace platform;
    Value const value { Array { Null {}, Dictionary { { "null", Null {} } } } };
    this->set("key", value);
    this->expect(value, "key");
    this->restart();
    this->expect(value, "key");
}

TYPED_TEST_P(UserDefaultsContract, KeepsEveryBitOfANumber)
{
    using Limits = std::numeric_limits<double>;
    for (double const number : { 0.0, -0.0, 0.1, 1e300, Limits::denorm_min(), Limits::infinity(), std::nan("") }) {
        this->m_harness.store().setDouble(number, "key");
        this->restart();
        auto const value = this->get("key");
        ASSERT_TRUE(value && value->number()) << number << ", " << this->when();
        EXPECT_EQ(std::bit_cast<std::uint64_t>(*value->number()), std::bit_cast<std::uint64_t>(number))
            << number << ", " << this->when();
    }
}

TYPED_TEST_P(UserDefaultsContract, KeepsAnIntegerThatNoDoubleCanHold)
{
    using namespace platform;
    constexpr std::int64_t large = (std::int64_t { 1 } << 60) + 1;
    std::vector<Value> const integers { large, -large, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::uint64_t>::max() };
    for (std::size_t i = 0; i < integers.size(); ++i) {
        this->set("key" + std::to_string(i), integers[i]);
        this->set("nested" + std::to_string(i), Dictionary { { "k", Array { integers[i] } } });
    }
    for (int launch = 0; launch < 2; ++launch) {
        for (std::size_t i = 0; i < integers.size(); ++i) {
            this->expect(integers[i], "key" + std::to_string(i));
            this->expect(Value(Dictionary { { "k", Array { integers[i] } } }), "nested" + std::to_string(i));
        }
        this->restart();
    }
}

TYPED_TEST_P(UserDefaultsContract, DistinguishesABooleanFromANumber)
{
    this->set("key", true);
    this->set("key", 1);
    this->expect(platform::Value { 1 }, "key");
    this->set("key", true);
    this->restart();
    this->expect(platform::Value { true }, "key");
}

TYPED_TEST_P(UserDefaultsContract, ReplacesAnEarlierValue)
{
    this->set("key", "text");
    this->set("key", platform::Array { 1 });
    this->set("other", 2);
    this->expect(platform::Value(platform::Array { 1 }), "key");
    this->restart();
    this->expect(platform::Value(platform::Array { 1 }), "key");
    this->expect(platform::Value { 2 }, "other");
}

TYPED_TEST_P(UserDefaultsContract, RemovesAnEntryByEitherCall)
{
    this->set("a", 1);
    this->set("b", 2);
    this->set("kept", 3);
    this->remove("a");
    this->m_harness.store().setObject(std::nullopt, "b");
    for (int launch = 0; launch < 2; ++launch) {
        this->expect(std::nullopt, "a");
        this->expect(std::nullopt, "b");
        this->expect(platform::Value { 3 }, "kept");
        this->restart();
    }
}

TYPED_TEST_P(UserDefaultsContract, RemovingAnAbsentKeyDoesNothing)
{
    this->remove("absent");
    this->m_harness.store().setObject(std::nullopt, "absent");
    this->expect(std::nullopt, "absent");
    this->set("absent", 1);
    this->expect(platform::Value { 1 }, "absent");
}

TYPED_TEST_P(UserDefaultsContract, AWriteSurvivesTheDeathOfTheProcessOnceTheCallReturns)
{
    if (!TestFixture::writesAtOnce)
        GTEST_SKIP() << "The platform's own store decides when it writes, or nothing persists.";
    using namespace platform;
    this->set("key", "text");
    this->expectAfterDeath("text", "key");
    this->set("key", Array { 1, 2 });
    this->expectAfterDeath(Value(Array { 1, 2 }), "key");
    this->m_harness.store().setDouble(0.5, "number");
    this->expectAfterDeath(0.5, "number");
    this->expectAfterDeath(Value(Array { 1, 2 }), "key");
    this->remove("key");
    this->expectAfterDeath(std::nullopt, "key");
    this->m_harness.store().setObject(std::nullopt, "number");
    this->expectAfterDeath(std::nullopt, "number");
}

TYPED_TEST_P(UserDefaultsContract, DistinguishesKeysByEveryByte)
{
    this->set("key", 1);
    this->set("Key", 2);
    this->set("key ", 3);
    this->set(std::string("key\0", 4), 4);
    this->set("열쇠", 5);
    this->restart();
    this->expect(platform::Value { 1 }, "key");
    this->expect(platform::Value { 2 }, "Key");
    this->expect(platform::Value { 3 }, "key ");
    this->expect(platform::Value { 4 }, std::string("key\0", 4));
    this->expect(platform::Value { 5 }, "열쇠");
}

TYPED_TEST_P(UserDefaultsContract, KeepsAQueueThatIsReadExtendedDroppedAndWrittenBack)
{
    using namespace platform;
    for (int i = 0; i < 1'000; ++i) {
        this->set("queue", this->array("queue").appending(Dictionary { { "number", i } }));
        if (i % 100 == 99)
            this->set("queue", this->array("queue").droppingFirst(90));
        if (i % 250 == 125)
            this->restart();
    }
    this->restart();
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
    this->restart();
    this->expect(value, "key");
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
    this->restart();
    for (int thread = 0; thread < 4; ++thread)
        this->expect(platform::Value { perThread - 1 }, "key" + std::to_string(thread));
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, HasNothingUnderAKeyThatWasNeverSet, KeepsEveryKindOfValueUnchanged,
    KeepsNullMarkersInsideContainers, KeepsEveryBitOfANumber, KeepsAnIntegerThatNoDoubleCanHold,
    DistinguishesABooleanFromANumber, ReplacesAnEarlierValue, RemovesAnEntryByEitherCall,
    RemovingAnAbsentKeyDoesNothing, AWriteSurvivesTheDeathOfTheProcessOnceTheCallReturns, DistinguishesKeysByEveryByte,
    KeepsAQueueThatIsReadExtendedDroppedAndWrittenBack, KeepsAValueOfTheMaximumNesting,
    LaterWritesDoNotChangeAValueThatWasRead, ServesManyThreadsAtOnce);

}
