#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"
#include "tests/ZelvoraIOS/support/RecordingPlatform.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <sstream>
#include <string_view>

namespace zelvora::tests {

namespace {

constexpr std::string_view keysPrefix = "var customKeys = ";

std::string scriptSource()
{
    return ZelvoraJavascriptInterface::scriptSource();
}

std::vector<std::string> lines(std::string const& script)
{
    std::istringstream stream(script);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The text between "var customKeys = " and the semicolon at the end of its line.
std::string customKeys(std::string const& script)
{
    auto const start = script.find(keysPrefix) + keysPrefix.size();
    auto const end = script.find(";\ncustomKeys.forEach", start);
    return script.substr(start, end - start);
}

// FNV-1a, 64 bits.
std::uint64_t hash(std::string_view text)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (char const c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3U;
    }
    return hash;
}

class BridgeScriptTest : public SDKTest {
protected:
    static void addActions(std::vector<std::string> const& names)
    {
        for (auto const& name : names)
            sdk().addCustomAction(name, [](auto const&) { });
    }

    // The names that the page's loop visits, parsed from the script.
    [[nodiscard]] std::multiset<std::string> namesInScript() const
    {
        auto const parsed = platform.jsonSerialization().jsonObject({ customKeys(scriptSource()) });
        EXPECT_TRUE(parsed) << customKeys(scriptSource());
        std::multiset<std::string> names;
        for (auto const& name : *parsed->array())
            names.insert(*name.text());
        return names;
    }
};

TEST_F(BridgeScriptTest, TheHandlersNameIsZelvora)
{
    EXPECT_STREQ(ZelvoraJavascriptInterface::handlerName, "zelvora");
}

TEST_F(BridgeScriptTest, WithoutCustomActionsTheScriptIsByteForByteTheOneThatPagesKnow)
{
    EXPECT_EQ(scriptSource().size(), 1484U);
    EXPECT_EQ(hash(scriptSource()), 0x485879C9E0BEF5FBU);
}

TEST_F(BridgeScriptTest, WithoutItsInsertionsTheScriptIs1426CharactersLong)
{
    addActions({ "open", "share" });
    auto script = scriptSource();
    script.erase(script.find(customKeys(script)), customKeys(script).size());

    constexpr std::string_view before = "window.webkit.messageHandlers.";
    std::size_t insertions = 0;
    for (auto at = script.find(before); at != std::string::npos; at = script.find(before, at + 1)) {
        ASSERT_EQ(script.substr(at + before.size(), 7), "zelvora");
        script.erase(at + before.size(), 7);
        ++insertions;
    }
    EXPECT_EQ(insertions, 8U);
    EXPECT_EQ(script.size(), 1426U);
    EXPECT_EQ(hash(script), 0x500FA9248FFA91CFU);
}

TEST_F(BridgeScriptTest, FiveLinesEndInOneBlank)
{
    std::vector<std::string> found;
    for (auto const& line : lines(scriptSource())) {
        if (line.ends_with(' '))
            found.push_back(line);
    }
    EXPECT_EQ(found,
        (std::vector<std::string> {
            "        window.webkit.messageHandlers.zelvora.postMessage({ ",
            "            action: 'setItem', ",
            "            key: key, ",
            "            value: value, ",
            "            expire: expireSec ",
        }));
}

TEST_F(BridgeScriptTest, LinesEndInALineFeedAndTheLastOneInNone)
{
    auto const script = scriptSource();
    EXPECT_EQ(script.find('\r'), std::string::npos);
    EXPECT_EQ(script.find('\t'), std::string::npos);
    EXPECT_TRUE(script.starts_with("window.ZelvoraSDKBridge = {\n"));
    EXPECT_TRUE(script.ends_with("\n    }\n});"));
}

struct BridgeFunction {
    char const* name;
    // From the function's line to the end of what it posts.
    char const* text;
};

void PrintTo(BridgeFunction const& function, std::ostream* stream)
{
    *stream << function.name;
}

class BridgeFunctionTest
    : public BridgeScriptTest
    , public ::testing::WithParamInterface<BridgeFunction> { };

TEST_P(BridgeFunctionTest, PostsItsMessage)
{
    auto const script = scriptSource();
    auto const at = script.find(GetParam().text);
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(script.find(GetParam().text, at + 1), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Functions, BridgeFunctionTest,
    ::testing::Values(BridgeFunction { "close",
                          "    close: function() {\n"
                          "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'close' });\n"
                          "    },\n" },
        BridgeFunction { "setItem",
            "    setItem: function(key, value, expireSec) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ \n"
            "            action: 'setItem', \n"
            "            key: key, \n"
            "            value: value, \n"
            "            expire: expireSec \n"
            "        });\n"
            "    },\n" },
        BridgeFunction { "getItem",
            "    getItem: function(key, callbackName) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'getItem', key: key, "
            "callback: callbackName });\n"
            "    },\n" },
        BridgeFunction { "removeItem",
            "    removeItem: function(key) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'removeItem', key: key });\n"
            "    },\n" },
        BridgeFunction { "saveEvent",
            "    saveEvent: function(data) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'saveEvent', data: data });\n"
            "    },\n" },
        BridgeFunction { "getEvents",
            "    getEvents: function(callbackName) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'getEvents', "
            "callback: callbackName });\n"
            "    },\n" },
        BridgeFunction { "setFooterVisible",
            "    setFooterVisible: function(visible) {\n"
            "        window.webkit.messageHandlers.zelvora.postMessage({ action: 'setFooterVisible', "
            "visible: visible });\n"
            "    }\n"
            "};\n" },
        BridgeFunction { "custom actions",
            "customKeys.forEach(function(key) {\n"
            "    if (key) {\n"
            "        window.ZelvoraSDKBridge[key] = function(data) {\n"
            "            var arg = (typeof data === 'object') ? JSON.stringify(data) : data;\n"
            "            window.webkit.messageHandlers.zelvora.postMessage({ action: 'invokeCustomAction', "
            "name: key, data: arg || null });\n"
            "        };\n"
            "    }\n"
            "});" }));

TEST_F(BridgeScriptTest, ThereAreSevenFunctionsBeforeTheCustomOnes)
{
    auto const script = scriptSource();
    auto const object = script.substr(0, script.find("\n};\n"));
    std::size_t functions = 0;
    for (auto at = object.find(": function("); at != std::string::npos; at = object.find(": function(", at + 1))
        ++functions;
    EXPECT_EQ(functions, 7U);
}

TEST_F(BridgeScriptTest, WithoutCustomActionsTheListIsEmpty)
{
    EXPECT_NE(scriptSource().find("\n\nvar customKeys = [];\ncustomKeys.forEach"), std::string::npos);
}

TEST_F(BridgeScriptTest, TheListHasACustomActionsNameAsCompactJSON)
{
    addActions({ "open" });
    EXPECT_NE(scriptSource().find("\nvar customKeys = [\"open\"];\n"), std::string::npos);
}

TEST_F(BridgeScriptTest, TheListHasEveryNameOnce)
{
    addActions({ "open", "share", "open", "Open" });
    EXPECT_EQ(namesInScript(), (std::multiset<std::string> { "Open", "open", "share" }));
    EXPECT_EQ(customKeys(scriptSource()).size(), std::string_view(R"(["Open","open","share"])").size());
}

TEST_F(BridgeScriptTest, TheListIsTheOnlyThingThatCustomActionsChange)
{
    auto const without = scriptSource();
    addActions({ "open", "close" });
    auto with = scriptSource();
    auto const at = with.find(customKeys(with));
    with.replace(at, customKeys(with).size(), "[]");
    EXPECT_EQ(with, without);
}

TEST_F(BridgeScriptTest, ACustomActionMayHaveABuiltInFunctionsName)
{
    addActions({ "close" });
    EXPECT_EQ(customKeys(scriptSource()), R"(["close"])");
    // The loop that replaces the function comes after the object that has it.
    auto const script = scriptSource();
    EXPECT_LT(script.find("close: function()"), script.find("customKeys.forEach"));
}

TEST_F(BridgeScriptTest, AnEmptyNameIsInTheListAndTheLoopPassesItOver)
{
    addActions({ "" });
    EXPECT_EQ(customKeys(scriptSource()), R"([""])");
    EXPECT_NE(scriptSource().find("    if (key) {\n"), std::string::npos);
}

TEST_F(BridgeScriptTest, NamesAreEscapedAsJSONStrings)
{
    std::multiset<std::string> const names { "a\"b", "a\\b", "a\nb", std::string("a\0b", 3), "it's", "a/b",
        "\xEC\xA3\xBC\xEB\xAC\xB8", "\xF0\x9F\x9B\x92", std::string("a\xE2\x80\xA8") + "b", "];alert(1);[" };
    for (auto const& name : names)
        addActions({ name });
    EXPECT_EQ(namesInScript(), names);
    EXPECT_EQ(customKeys(scriptSource()).find('\n'), std::string::npos);
    EXPECT_EQ(lines(scriptSource()).size(), 38U);
}

TEST_F(BridgeScriptTest, AThousandNamesAllFit)
{
    std::multiset<std::string> names;
    for (auto i = 0; i < 1000; ++i)
        names.insert("action" + std::to_string(i));
    for (auto const& name : names)
        addActions({ name });
    EXPECT_EQ(namesInScript(), names);
}

TEST_F(BridgeScriptTest, TheScriptIsBuiltAgainAtEveryRead)
{
    auto const before = scriptSource();
    addActions({ "open" });
    auto const after = scriptSource();
    EXPECT_NE(before, after);
    EXPECT_EQ(scriptSource(), after);
}

TEST_F(BridgeScriptTest, ANameThatIsNotUTF8LeavesTheListEmptyAndLogsNothing)
{
    addActions({ "open", "\xFF" });
    EXPECT_EQ(customKeys(scriptSource()), "[]");
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(BridgeScriptTest, BuildingTheScriptLogsNothingAndCallsNoAction)
{
    auto calls = 0;
    sdk().addCustomAction("open", [&calls](auto const&) { ++calls; });
    (void)scriptSource();
    EXPECT_TRUE(logMessages().empty());
    EXPECT_EQ(calls, 0);
}

class BridgeScriptInFramesTest : public ContainerTest { };

TEST_F(BridgeScriptInFramesTest, TheScriptRunsAtDocumentStartInEveryFrame)
{
    sdk().addCustomAction("open", [](auto const&) { });
    ZelvoraWebView const view({}, entryUrl, false);
    EXPECT_EQ(engine(view).userContentController().userScripts(),
        (std::vector<platform::WKUserScript> { { .source = scriptSource(),
            .injectionTime = platform::WKUserScriptInjectionTime::AtDocumentStart,
            .forMainFrameOnly = false } }));
}

class BridgeScriptWriterTest : public ::testing::Test {
protected:
    BridgeScriptWriterTest()
    {
        ZelvoraSDK::shared().addCustomAction("open", [](auto const&) { });
    }

    RecordingPlatform& platform = install<RecordingPlatform>();
};

TEST_F(BridgeScriptWriterTest, AWriterThatFailsLeavesTheListEmptyAndLogsNothing)
{
    EXPECT_EQ(customKeys(scriptSource()), R"(["open"])");
    platform.jsonSerialization().setFailing(true);
    EXPECT_EQ(customKeys(scriptSource()), "[]");
    EXPECT_TRUE(platform.memory.log().lines().empty());
}

TEST_F(BridgeScriptWriterTest, OutputThatIsNotUTF8LeavesTheListEmpty)
{
    platform.jsonSerialization().setOutput("[\"\xFF\"]");
    EXPECT_EQ(customKeys(scriptSource()), "[]");
}

TEST(BridgeScriptWithoutPlatformDeathTest, ReadingTheScriptBeforeAPlatformIsInstalledStopsTheProcess)
{
    EXPECT_DEATH((void)ZelvoraJavascriptInterface::scriptSource(),
        "the SDK was used before a platform was installed: call Platform::install first");
}

}

}
