#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"

#include <gtest/gtest.h>

#include <limits>

namespace zelvora::platform {

namespace {

// The text after the limit: "... (" and what was left out.
std::string note(std::string const& description)
{
    auto const place = description.rfind("... (");
    EXPECT_NE(place, std::string::npos) << description;
    EXPECT_LE(place, debugDescriptionLimit);
    EXPECT_TRUE(description.ends_with(")"));
    return place == std::string::npos ? "" : description.substr(place);
}

TEST(DebugDescriptionTest, EveryKindIsReadable)
{
    EXPECT_EQ(debugDescription(Value()), "<null>");
    EXPECT_EQ(debugDescription(Value(true)), "true");
    EXPECT_EQ(debugDescription(Value(false)), "false");
    EXPECT_EQ(debugDescription(Value(1)), "1");
    EXPECT_EQ(debugDescription(Value(-0.5)), "-0.5");
    EXPECT_EQ(debugDescription(Value("text 한글")), "\"text 한글\"");
    EXPECT_EQ(debugDescription(Value("")), "\"\"");
    EXPECT_EQ(debugDescription(Value(Date { 1.5 })), "<date 1.5>");
    EXPECT_EQ(debugDescription(Value(Data { "abc" })), "<3 bytes>");
    EXPECT_EQ(debugDescription(Value(Array {})), "[]");
    EXPECT_EQ(debugDescription(Value(Array { 1, "a", Array { true } })), "[1, \"a\", [true]]");
    EXPECT_EQ(debugDescription(Value(Dictionary {})), "{}");
    EXPECT_EQ(debugDescription(Value(Dictionary { { "b", Null {} }, { "a", 1 } })), "{\"a\": 1, \"b\": <null>}");
}

TEST(DebugDescriptionTest, ADescriptionIsTheSameButForTextThatIsNotInAContainer)
{
    EXPECT_EQ(description(Value("text \"한글\"")), "text \"한글\"");
    EXPECT_EQ(description(Value("")), "");
    EXPECT_EQ(description(Value(Array { "a" })), "[\"a\"]");
    EXPECT_EQ(description(Value(1)), "1");
    EXPECT_EQ(description(Value(std::string(debugDescriptionLimit, 'x'))), std::string(debugDescriptionLimit, 'x'));
    EXPECT_EQ(note(description(Value(std::string(debugDescriptionLimit + 7, 'x')))), "... (7 more bytes)");
}

TEST(DebugDescriptionTest, OnlyAnAbsentValueReadsNil)
{
    EXPECT_EQ(debugDescription(std::optional<Value>()), "nil");
    EXPECT_EQ(debugDescription(std::optional(Value("nil"))), "\"nil\"");
    EXPECT_EQ(debugDescription(std::optional(Value())), "<null>");
}

TEST(DebugDescriptionTest, WhatFitsIsNotCut)
{
    // With its two quotes it has exactly as many bytes as the limit allows.
    std::string const text(debugDescriptionLimit - 2, 'x');
    EXPECT_EQ(debugDescription(Value(text)), "\"" + text + "\"");
}

TEST(DebugDescriptionTest, OneByteMoreIsCutAtTheLimit)
{
    std::string const text(debugDescriptionLimit - 1, 'x');
    auto const description = debugDescription(Value(text));
    EXPECT_EQ(description.substr(0, debugDescriptionLimit), "\"" + text);
    EXPECT_FALSE(note(description).empty());
}

TEST(DebugDescriptionTest, ALongTextTellsHowManyBytesWereLeftOut)
{
    auto const description = debugDescription(Value(std::string(10'000, 'x')));
    EXPECT_EQ(description.substr(0, debugDescriptionLimit), "\"" + std::string(debugDescriptionLimit - 1, 'x'));
    EXPECT_EQ(note(description), "... (9489 more bytes)");
}

TEST(DebugDescriptionTest, ALongArrayTellsHowManyElementsWereLeftOut)
{
    Array array;
    for (int i = 0; i < 10'000; ++i)
        array = array.appending(7);
    auto const description = debugDescription(Value(array));
    EXPECT_TRUE(description.starts_with("[7, 7, 7, "));
    // The 172nd element crosses the limit and is not counted as left out.
    EXPECT_EQ(note(description), "... (9828 more elements)");
}

TEST(DebugDescriptionTest, ALargeDictionaryTellsHowManyMembersWereLeftOut)
{
    Dictionary::Entries entries;
    for (int i = 0; i < 1000; ++i)
        entries.emplace_back("key" + std::to_string(i), i);
    auto const description = debugDescription(Value(Dictionary(std::move(entries))));
    EXPECT_TRUE(description.starts_with("{\"key0\": 0, "));
    EXPECT_TRUE(note(description).ends_with(" more members)")) << note(description);
}

TEST(DebugDescriptionTest, TheNoteIsAboutTheOutermostContainerThatWasCut)
{
    Array array;
    for (int i = 0; i < 100; ++i)
        array = array.appending(Dictionary { { "text", std::string(400, 'x') }, { "z", 1 } });
    EXPECT_TRUE(note(debugDescription(Value(array))).ends_with(" more elements)"));
}

TEST(DebugDescriptionTest, ALongKeyIsCutToo)
{
    auto const description = debugDescription(Value(Dictionary { { std::string(100'000, 'k'), 1 } }));
    EXPECT_LT(description.size(), debugDescriptionLimit + 64);
    EXPECT_FALSE(note(description).empty());
}

TEST(DebugDescriptionTest, TextIsNotCutInsideACharacter)
{
    for (std::size_t ahead = 0; ahead < 4; ++ahead) {
        std::string text(ahead, 'x');
        for (int i = 0; i < 1000; ++i)
            text += "한";
        auto const description = debugDescription(Value(text));
        EXPECT_TRUE(isValidUTF8(description));
        EXPECT_LE(description.rfind("... ("), debugDescriptionLimit);
        EXPECT_GE(description.rfind("... ("), debugDescriptionLimit - 3);
    }
}

TEST(DebugDescriptionTest, BytesThatAreNotTextAreCutToo)
{
    auto const description = debugDescription(Value(std::string(100'000, '\x80')));
    EXPECT_LT(description.size(), debugDescriptionLimit + 64);
}

TEST(DebugDescriptionTest, DeepNestingCostsNeitherStackNorMemory)
{
    Value value = 1;
    for (int i = 0; i < 100'000; ++i)
        value = i % 2 == 0 ? Value(Array { value }) : Value(Dictionary { { "a", value } });
    EXPECT_LT(debugDescription(value).size(), debugDescriptionLimit + 64);
}

TEST(DebugDescriptionTest, ItCostsTheSameHoweverLongTheArrayIs)
{
    Array array;
    for (int i = 0; i < 300'000; ++i)
        array = array.appending(i);
    Value const value = array;
    // Walking all elements two thousand times would take minutes.
    for (int i = 0; i < 2000; ++i)
        ASSERT_LT(debugDescription(value).size(), debugDescriptionLimit + 64);
}

}

}
