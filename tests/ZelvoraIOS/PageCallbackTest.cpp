#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"
#include "tests/ZelvoraIOS/support/RecordingPlatform.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

class PageCallbackTest : public ContainerTest {
protected:
    // Puts a value under the page's key "k", even one that the store would refuse.
    void keep(Value value) { platform.standardUserDefaults().setContents({ { fullKey("k"), std::move(value) } }); }

    void get(std::string const& callback = "f", std::string const& key = "k")
    {
        ZelvoraJavascriptInterface::handle(
            { "zelvora", Dictionary { { "action", "getItem" }, { "key", key }, { "callback", callback } } }, webView,
            nullptr);
    }

    // The value in the answer to the page, after checking both steps of the answer.
    [[nodiscard]] std::string encoded()
    {
        platform.log().clear();
        get();
        platform.runUntilIdle();
        auto const& scripts = webView->evaluated();
        if (scripts.size() < 2) {
            ADD_FAILURE() << "no answer";
            return {};
        }
        auto const& call = scripts.back();
        auto const text = call.substr(2, call.size() - 4);
        EXPECT_EQ(call, "f(" + text + ");");
        EXPECT_EQ(scripts[scripts.size() - 2], "javascript:alert('" + text + "');");
        EXPECT_EQ(logMessages().back(), (LogMessage { OSLogType::Debug, "Send callback data: " + text }));
        return text;
    }
    [[nodiscard]] std::string encoded(Value value)
    {
        keep(std::move(value));
        return encoded();
    }

    std::shared_ptr<memory::WebView> webView =
        std::dynamic_pointer_cast<memory::WebView>(platform.makeWebView({}, { platform.makeUserContentController() }));
};

// Encoding, case by case.

TEST_F(PageCallbackTest, AnAbsentValueIsNull)
{
    EXPECT_EQ(encoded(), "null");
}

TEST_F(PageCallbackTest, ContainersThatJSONCanRepresentAreCompactJSON)
{
    EXPECT_EQ(encoded(Array()), "[]");
    EXPECT_EQ(encoded(Dictionary()), "{}");
    EXPECT_EQ(encoded(Array { 1, "a", true, Value(), Array { 2.5 } }), R"([1,"a",true,null,[2.5]])");
    EXPECT_EQ(encoded(Dictionary { { "a", Array { false, 0 } } }), R"({"a":[false,0]})");
}

TEST_F(PageCallbackTest, ATextIsAJSONStringLiteral)
{
    EXPECT_EQ(encoded("v"), R"("v")");
    EXPECT_EQ(encoded(""), R"("")");
    EXPECT_EQ(encoded("null"), R"("null")");
    EXPECT_EQ(encoded("1"), R"("1")");
    EXPECT_EQ(encoded("[]"), R"("[]")");
    EXPECT_EQ(encoded("\xEC\xA3\xBC\xEB\xAC\xB8 \xF0\x9F\x9B\x92"), "\"\xEC\xA3\xBC\xEB\xAC\xB8 \xF0\x9F\x9B\x92\"");
}

TEST_F(PageCallbackTest, CharactersThatALiteralCannotHaveAreEscaped)
{
    EXPECT_EQ(encoded("a\"b"), R"("a\"b")");
    EXPECT_EQ(encoded("a\\b"), R"("a\\b")");
    EXPECT_EQ(encoded("a\nb\rc\td"), R"("a\nb\rc\td")");
    EXPECT_EQ(encoded(std::string("a\0b", 3)), R"("a\u0000b")");
    EXPECT_EQ(encoded("\x01\x1F"), R"("\u0001\u001f")");
}

TEST_F(PageCallbackTest, EveryCharacterComesBackThroughTheLiteral)
{
    std::string all;
    for (auto c = 0; c < 0x80; ++c)
        all += static_cast<char>(c);
    all += "\xE2\x80\xA8\xE2\x80\xA9\xEF\xBB\xBF\xF4\x8F\xBF\xBF";
    auto const read = platform.jsonSerialization().jsonObject({ "[" + encoded(all) + "]" });
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, Value(Array { all }));
    auto const literal = encoded(all);
    EXPECT_EQ(literal.find('\n'), std::string::npos);
    EXPECT_EQ(literal.find('\r'), std::string::npos);
    EXPECT_EQ(literal.find('\0'), std::string::npos);
}

TEST_F(PageCallbackTest, ASingleQuoteIsPlainInTheCallAndSpoilsOnlyTheAlert)
{
    keep("it's");
    get();
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(), (std::vector<std::string> { "javascript:alert('\"it's\"');", "f(\"it's\");" }));
}

TEST_F(PageCallbackTest, ATextThatIsNotUTF8IsPutBetweenSingleQuotesAsItIs)
{
    EXPECT_EQ(encoded("\xFF"), "'\xFF'");
    EXPECT_EQ(encoded("it's \"\xC3\" \\"), "'it's \"\xC3\" \\'");
    // A surrogate, an overlong form and a truncated character.
    EXPECT_EQ(encoded("\xED\xA0\x80"), "'\xED\xA0\x80'");
    EXPECT_EQ(encoded("\xC0\xAF"), "'\xC0\xAF'");
    EXPECT_EQ(encoded("\xEC\xA3"), "'\xEC\xA3'");
    EXPECT_TRUE(logMessages(OSLogType::Error).empty());
}

TEST_F(PageCallbackTest, ABooleanIsTrueOrFalseAndANumberNever)
{
    EXPECT_EQ(encoded(true), "true");
    EXPECT_EQ(encoded(false), "false");
    EXPECT_EQ(encoded(1), "1");
    EXPECT_EQ(encoded(0), "0");
}

TEST_F(PageCallbackTest, ANumberIsPlainDecimalText)
{
    EXPECT_EQ(encoded(42), "42");
    EXPECT_EQ(encoded(-7), "-7");
    EXPECT_EQ(encoded(2.5), "2.5");
    EXPECT_EQ(encoded(1234567890123), "1234567890123");
    EXPECT_EQ(encoded(1'700'000'000'000'000), "1700000000000000");
    EXPECT_EQ(encoded(9'007'199'254'740'993), "9007199254740993");
}

TEST_F(PageCallbackTest, AnyNumberReadsBackAsItself)
{
    for (double const number : { 0.1, 1.0 / 3, 1e15, 1e21, 1e300, 5e-324, 9007199254740993.0, -0.0, 123456.789,
             std::numeric_limits<double>::max(), std::numeric_limits<double>::min() }) {
        auto const text = encoded(number);
        auto const read = platform.jsonSerialization().jsonObject({ "[" + text + "]" });
        ASSERT_TRUE(read) << text;
        EXPECT_EQ(*read, Value(Array { number })) << text;
    }
}

TEST_F(PageCallbackTest, ANumberThatIsNotFiniteIsNull)
{
    EXPECT_EQ(encoded(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(encoded(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(encoded(-std::numeric_limits<double>::infinity()), "null");
}

TEST_F(PageCallbackTest, AnythingElseIsNull)
{
    EXPECT_EQ(encoded(Value()), "null");
    EXPECT_EQ(encoded(platform::Date { 1 }), "null");
    EXPECT_EQ(encoded(platform::Data { "bytes" }), "null");
}

TEST_F(PageCallbackTest, AContainerWithAValueThatJSONCannotRepresentIsNullAsAWhole)
{
    EXPECT_EQ(encoded(Array { 1, platform::Date { 1 } }), "null");
    EXPECT_EQ(encoded(Array { platform::Data { "bytes" } }), "null");
    EXPECT_EQ(encoded(Dictionary { { "a", Array { std::numeric_limits<double>::quiet_NaN() } } }), "null");
    EXPECT_EQ(encoded(Array { std::numeric_limits<double>::infinity() }), "null");
}

TEST_F(PageCallbackTest, AContainerWithTextThatIsNotUTF8IsNull)
{
    EXPECT_EQ(encoded(Array { "\xFF" }), "null");
    EXPECT_EQ(encoded(Dictionary { { "a", "\xFF" } }), "null");
    EXPECT_EQ(encoded(Dictionary { { "\xFF", 1 } }), "null");
}

TEST_F(PageCallbackTest, AContainerThatIsTooDeepForJSONIsNull)
{
    Value deep { Array() };
    for (auto i = 0; i < 100'000; ++i)
        deep = Array { deep };
    EXPECT_EQ(encoded(deep), "null");
}

// The two steps.

TEST_F(PageCallbackTest, TheAlertComesBeforeTheCallback)
{
    keep(7);
    get();
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(), (std::vector<std::string> { "javascript:alert('7');", "f(7);" }));
}

TEST_F(PageCallbackTest, BothStepsAreOneTaskOfTheMainQueueThatRunsLater)
{
    keep(7);
    get();
    EXPECT_TRUE(webView->evaluated().empty());
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);
    platform.mainQueue().runOne();
    EXPECT_EQ(webView->evaluated().size(), 2U);
}

TEST_F(PageCallbackTest, TheLineIsWrittenAtOnceAndHasTheValueAlone)
{
    keep(Array { 1 });
    get("callback.name");
    EXPECT_EQ(logMessages().back(), (LogMessage { OSLogType::Debug, "Send callback data: [1]" }));
    auto const lines = logMessages().size();
    platform.runUntilIdle();
    EXPECT_EQ(logMessages().size(), lines);
}

TEST_F(PageCallbackTest, TheValueIsReadAtTheRequestAndNotWhenTheQueueRuns)
{
    keep(1);
    get();
    keep(2);
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), "f(1);");
}

class CallbackTextTest
    : public PageCallbackTest
    , public ::testing::WithParamInterface<std::string> { };

TEST_P(CallbackTextTest, IsInsertedUnchanged)
{
    keep(1);
    get(GetParam());
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(), (std::vector<std::string> { "javascript:alert('1');", GetParam() + "(1);" }));
}

INSTANTIATE_TEST_SUITE_P(Texts, CallbackTextTest,
    ::testing::Values("f", "window.shop.answered", "(function(v) { show('a', v); })", "", "a b", "alert('x');g",
        "\xEB\x8B\xB5", "\xFF", "a\nb"));

TEST_F(PageCallbackTest, AHugeCallbackTextIsInsertedWhole)
{
    std::string const huge(1'000'000, 'x');
    get(huge);
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), huge + "(null);");
}

TEST_F(PageCallbackTest, AnswersReachThePageInTheOrderOfTheRequests)
{
    keep("v");
    get("first");
    get("second");
    ZelvoraJavascriptInterface::handle(
        { "zelvora", Dictionary { { "action", "getEvents" }, { "callback", "third" } } }, webView, nullptr);
    EXPECT_EQ(platform.mainQueue().pendingCount(), 3U);
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(),
        (std::vector<std::string> { "javascript:alert('\"v\"');", "first(\"v\");", "javascript:alert('\"v\"');",
            "second(\"v\");", "javascript:alert('[]');", "third([]);" }));
}

TEST_F(PageCallbackTest, WithoutAWebViewTheStoreIsReadAndTheLineWrittenAndNothingEvaluated)
{
    keep("v");
    auto const other = std::exchange(webView, nullptr);
    get();
    EXPECT_EQ(logMessages(OSLogType::Debug).at(1), "get(forKey: k, value: \"v\")");
    EXPECT_EQ(logMessages().back().text, "Send callback data: \"v\"");
    platform.runUntilIdle();
    EXPECT_TRUE(other->evaluated().empty());
}

TEST_F(PageCallbackTest, TheQueuedAnswerKeepsTheWebViewAliveUntilItHasRun)
{
    std::weak_ptr<memory::WebView> const weak = webView;
    get();
    webView.reset();
    EXPECT_FALSE(weak.expired());
    platform.runUntilIdle();
    EXPECT_TRUE(weak.expired());
}

class PageCallbackWriterTest : public ::testing::Test {
protected:
    [[nodiscard]] std::string answerFor(Value const& value)
    {
        ZelvoraStorage::set(value, "k");
        platform.memory.screen().calls().clear();
        ZelvoraJavascriptInterface::handle(
            { "zelvora", Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } } }, webView,
            nullptr);
        platform.memory.runUntilIdle();
        return platform.calls().back();
    }

    RecordingPlatform& platform = install<RecordingPlatform>();
    std::shared_ptr<platform::WKWebView> webView = platform.makeWebView({}, { platform.makeUserContentController() });
};

TEST_F(PageCallbackWriterTest, IfTheWriterFailsAContainerIsNullAndATextIsPutBetweenSingleQuotes)
{
    platform.jsonSerialization().setFailing(true);
    EXPECT_EQ(answerFor(Array { 1 }), "evaluateJavaScript f(null);");
    EXPECT_EQ(answerFor(Dictionary { { "a", 1 } }), "evaluateJavaScript f(null);");
    EXPECT_EQ(answerFor("it's"), "evaluateJavaScript f('it's');");
    EXPECT_EQ(answerFor(true), "evaluateJavaScript f(true);");
    EXPECT_EQ(answerFor(2), "evaluateJavaScript f(2);");
    for (auto const& line : platform.memory.log().lines())
        EXPECT_EQ(line.type, OSLogType::Debug);
}

TEST_F(PageCallbackWriterTest, IfTheWritersBytesAreNotUTF8TheResultIsTheSame)
{
    platform.jsonSerialization().setOutput("[\"\xFF\"]");
    EXPECT_EQ(answerFor(Array { 1 }), "evaluateJavaScript f(null);");
    EXPECT_EQ(answerFor("v"), "evaluateJavaScript f('v');");
}

TEST_F(PageCallbackWriterTest, TheWriterIsNotGivenWhatItDeclaredInvalid)
{
    EXPECT_EQ(answerFor(Array { platform::Date { 1 } }), "evaluateJavaScript f(null);");
    EXPECT_EQ(answerFor(std::numeric_limits<double>::infinity()), "evaluateJavaScript f(null);");
    EXPECT_EQ(platform.jsonSerialization().invalidCount(), 0U);
}

TEST_F(PageCallbackWriterTest, OfTheWritersOutputForATextExactlyTheBracketsAreDropped)
{
    platform.jsonSerialization().setOutput("[\"as the system writes it\"]");
    EXPECT_EQ(answerFor("v"), "evaluateJavaScript f(\"as the system writes it\");");
}

}

}
