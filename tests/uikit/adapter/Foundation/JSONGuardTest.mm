#include "ZelvoraAdapters/uikit/Foundation/JSONGuard.h"

#include "ZelvoraPlatform/Foundation/Value.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvora::tests {

using uikit::isSafeToReadAsJSON;

TEST(JSONGuardTest, LetsJSONPass)
{
    for (auto const* const text :
        { "[]", " {\"a\": [1, \"]}\", null]} \n", R"(["\ud83d\ude00", "\u0041", "\\\"\/\n", "\uD83D\uDE00"])" })
        EXPECT_TRUE(isSafeToReadAsJSON(text)) << text;
}

TEST(JSONGuardTest, RefusesOtherEncodings)
{
    using namespace std::string_literals;
    EXPECT_FALSE(isSafeToReadAsJSON("[\"\xff\"]"));
    EXPECT_FALSE(isSafeToReadAsJSON("\xff\xfe[\0]\0"s));
}

TEST(JSONGuardTest, RefusesHalvesOfSurrogatePairs)
{
    for (auto const* const text : { R"(["\ud83d"])", R"(["\ude00"])", R"(["\ud83dx"])", R"(["\ud83d\n"])",
             R"(["\ud83d\u0041"])", R"(["\ud83d\ud83d"])", R"(["\u12"])", R"(["\u12)", "[\"\\" })
        EXPECT_FALSE(isSafeToReadAsJSON(text)) << text;
}

TEST(JSONGuardTest, RefusesBracketsThatNestTooDeepAndWhatFollowsTheLast)
{
    constexpr auto limit = platform::Value::maximumNesting;
    EXPECT_TRUE(isSafeToReadAsJSON(std::string(limit, '[') + std::string(limit, ']')));
    EXPECT_FALSE(isSafeToReadAsJSON(std::string(limit + 1, '[')));
    EXPECT_FALSE(isSafeToReadAsJSON("[] []"));
    EXPECT_FALSE(isSafeToReadAsJSON("]"));
}

}
