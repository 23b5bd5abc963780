#include "ZelvoraPlatform/Foundation/NumberText.h"

#include "ZelvoraPlatform/Foundation/Value.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>

namespace zelvora::platform {

namespace {

TEST(NumberTextTest, WholeNumbersHaveNeitherPointNorExponent)
{
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(1), "1");
    EXPECT_EQ(numberText(-1), "-1");
    EXPECT_EQ(numberText(100'000), "100000");
    EXPECT_EQ(numberText(86400), "86400");
    EXPECT_EQ(numberText(1'767'225'600'123), "1767225600123");
    EXPECT_EQ(numberText(999'999'999'999'999), "999999999999999");
    EXPECT_EQ(numberText(1'700'000'000'000'000), "1700000000000000");
    EXPECT_EQ(numberText(9'007'199'254'740'992), "9007199254740992");
    EXPECT_EQ(numberText(-9'999'999'999'999'998), "-9999999999999998");
}

TEST(NumberTextTest, AnIntegerThatNoDoubleCanHoldIsItsDigits)
{
    EXPECT_EQ(numberText(Value(9'007'199'254'740'993)), "9007199254740993");
    EXPECT_EQ(numberText(Value(-9'007'199'254'740'993)), "-9007199254740993");
    EXPECT_EQ(numberText(Value(std::numeric_limits<std::int64_t>::max())), "9223372036854775807");
    EXPECT_EQ(numberText(Value(std::numeric_limits<std::uint64_t>::max())), "18446744073709551615");
    EXPECT_EQ(numberText(Value(1.5)), "1.5");
}

TEST(NumberTextTest, FractionsAreAsShortAsTheyCanBe)
{
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(-2.5), "-2.5");
    EXPECT_EQ(numberText(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(numberText(0.1 + 0.2), "0.30000000000000004");
}

TEST(NumberTextTest, WhatIsNotFiniteHasAName)
{
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::infinity()), "-inf");
}

void expectToReadBack(double number)
{
    auto const text = numberText(number);
    char* end = nullptr;
    auto const read = std::strtod(text.c_str(), &end);
    EXPECT_EQ(end, text.c_str() + text.size()) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(number)) << text;
}

TEST(NumberTextTest, EveryNumberReadsBackAsTheSameNumber)
{
    for (auto const number : { 0.0, -0.0, 1e15, 1e16, -1e15, 1e15 - 1, 1e15 + 0.5, 1e-7, 5e-324, 1.7976931348623157e308,
             2.2250738585072014e-308, 9007199254740993.0, 123456789.123456789 })
        expectToReadBack(number);
    std::mt19937_64 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same numbers in every run
    for (int i = 0; i < 20'000; ++i) {
        auto const number = std::bit_cast<double>(random());
        if (std::isfinite(number))
            expectToReadBack(number);
        expectToReadBack(static_cast<double>(random() % 2'000'000'000'000'000U));
    }
}

}

}
