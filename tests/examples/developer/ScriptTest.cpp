#include "examples/developer/script/Script.h"

#include <gtest/gtest.h>

namespace zelvora::developer {

namespace {

Step one(std::string const& line)
{
    auto const script = readScript(line);
    if (!script || script->size() != 1) {
        ADD_FAILURE() << line << ": " << (script ? "no step" : script.error().sentence);
        return {};
    }
    return script->front();
}

std::string complaint(std::string const& line)
{
    auto const script = readScript(line);
    return script ? "" : script.error().sentence;
}

using Words = std::vector<std::string>;

}

TEST(ScriptTest, EmptyLinesAndCommentsAreLeftOutAndLinesKeepTheirNumbers)
{
    auto const script = readScript("\xEF\xBB\xBF# a comment\n\n  tap #add  \r\n\t\nupload");
    ASSERT_TRUE(script);
    ASSERT_EQ(script->size(), 2U);
    EXPECT_EQ(script->front().verb, Verb::Tap);
    EXPECT_EQ(script->front().line, 3U);
    EXPECT_EQ(script->front().source, "tap #add");
    EXPECT_EQ(script->back().line, 5U);
}

TEST(ScriptTest, ASelectorAndAScriptReachToTheEndOfTheLine)
{
    EXPECT_EQ(one("tap .list > li:nth-child(2) button").words, Words { ".list > li:nth-child(2) button" });
    EXPECT_EQ(one("run cart.add('moon jar')  ; 1").words, Words { "cart.add('moon jar')  ; 1" });
    EXPECT_EQ(one("wait until window.done === true").words, Words { "window.done === true" });
}

TEST(ScriptTest, ATextIsWrittenAsInJson)
{
    auto const step = one(R"(type "말 \"\\ {}" into #search box)");
    EXPECT_EQ(step.verb, Verb::Type);
    EXPECT_EQ(step.words, (Words { "말 \"\\ {}", "#search box" }));
    EXPECT_EQ(one(R"(wait for text "장바구니")").verb, Verb::WaitForText);
}

TEST(ScriptTest, AnElementMayBeNamedLikeAWordOfAnotherForm)
{
    EXPECT_EQ(one("wait for text-box").verb, Verb::WaitForElement);
    EXPECT_EQ(complaint("wait for text 장바구니"), "the text has to be in double quotes; write \"wait for text TEXT\"");
}

TEST(ScriptTest, AMessageMayBeExpectedWithSomeOfItsMembers)
{
    auto const bare = one("expect message setItem");
    EXPECT_EQ(bare.words, Words { "setItem" });
    EXPECT_FALSE(bare.json);
    auto const full = one(R"(expect dropped setItem {"key": "cart"})");
    EXPECT_EQ(full.verb, Verb::ExpectDropped);
    EXPECT_EQ(full.json, Json::parse(R"({"key":"cart"})"));
    EXPECT_EQ(one("expect answer null").json, Json(nullptr));
}

TEST(ScriptTest, AKeyWithSpacesStandsInQuotes)
{
    auto const step = one(R"(expect stored "my cart" [1, 2])");
    EXPECT_EQ(step.words, Words { "my cart" });
    EXPECT_EQ(step.json, Json::parse("[1,2]"));
    EXPECT_EQ(one("expect nothing stored cart").verb, Verb::ExpectNotStored);
}

TEST(ScriptTest, ADurationHasAUnit)
{
    EXPECT_EQ(one("pass 7 d").number, 604'800);
    EXPECT_EQ(one("pass 1.5h").number, 5'400);
    EXPECT_EQ(one("patience 500 ms").number, 0.5);
    EXPECT_EQ(one("expect expiry cart 60 s").number, 60);
    EXPECT_FALSE(one("expect expiry cart never").number);
    EXPECT_EQ(
        complaint("pass 7"), "a duration is a number and ms, s, min, h or d, such as 10 s; write \"pass DURATION\"");
    EXPECT_NE(complaint("pass 7 weeks"), "");
}

TEST(ScriptTest, AnUploadIsExpectedWithAStatusOrAsAFailure)
{
    EXPECT_EQ(one("expect upload 200").number, 200);
    auto const failed = one(R"(expect upload failed {"eventId": "a"})");
    EXPECT_FALSE(failed.number);
    EXPECT_EQ(failed.json, Json::parse(R"({"eventId":"a"})"));
}

TEST(ScriptTest, ASwitchKnowsItsPlaces)
{
    EXPECT_EQ(one("switch network slow").words, (Words { "network", "slow" }));
    EXPECT_EQ(one("switch size 320x640").words, (Words { "size", "320x640" }));
    for (auto const* line : { "switch network fast", "switch size 5x5", "switch size 320", "switch size 320x640x1" })
        EXPECT_TRUE(complaint(line).contains("is no place of this switch")) << line;
    EXPECT_TRUE(complaint("switch networ slow")
            .contains("\"networ\" is none of service|network|language|look|size; write \"switch "))
        << complaint("switch networ slow");
}

TEST(ScriptTest, AnErrorNamesTheLineAndWhatToWrite)
{
    auto const script = readScript("open\n\ntpa #add\n");
    ASSERT_FALSE(script);
    EXPECT_EQ(script.error().line, 3U);
    EXPECT_TRUE(script.error().sentence.starts_with("there is no command \"tpa\"; there are open, wait, tap, type"))
        << script.error().sentence;
    EXPECT_EQ(complaint("tap"), "SELECTOR is missing; write \"tap SELECTOR\"");
    EXPECT_EQ(complaint("expect queue two"), "\"two\" is no number; write \"expect queue NUMBER\"");
    EXPECT_EQ(complaint("upload now"), "\"now\" is too much; write \"upload\"");
    EXPECT_EQ(complaint("expect answer {a}"), "this is not JSON: {a}; write \"expect answer JSON\"");
    EXPECT_EQ(
        complaint("type hello into #a"), "the text has to be in double quotes; write \"type TEXT into SELECTOR\"");
    EXPECT_EQ(complaint("wait"), "write \"wait for text TEXT\" or \"wait for SELECTOR\" or \"wait until JAVASCRIPT\"");
}

TEST(ScriptTest, EveryFormIsReadWithAnExampleOfItself)
{
    for (auto const form : scriptForms()) {
        std::string line(form);
        for (auto const& [name, example] : std::vector<std::pair<std::string, std::string>> { { "[PAGE]", "a.html" },
                 { "[JSON]", "{}" }, { "JSON", "{}" }, { "TEXT", "\"a\"" }, { "DURATION|never", "never" },
                 { "DURATION", "1 s" }, { "STATUS|failed", "failed" }, { "NUMBER", "1" },
                 { "service|network|language|look|size PLACE", "look dark" }, { "on|off", "on" },
                 { "shown|hidden", "shown" }, { "values|events|uploads|notices", "values" } }) {
            if (auto const place = line.find(name); place != std::string::npos)
                line.replace(place, name.size(), example);
        }
        EXPECT_TRUE(readScript(line)) << line << ": " << complaint(line);
    }
}

}
