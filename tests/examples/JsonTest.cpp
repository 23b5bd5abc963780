#include "examples/service/Json.h"

#include <gtest/gtest.h>

namespace zelvora::examples {

using Texts = std::vector<std::string>;

TEST(JsonTest, RawElementsAreTheVeryTextsBetweenTheCommas)
{
    EXPECT_EQ(rawElements(R"({"data":[]})", "data"), Texts {});
    EXPECT_EQ(rawElements(R"({"data":[ 1 , "a,b" ,[ 2,3 ],{ "x":[] } , true]})", "data"),
        (Texts { "1", R"("a,b")", "[ 2,3 ]", R"({ "x":[] })", "true" }));
}

TEST(JsonTest, BracketsAndQuotesInTextsAreNoStructure)
{
    EXPECT_EQ(rawElements(R"({"data":[{"a":"}],\"{["},{"b\\":"\\"}]})", "data"),
        (Texts { R"({"a":"}],\"{["})", R"({"b\\":"\\"})" }));
}

TEST(JsonTest, TheMemberIsFoundAmongOthersAndUnderAnEscapedName)
{
    EXPECT_EQ(rawElements(R"({"x":{"data":[1]},"profile":"data","\u0064ata":[2],"y":null})", "data"), Texts { "2" });
}

TEST(JsonTest, OfTwoMembersOfOneNameTheLastCountsAsForTheParser)
{
    auto const* const text = R"({"data":[1],"data":[2]})";
    EXPECT_EQ(rawElements(text, "data"), Texts { "2" });
    EXPECT_EQ(parseJson(text)->at("data").dump(), "[2]");
}

TEST(JsonTest, WhatIsNoJsonIsAbsent)
{
    for (auto const* text : { "", "{", "nul", "{}x", "\"\xff\"", "[1,]" })
        EXPECT_FALSE(parseJson(text)) << text;
    EXPECT_TRUE(parseJson("null"));
}

TEST(JsonTest, NestingIsBoundedAndBracketsInTextsDoNotCount)
{
    EXPECT_TRUE(parseJson(std::string(200, '[') + std::string(200, ']')));
    EXPECT_FALSE(parseJson(std::string(201, '[') + std::string(201, ']')));
    EXPECT_TRUE(parseJson('"' + std::string(1000, '[') + '"'));
}

} // namespace zelvora::examples
