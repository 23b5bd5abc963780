#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace zelvora::tests {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

namespace {

std::string encoded(Value const& value)
{
    std::string bytes;
    shared::appendValue(bytes, value);
    return bytes;
}

std::optional<Value> decoded(std::string const& bytes)
{
    shared::ByteReader in { bytes };
    auto value = shared::readValue(in);
    return in.isAtEnd() ? value : std::nullopt;
}

// Whether skipping the value comes to the same as reading it.
void expectSkippedAsRead(std::string const& bytes)
{
    shared::ByteReader reader { bytes };
    shared::ByteReader skipper { bytes };
    auto const value = shared::readValue(reader);
    auto const shape = shared::skipValue(skipper);
    ASSERT_EQ(shape.has_value(), value.has_value());
    if (!value)
        return;
    EXPECT_EQ(skipper.remaining(), reader.remaining());
    EXPECT_EQ(shape->kind, value->kind());
    EXPECT_GE(shape->nesting, value->nesting());
}

Value nested(std::size_t levels)
{
    Value value { Array {} };
    for (std::size_t i = 1; i < levels; ++i)
        value = i % 2 == 0 ? Value { Array { value } } : Value { Dictionary { { "k", value } } };
    return value;
}

}

class ValueCodingTest : public testing::TestWithParam<Value> { };

TEST_P(ValueCodingTest, ReadsBackAsTheSameValueOfTheSameKind)
{
    auto const value = decoded(encoded(GetParam()));
    ASSERT_TRUE(value);
    EXPECT_EQ(value->kind(), GetParam().kind());
    EXPECT_EQ(*value, GetParam());
    expectSkippedAsRead(encoded(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ValueCodingTest,
    testing::Values(Value { Null {} }, Value { true }, Value { false }, Value { 0 }, Value { 1 }, Value { -2.5 },
        Value { 9'007'199'254'740'993 }, Value { -9'007'199'254'740'993 }, Value { 18'446'744'073'709'551'615U },
        Value { "" }, Value { "한국어 text" }, Value { std::string("a\0b\0", 4) }, Value { std::string(100'000, 'x') },
        Value { Date { -1.25 } }, Value { Data { std::string("\0\xff\xfe", 3) } }, Value { Data {} },
        Value { Array {} }, Value { Array { 1, true, "1", Null {}, Array { 2 }, Dictionary { { "a", 1 } } } },
        Value { Dictionary {} },
        Value { Dictionary { { "", 1 }, { std::string("n\0l", 3), Null {} }, { "z", Array { Date { 3 } } } } }));

TEST(ValueCodingBitsTest, ReadsAnIntegerThatADoubleCanHoldAsThatDouble)
{
    auto const value = decoded(std::string("\x09\0\0\0\0\xf0\0\0\0", 9));
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, Value(1030792151040.0));
    EXPECT_EQ(value->largeInteger(), std::nullopt);
}

TEST(ValueCodingBitsTest, KeepsEveryBitOfANumber)
{
    using Limits = std::numeric_limits<double>;
    for (double const number : { 0.0, -0.0, 0.1, 1e308, Limits::denorm_min(), Limits::max(), Limits::epsilon(),
             Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), std::nan("1234") }) {
        auto const value = decoded(encoded(Value { number }));
        ASSERT_TRUE(value && value->number());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(*value->number()), std::bit_cast<std::uint64_t>(number));
        auto const date = decoded(encoded(Value { Date { number } }));
        ASSERT_TRUE(date && date->date());
        EXPECT_EQ(
            std::bit_cast<std::uint64_t>(date->date()->timeIntervalSince1970), std::bit_cast<std::uint64_t>(number));
    }
}

TEST(ValueCodingBitsTest, ReadsTheDeepestValueAndNothingDeeper)
{
    auto const deepest = nested(Value::maximumNesting);
    ASSERT_EQ(deepest.nesting(), Value::maximumNesting);
    auto const value = decoded(encoded(deepest));
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, deepest);
    EXPECT_FALSE(decoded(encoded(nested(Value::maximumNesting + 1))));
    expectSkippedAsRead(encoded(deepest));
    expectSkippedAsRead(encoded(nested(Value::maximumNesting + 1)));
}

TEST(ValueCodingBitsTest, TrustsNoLength)
{
    std::string const huge = "\xff\xff\xff\xff\xff\xff\xff\xff\x7f";
    for (char tag = 0; tag <= 8; ++tag)
        EXPECT_FALSE(decoded(std::string(1, tag) + huge)) << int { tag };
    EXPECT_FALSE(decoded(std::string(1, '\x07') + std::string(11, '\xff')));
    EXPECT_FALSE(decoded(""));
    EXPECT_FALSE(decoded("\x09"));
    EXPECT_FALSE(decoded("\x0b"));
}

TEST(ValueCodingBitsTest, SurvivesAnyBytes)
{
    auto const whole = encoded(Array { "text", Dictionary { { "key", Array { 1.5, Null {} } } }, Data { "bytes" } });
    for (std::size_t cut = 0; cut < whole.size(); ++cut)
        EXPECT_FALSE(decoded(whole.substr(0, cut))) << cut;
    for (std::size_t cut = 0; cut < whole.size(); ++cut)
        expectSkippedAsRead(whole.substr(0, cut));
    std::mt19937 random { 11 };
    int read = 0;
    for (int i = 0; i < 20'000; ++i) {
        auto bytes = whole;
        for (int changes = 0; changes < 3; ++changes)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        expectSkippedAsRead(bytes);
        // What can be read at all can be written and read again.
        if (auto const value = decoded(bytes)) {
            ++read;
            EXPECT_TRUE(decoded(encoded(*value)));
        }
    }
    EXPECT_GT(read, 0);
}

}
