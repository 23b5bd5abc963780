#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

namespace zelvora::tests {

/// What every JSON reader and writer promises, regardless of the order of members and the spelling that it writes. A
/// harness has one:
///
///     platform::JSONSerialization& json();
template<typename Harness>
class JSONSerializationContract : public testing::Test {
protected:
    using Value = platform::Value;
    using Array = platform::Array;
    using Dictionary = platform::Dictionary;

    std::expected<Value, platform::Error> read(std::string text)
    {
        return m_harness.json().jsonObject({ std::move(text) });
    }
    std::expected<platform::Data, platform::Error> write(
        Value const& value, platform::JSONWritingOptions options = platform::JSONWritingOptions::None)
    {
        return m_harness.json().data(value, options);
    }

    void expectReads(std::string const& text, Value const& expected)
    {
        auto const value = read(text);
        ASSERT_TRUE(value) << text << ": " << value.error().localizedDescription;
        EXPECT_EQ(*value, expected) << text;
    }
    void expectRefusesToRead(std::string const& text)
    {
        auto const value = read(text);
        ASSERT_FALSE(value) << text;
        EXPECT_NE(value.error().localizedDescription, "") << text;
    }
    void expectKept(Value const& value)
    {
        EXPECT_TRUE(m_harness.json().isValidJSONObject(value));
        for (auto const options : { platform::JSONWritingOptions::None, platform::JSONWritingOptions::PrettyPrinted }) {
            auto const text = write(value, options);
            ASSERT_TRUE(text) << text.error().localizedDescription;
            expectReads(text->bytes, value);
        }
    }
    void expectRefusesToWrite(Value const& value)
    {
        EXPECT_FALSE(m_harness.json().isValidJSONObject(value)) << debugDescription(value);
        auto const text = write(value);
        ASSERT_FALSE(text) << text->bytes;
        EXPECT_NE(text.error().localizedDescription, "");
    }

    static Value nest(std::size_t depth)
    {
        Value value = Array {};
        while (value.nesting() < depth)
            value = Array { value };
        return value;
    }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(JSONSerializationContract);

TYPED_TEST_P(JSONSerializationContract, ReadsEachKindAsItself)
{
    this->expectReads(R"( { "null" : null, "yes":true,"no":false,"number":-1.5e3 , "zero": 0, "text":"text",
        "array":[1,[],{}], "object":{"a":{}} } )",
        platform::Dictionary {
            { "null", platform::Null {} },
            { "yes", true },
            { "no", false },
            { "number", -1500 },
            { "zero", 0 },
            { "text", "text" },
            { "array", platform::Array { 1, platform::Array {}, platform::Dictionary {} } },
            { "object", platform::Dictionary { { "a", platform::Dictionary {} } } },
        });
    EXPECT_FALSE(*this->read("[1]") == platform::Value(platform::Array { true }));
    EXPECT_FALSE(*this->read("[0]") == platform::Value(platform::Array { false }));
}

TYPED_TEST_P(JSONSerializationContract, ReadsEscapesAndCharactersOfEveryPlane)
{
    using namespace std::string_literals;
    this->expectReads(R"(["\"\\\/\b\f\n\r\t"])", platform::Array { "\"\\/\b\f\n\r\t" });
    this->expectReads(
        R"(["\uac00\uD55C", "가한", "\ud83d\uDE00", "😀"])", platform::Array { "가한", "가한", "😀", "😀" });
    this->expectReads(R"(["a\u0000b"])", platform::Array { "a\0b"s });
}

TYPED_TEST_P(JSONSerializationContract, IfAMemberRepeatsTheLastOneWins)
{
    this->expectReads(R"({"a":1,"b":2,"a":{"c":3}})",
        platform::Dictionary { { "a", platform::Dictionary { { "c", 3 } } }, { "b", 2 } });
}

TYPED_TEST_P(JSONSerializationContract, ReadsArraysAndObjectsOnly)
{
    for (auto const* const text : { "", " ", "null", "true", "1", "\"text\"" })
        this->expectRefusesToRead(text);
}

TYPED_TEST_P(JSONSerializationContract, RefusesWhatIsNotJSON)
{
    for (auto const* const text : { "oops", "[", "]", "{", "[1", "[1,]", "[,1]", "[1 2]", "{\"a\"}", "{\"a\":}",
             "{\"a\":1,}", "{a:1}", "{'a':1}", "{1:2}", "[01]", "[1.]", "[.5]", "[+1]", "[1e]", "[-]", "[NaN]",
             "[Infinity]", "[nul]", "[True]", "[\"open]", "[\"\\x\"]", "[\"\\u12\"]", "[\"tab\there\"]",
             "[\"line\nbreak\"]", "[] []", "[1]x", "// comment\n[]", "[/**/]", "<html></html>" })
        this->expectRefusesToRead(text);
}

TYPED_TEST_P(JSONSerializationContract, RefusesBytesThatAreNotUTF8)
{
    using namespace std::string_literals;
    for (auto const& text : { "[\"\xff\"]"s, "[\"\xc0\xaf\"]"s, "[\"\xed\xa0\x80\"]"s, "[\"\xf4\x90\x80\x80\"]"s,
             "[\"\xea\xb0\"]"s, "[1]\0"s, "\xff\xfe[\0]\0"s })
        this->expectRefusesToRead(text);
}

TYPED_TEST_P(JSONSerializationContract, RefusesHalvesOfSurrogatePairs)
{
    for (auto const* const text : { R"(["\ud83d"])", R"(["\ude00"])", R"(["\ud83dx"])", R"(["\ud83d\u0041"])" })
        this->expectRefusesToRead(text);
}

TYPED_TEST_P(JSONSerializationContract, RefusesNumbersThatExceedADouble)
{
    this->expectRefusesToRead("[1e999]");
    this->expectRefusesToRead("[-1e999]");
}

TYPED_TEST_P(JSONSerializationContract, NestsToTheLimitAndNoDeeper)
{
    constexpr auto limit = platform::Value::maximumNesting;
    auto const brackets = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    this->expectReads(brackets(limit), this->nest(limit));
    this->expectRefusesToRead(brackets(limit + 1));
    this->expectRefusesToRead(std::string(1'000'000, '['));
    this->expectRefusesToRead(brackets(1'000'000));
    this->expectKept(this->nest(limit));
    this->expectRefusesToWrite(this->nest(limit + 1));
    this->expectRefusesToWrite(this->nest(100'000));
}

TYPED_TEST_P(JSONSerializationContract, KeepsEachKind)
{
    this->expectKept(platform::Array {});
    this->expectKept(platform::Dictionary {});
    this->expectKept(platform::Array { platform::Null {}, true, false, 0, "", "text", platform::Array { 1 } });
    this->expectKept(platform::Dictionary {
        { "", 1 }, { "열쇠", "값" }, { "\"quoted\"", platform::Dictionary { { "a", platform::Array { 1, 2 } } } } });
}

TYPED_TEST_P(JSONSerializationContract, KeepsEveryCharacter)
{
    std::string text;
    for (char character = 0; character < 0x7f; ++character)
        text.push_back(character);
    text += "\x7f\xc2\x80 가 😀 \xe2\x80\xa8\xe2\x80\xa9";
    this->expectKept(platform::Array { text });
    this->expectKept(platform::Dictionary { { text, text } });
}

TYPED_TEST_P(JSONSerializationContract, KeepsEveryNumberInEveryLocale)
{
    using Limits = std::numeric_limits<double>;
    // The second has a decimal comma, if the machine has it at all.
    for (auto const* const locale : { "C", "de_DE.UTF-8" }) {
        std::setlocale(LC_ALL, locale);
        for (double const number : { 0.0, -0.0, 0.1, -0.5, 1.0 / 3, 7.0, 1e15, 1e21, 9007199254740993.0, 1e308, 5e-324,
                 Limits::max(), Limits::min(), Limits::lowest(), 1700000000.123456 })
            this->expectKept(platform::Array { number });
    }
    std::setlocale(LC_ALL, "C");
}

TYPED_TEST_P(JSONSerializationContract, RefusesToWriteWhatJSONCannotRepresent)
{
    using Limits = std::numeric_limits<double>;
    for (platform::Value const& unwritable : { platform::Value(Limits::quiet_NaN()),
             platform::Value(Limits::infinity()), platform::Value(-Limits::infinity()),
             platform::Value(platform::Date { 1 }), platform::Value(platform::Data { "bytes" }) }) {
        this->expectRefusesToWrite(platform::Array { unwritable });
        this->expectRefusesToWrite(platform::Array { 1, platform::Dictionary { { "a", unwritable } } });
    }
}

TYPED_TEST_P(JSONSerializationContract, RefusesToWriteTextThatIsNotUTF8)
{
    EXPECT_FALSE(this->write(platform::Array { "\xff" }));
    EXPECT_FALSE(this->write(platform::Dictionary { { "\xed\xa0\x80", 1 } }));
}

TYPED_TEST_P(JSONSerializationContract, WritesArraysAndObjectsOnly)
{
    for (platform::Value const& value :
        { platform::Value(), platform::Value(true), platform::Value(1), platform::Value("text") })
        this->expectRefusesToWrite(value);
}

TYPED_TEST_P(JSONSerializationContract, IsCompactUnlessPrettyPrinted)
{
    platform::Value const value = platform::Dictionary { { "a", platform::Array { 1, "b" } } };
    auto const compact = this->write(value);
    ASSERT_TRUE(compact);
    // Writers differ in blanks.
    EXPECT_EQ(compact->bytes.find('\n'), std::string::npos) << compact->bytes;
    auto const pretty = this->write(value, platform::JSONWritingOptions::PrettyPrinted);
    ASSERT_TRUE(pretty);
    EXPECT_NE(pretty->bytes.find('\n'), std::string::npos);
}

REGISTER_TYPED_TEST_SUITE_P(JSONSerializationContract, ReadsEachKindAsItself, ReadsEscapesAndCharactersOfEveryPlane,
    IfAMemberRepeatsTheLastOneWins, ReadsArraysAndObjectsOnly, RefusesWhatIsNotJSON, RefusesBytesThatAreNotUTF8,
    RefusesHalvesOfSurrogatePairs, RefusesNumbersThatExceedADouble, NestsToTheLimitAndNoDeeper, KeepsEachKind,
    KeepsEveryCharacter, KeepsEveryNumberInEveryLocale, RefusesToWriteWhatJSONCannotRepresent,
    RefusesToWriteTextThatIsNotUTF8, WritesArraysAndObjectsOnly, IsCompactUnlessPrettyPrinted);

}
