#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using platform::Array;
using platform::Dictionary;
using platform::JSONWritingOptions;
using platform::Null;
using platform::Value;

shared::JSONSerialization const s_json;

std::expected<Value, platform::Error> read(std::string text)
{
    return s_json.jsonObject({ std::move(text) });
}

std::string write(Value const& value, JSONWritingOptions options = JSONWritingOptions::None)
{
    auto const data = s_json.data(value, options);
    return data ? data->bytes : "failed: " + data.error().localizedDescription;
}

bool isRefused(std::string text)
{
    auto const result = read(std::move(text));
    return !result && !result.error().localizedDescription.empty();
}

Value nestedArrays(std::size_t depth)
{
    Value value = Array {};
    for (std::size_t level = 1; level < depth; ++level)
        value = Array { value };
    return value;
}

}

TEST(JSONSerializationTest, EveryKindOfValueIsRead)
{
    Value const expected = Dictionary { { "array", Array { 1, "two", Null {}, Array {} } }, { "false", false },
        { "null", Null {} }, { "number", -1.5e3 }, { "object", Dictionary { { "한", "글" } } }, { "true", true } };
    EXPECT_EQ(read(R"( {"null":null,"true":true,"false":false,"number":-1.5e3,
        "array":[1,"two",null,[]],"object":{"\ud55c":"글"}} )"),
        expected);
}

TEST(JSONSerializationTest, IfAKeyRepeatsTheLastMemberWins)
{
    EXPECT_EQ(read(R"({"a":1,"b":2,"a":3})"), Value(Dictionary { { "a", 3 }, { "b", 2 } }));
}

TEST(JSONSerializationTest, TextThatIsNotAnArrayOrObjectIsRefused)
{
    for (auto const* text : { "", " ", "1", "\"text\"", "null", "true", "[", "[1,]", "{\"a\"}", "{a:1}", "[] x", "[][]",
             "[1e999]", "[01]", "[NaN]", "['a']", "[\"\x01\"]", "[\"\\ud800\"]", "// no\n[]", "<html>" })
        EXPECT_TRUE(isRefused(text)) << text;
    EXPECT_TRUE(isRefused(std::string("[]\0x", 4)));
    EXPECT_TRUE(isRefused(std::string("[]\0", 3)));
}

TEST(JSONSerializationTest, TextThatIsNotUTF8IsRefused)
{
    for (auto const* text : { "[\"\xff\"]", "[\"\xc0\x80\"]", "[\"\xed\xa0\x80\"]", "{\"\xe3\x81\":1}" })
        EXPECT_TRUE(isRefused(text));
    EXPECT_FALSE(s_json.data(Array { "\xff" }, JSONWritingOptions::None));
    EXPECT_FALSE(s_json.data(Dictionary { { "\xff", 1 } }, JSONWritingOptions::PrettyPrinted));
}

TEST(JSONSerializationTest, AnErrorSaysWhereTheTextIsMalformed)
{
    EXPECT_EQ(read("[1,x]").error().localizedDescription,
        "The text is not JSON that can be read: it is malformed at byte 4.");
}

TEST(JSONSerializationTest, NestingIsReadAndWrittenUpToItsLimit)
{
    std::string const limit = std::string(512, '[') + std::string(512, ']');
    EXPECT_EQ(write(nestedArrays(512)), limit);
    EXPECT_EQ(read(limit), nestedArrays(512));

    EXPECT_TRUE(isRefused("[" + limit + "]"));
    EXPECT_TRUE(isRefused(std::string(1'000'000, '[')));
    EXPECT_FALSE(s_json.isValidJSONObject(nestedArrays(513)));
    EXPECT_FALSE(s_json.data(nestedArrays(100'000), JSONWritingOptions::None));
}

TEST(JSONSerializationTest, OnlyContainersOfWhatJSONCanRepresentAreValid)
{
    EXPECT_TRUE(s_json.isValidJSONObject(Array { Null {}, true, 1, "a", Dictionary { { "k", Array {} } } }));
    auto const notANumber = std::numeric_limits<double>::quiet_NaN();
    for (auto const& value : { Value(1), Value("a"), Value(true), Value(Null {}), Value(Array { notANumber }),
             Value(Array { std::numeric_limits<double>::infinity() }), Value(Array { platform::Date {} }),
             Value(Dictionary { { "k", platform::Data {} } }) }) {
        EXPECT_FALSE(s_json.isValidJSONObject(value));
        EXPECT_FALSE(s_json.data(value, JSONWritingOptions::None));
    }
}

TEST(JSONSerializationTest, WhatJSONCannotRepresentIsReportedBeforeTextThatIsNotUTF8)
{
    EXPECT_EQ(write(Array { "\xFF" }), "failed: The value contains text that is not UTF-8.");
    for (auto const& value : { Value(Array { "\xFF", platform::Date {} }), Value(Array { platform::Date {}, "\xFF" }),
             Value(Dictionary { { "\xFF", Array { platform::Data {} } } }), Value("\xFF"), nestedArrays(513) })
        EXPECT_EQ(write(value), "failed: The value contains something that JSON cannot represent.");
}

TEST(JSONSerializationTest, ElementsThatAreMadeToBeWrittenAreNotKept)
{
    auto made = 0;
    Array::Part part {
        .count = 2, .nesting = 0, .kinds = 1U << static_cast<unsigned>(Value::Kind::Number), .make = {}
    };
    part.make = [&made] {
        ++made;
        return std::vector<Value> { 1, 2 };
    };
    Array const array(std::vector { part });
    EXPECT_TRUE(s_json.isValidJSONObject(array));
    EXPECT_EQ(write(array), "[1,2]");
    EXPECT_EQ(made, 2);
    EXPECT_EQ(array.at(1), Value(2));
    EXPECT_EQ(made, 3);
}

TEST(JSONSerializationTest, CompactTextHasNoBlanksAndEscapesWhatItMust)
{
    EXPECT_EQ(write(Dictionary { { "b", Array { 7, -0.5, true, false, Null {} } }, { "a", Dictionary {} } }),
        R"({"a":{},"b":[7,-0.5,true,false,null]})");
    EXPECT_EQ(
        write(Array { "\"\\/\b\f\n\r\t\x01\x1f\x7f'한글" }), "[\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7f'한글\"]");
    EXPECT_EQ(write(Array { std::string("\0", 1) }), "[\"\\u0000\"]");
}

TEST(JSONSerializationTest, PrettyPrintedTextHasOneMemberPerLine)
{
    EXPECT_EQ(write(Array { Dictionary { { "a", 1 }, { "b", Array { "c", Array {} } } }, Dictionary {} },
                  JSONWritingOptions::PrettyPrinted),
        "[\n  {\n    \"a\": 1,\n    \"b\": [\n      \"c\",\n      []\n    ]\n  },\n  {}\n]");
}

TEST(JSONSerializationTest, IntegersThatNoDoubleCanHoldAreNotRounded)
{
    Array const identifiers { 9'007'199'254'740'993, -9'007'199'254'740'993, 18'446'744'073'709'551'615U };
    EXPECT_EQ(write(identifiers), "[9007199254740993,-9007199254740993,18446744073709551615]");
    EXPECT_EQ(read(write(identifiers)), Value(identifiers));
}

TEST(JSONSerializationTest, NumbersReadBackAsTheSameNumberInEveryLocale)
{
    // Has no effect if this machine lacks the locale; the numbers must read back either way.
    (void)std::setlocale(LC_ALL, "de_DE.UTF-8");
    Array const numbers { 0, 7, -7, 0.1, 1.0 / 3, 1e15, 9007199254740993.0, 1e21, 1e-7, 5e-324, 1.7976931348623157e308,
        123456.789, 18446744073709551615.0 };
    EXPECT_EQ(read(write(numbers)), Value(numbers));
    EXPECT_EQ(write(Array { 7, 1700000000000000.0 }), "[7,1700000000000000]");
}

}
