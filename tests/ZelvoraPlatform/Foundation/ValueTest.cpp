#include "ZelvoraPlatform/Foundation/Value.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace zelvora::platform {

namespace {

// One of each kind, in the order of the kinds.
std::vector<Value> oneOfEachKind()
{
    return { Value(), true, 1, "text", Date { 1 }, Data { "bytes" }, Array {}, Dictionary {} };
}

Value nestedArrays(std::size_t depth)
{
    Value value;
    for (std::size_t i = 0; i < depth; ++i)
        value = Array { value };
    return value;
}

TEST(ValueTest, AValueKnowsItsKind)
{
    auto const values = oneOfEachKind();
    std::vector<Value::Kind> const kinds { Value::Kind::Null, Value::Kind::Boolean, Value::Kind::Number,
        Value::Kind::Text, Value::Kind::Date, Value::Kind::Data, Value::Kind::Array, Value::Kind::Dictionary };
    ASSERT_EQ(values.size(), kinds.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(values[i].kind(), kinds[i]);
}

TEST(ValueTest, AccessorsAnswerOnlyForTheKindOfTheValue)
{
    for (auto const& value : oneOfEachKind()) {
        EXPECT_EQ(value.isNull(), value.kind() == Value::Kind::Null);
        EXPECT_EQ(value.boolean().has_value(), value.kind() == Value::Kind::Boolean);
        EXPECT_EQ(value.number().has_value(), value.kind() == Value::Kind::Number);
        EXPECT_EQ(value.text() != nullptr, value.kind() == Value::Kind::Text);
        EXPECT_EQ(value.date().has_value(), value.kind() == Value::Kind::Date);
        EXPECT_EQ(value.data() != nullptr, value.kind() == Value::Kind::Data);
        EXPECT_EQ(value.array() != nullptr, value.kind() == Value::Kind::Array);
        EXPECT_EQ(value.dictionary() != nullptr, value.kind() == Value::Kind::Dictionary);
    }
}

TEST(ValueTest, ABooleanIsNeverANumber)
{
    EXPECT_EQ(Value(true).boolean(), true);
    EXPECT_EQ(Value(true).number(), std::nullopt);
    EXPECT_EQ(Value(1).boolean(), std::nullopt);
    EXPECT_NE(Value(true), Value(1));
    EXPECT_NE(Value(false), Value(0));
}

TEST(ValueTest, EveryArithmeticTypeIsANumber)
{
    EXPECT_EQ(Value(1).number(), 1.0);
    EXPECT_EQ(Value(2U).number(), 2.0);
    EXPECT_EQ(Value(std::int64_t { -3 }).number(), -3.0);
    EXPECT_EQ(Value(std::size_t { 4 }).number(), 4.0);
    EXPECT_EQ(Value(0.5F).number(), 0.5);
}

TEST(ValueTest, AnIntegerThatADoubleCanHoldIsThatDouble)
{
    EXPECT_EQ(Value(9'007'199'254'740'992), Value(9007199254740992.0));
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()), Value(-9223372036854775808.0));
    EXPECT_EQ(Value(std::int64_t { 1 } << 62), Value(4611686018427387904.0));
    EXPECT_EQ(Value(9'007'199'254'740'992).largeInteger(), std::nullopt);
}

TEST(ValueTest, AnIntegerThatNoDoubleCanHoldIsKept)
{
    Value const identifier = 9'007'199'254'740'993;
    EXPECT_EQ(identifier.kind(), Value::Kind::Number);
    EXPECT_EQ(identifier.number(), 9007199254740992.0);
    EXPECT_EQ(identifier.largeInteger(), (LargeInteger { .magnitude = 9'007'199'254'740'993, .isNegative = false }));
    EXPECT_EQ(identifier, Value(9'007'199'254'740'993));
    EXPECT_NE(identifier, Value(-9'007'199'254'740'993));
    EXPECT_NE(identifier, Value(9'007'199'254'740'995));
    EXPECT_NE(identifier, Value(9007199254740992.0));
    EXPECT_EQ(Value(-9'007'199'254'740'993).number(), -9007199254740992.0);
    EXPECT_EQ(Value(std::numeric_limits<std::uint64_t>::max()).largeInteger()->magnitude,
        std::numeric_limits<std::uint64_t>::max());
}

TEST(ValueTest, APointerToCharactersIsTextAndNotABoolean)
{
    char const* pointer = "pointer";
    EXPECT_EQ(*Value(pointer).text(), "pointer");
    EXPECT_EQ(*Value(std::string_view("view")).text(), "view");
    EXPECT_EQ(*Value(std::string("a\0b", 3)).text(), std::string("a\0b", 3));
}

TEST(ValueTest, NoOtherPointerMakesAValue)
{
    EXPECT_FALSE((std::is_constructible_v<Value, int*>));
    EXPECT_FALSE((std::is_constructible_v<Value, void const*>));
}

TEST(ValueTest, ADefaultValueIsTheNullMarkerAndNotAbsence)
{
    EXPECT_TRUE(Value().isNull());
    EXPECT_EQ(Value(), Value(Null {}));
    std::optional<Value> const absent;
    EXPECT_NE(absent, std::optional(Value()));
}

TEST(ValueTest, ValuesOfTheSameKindAndContentAreEqual)
{
    EXPECT_EQ(oneOfEachKind(), oneOfEachKind());
    EXPECT_NE(Value("a"), Value("b"));
    EXPECT_NE(Value(1), Value(2));
    EXPECT_NE(Value(true), Value(false));
    EXPECT_NE(Value(Date { 1 }), Value(Date { 2 }));
    EXPECT_NE(Value(Data { "a" }), Value(Data { "b" }));
    EXPECT_NE(Value(Array { 1 }), Value(Array { 2 }));
    EXPECT_NE((Value(Dictionary { { "a", 1 } })), (Value(Dictionary { { "a", 2 } })));
}

TEST(ValueTest, ValuesOfDifferentKindsAreNeverEqual)
{
    auto const values = oneOfEachKind();
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j)
            EXPECT_EQ(values[i] == values[j], i == j);
    }
    EXPECT_NE(Value("1"), Value(1));
    EXPECT_NE(Value("bytes"), Value(Data { "bytes" }));
    EXPECT_NE(Value(1), Value(Date { 1 }));
}

TEST(ValueTest, NotANumberEqualsNothing)
{
    Value const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(nan, nan);
    EXPECT_EQ(nan.kind(), Value::Kind::Number);
}

TEST(ValueTest, ACopySharesItsContent)
{
    Value const original = std::string(1000, 'x');
    auto const copy = original; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.text(), original.text());
    Value const container = Dictionary { { "a", 1 } };
    auto const other = container; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(other.dictionary(), container.dictionary());
}

TEST(ValueTest, ContentStaysValidWhileACopyLives)
{
    auto original = std::make_unique<Value>(std::string(1000, 'x'));
    auto const copy = *original;
    auto const* text = copy.text();
    original.reset();
    EXPECT_EQ(*text, std::string(1000, 'x'));
}

TEST(ValueTest, NestingCountsTheContainersInsideOneAnother)
{
    EXPECT_EQ(Value().nesting(), 0U);
    EXPECT_EQ(Value("text").nesting(), 0U);
    EXPECT_EQ(Value(Array {}).nesting(), 1U);
    EXPECT_EQ(Value(Dictionary {}).nesting(), 1U);
    EXPECT_EQ(Value(Array { 1, Array { 2 }, 3 }).nesting(), 2U);
    EXPECT_EQ((Value(Dictionary { { "a", 1 }, { "b", Array { Dictionary {} } } }).nesting()), 3U);
    EXPECT_EQ(nestedArrays(600).nesting(), 600U);
}

TEST(ValueTest, ManyLevelsAreDestroyedWithoutRecursion)
{
    auto arrays = nestedArrays(200'000);
    EXPECT_EQ(arrays.nesting(), 200'000U);
    arrays = Value();
    Value dictionaries;
    for (int i = 0; i < 100'000; ++i)
        dictionaries = i % 2 == 0 ? Value(Dictionary { { "a", dictionaries } }) : Value(Array { dictionaries });
    dictionaries = Value();
    for (int i = 0; i < 100'000; ++i)
        dictionaries = Dictionary { { "a", dictionaries } };
    dictionaries = Value();
    EXPECT_TRUE(dictionaries.isNull());
}

TEST(ValueTest, ManyLevelsAreComparedWithoutRecursion)
{
    auto const nestedAround = [](Value value) {
        for (int i = 0; i < 100'000; ++i)
            value = i % 2 == 0 ? Value(Dictionary { { "a", value } }) : Value(Array { 1, value });
        return value;
    };
    auto const value = nestedAround("inmost");
    auto const equal = nestedAround("inmost");
    EXPECT_EQ(value, equal);
    EXPECT_EQ(*value.array(), *equal.array());
    EXPECT_NE(value, nestedAround("other"));
}

TEST(ValueTest, ContainersDifferIfAnythingInThemDoes)
{
    Value const value = Array { 1, Dictionary { { "a", Array { 2, Array {} } }, { "b", 3 } }, Array { 4 } };
    EXPECT_EQ(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Array {} } }, { "b", 3 } }, Array { 4 } })));
    EXPECT_NE(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Array {} } }, { "b", 3 } }, Array { 5 } })));
    EXPECT_NE(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Array {} } }, { "c", 3 } }, Array { 4 } })));
    EXPECT_NE(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Dictionary {} } }, { "b", 3 } }, Array { 4 } })));
    EXPECT_NE(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Array {} } } }, Array { 4 } })));
    EXPECT_NE(value, (Value(Array { 1, Dictionary { { "a", Array { 2, Array {} } }, { "b", 3 } } })));
}

TEST(ValueTest, AValueSharedWithADestroyedContainerStays)
{
    auto const inner = nestedArrays(100);
    {
        Value const outer = Array { inner, Dictionary { { "a", inner } } };
    }
    EXPECT_EQ(inner, nestedArrays(100));
}

TEST(ValueTest, OneValueMayBeReadCopiedAndDroppedOnManyThreads)
{
    Value const shared = Dictionary { { "list", Array { 1, "two", Array { true } } }, { "text", "text" } };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([shared] {
            for (int round = 0; round < 1000; ++round) {
                auto const copy = shared;
                EXPECT_EQ(copy.dictionary()->find("list")->array()->size(), 3U);
                EXPECT_EQ(copy, shared);
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
}

}

}
