#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "tests/ZelvoraAdapters/gtk/WebKit/PageTest.h"

#include <cmath>

namespace zelvora::tests {

namespace {

using platform::Array;
using platform::Dictionary;
using platform::Null;
using platform::Value;

class ScriptValueTest : public PageTest {
protected:
    void SetUp() override { loadAndWait("values"); }
};

}

TEST_F(ScriptValueTest, KeepsWhatACTextCannotHold)
{
    post("'a\\0b'");
    EXPECT_EQ(*next().text(), std::string("a\0b", 3));
    post("{ 'k\\0': ['x\\ud800', '\\udc00y', '\\ud800\\ud800', '\\ud83d\\ude00'] }");
    EXPECT_EQ(next(),
        (Value(Dictionary { { std::string("k\0", 2),
            Array { "x\xef\xbf\xbd", "\xef\xbf\xbdy", "\xef\xbf\xbd\xef\xbf\xbd", "\xf0\x9f\x98\x80" } } })));
    post("'line\\u2028\\u0007\\b\\f\\r\\t/'");
    EXPECT_EQ(*next().text(), "line\xe2\x80\xa8\a\b\f\r\t/");
}

TEST_F(ScriptValueTest, KeepsNumbersThatJSONDoesNotHave)
{
    post("[NaN, -Infinity, -0, 5e-324, 0.1]");
    auto const body = next();
    auto const& numbers = *body.array();
    EXPECT_TRUE(std::isnan(*numbers.at(0).number()));
    EXPECT_EQ(numbers.at(1).number(), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::signbit(*numbers.at(2).number()));
    EXPECT_EQ(numbers.at(3).number(), 5e-324);
    EXPECT_EQ(numbers.at(4).number(), 0.1);
}

TEST_F(ScriptValueTest, ReadsWhatPagesMayPostBesidePlainValues)
{
    post("[new Map([[1, 2]]), /x/, new Boolean(true), [ , 1]]");
    auto const body = next();
    ASSERT_TRUE(body.array());
    EXPECT_EQ(body.array()->at(3), (Value(Array { Null {}, 1 })));
    post("undefined");
    EXPECT_EQ(next(), Value(Null {}));
    // A function cannot be posted: the page gets an exception and the next message arrives.
    post("() => 1");
    post("'after'");
    EXPECT_EQ(next(), Value("after"));
}

TEST_F(ScriptValueTest, ReadsDeepAndLargeValues)
{
    view().evaluateJavaScript("let deep = 1; for (let i = 0; i < 2000; ++i) deep = [deep];");
    post("deep");
    EXPECT_EQ(next().nesting(), 2000U);
    view().evaluateJavaScript("let deeper = 1; for (let i = 0; i < 100000; ++i) deeper = { a: deeper };");
    // Either too deep for the engine or read: in both cases the page continues.
    post("deeper");
    post("'x'.repeat(5000000)");
    auto body = next();
    if (!body.text())
        body = next();
    ASSERT_TRUE(body.text());
    EXPECT_EQ(body.text()->size(), 5'000'000U);
    post("Array.from({ length: 10000 }, (_, index) => ({ index }))");
    auto const many = next();
    ASSERT_TRUE(many.array());
    EXPECT_EQ(many.array()->size(), 10'000U);
}

TEST_F(ScriptValueTest, ReadsTextsOfEveryLengthInCharactersOfEveryLength)
{
    for (std::string const character : { "x", "\xc3\xa9", "\xeb\x8b\xac", "\xf0\x9f\x98\x80" }) {
        for (std::string const shift : { "", "y", "yy", "yyy" }) {
            std::vector<Value> expected;
            std::string text = shift;
            for (int length = 0; length < 200; ++length, text += character)
                expected.emplace_back(text);
            post("Array.from({ length: 200 }, (_, length) => '" + shift + "' + '" + character + "'.repeat(length))");
            EXPECT_EQ(next(), Value(Array(expected))) << character << " after " << shift;
        }
    }
}

TEST_F(ScriptValueTest, ReadsArraysOfEveryLength)
{
    std::vector<Value> expected;
    for (int length = 0; length <= 150; ++length) {
        post("Array.from({ length: " + std::to_string(length) + " }, (_, index) => index / 2)");
        EXPECT_EQ(next(), Value(Array(expected))) << length;
        expected.emplace_back(length / 2.0);
    }
}

TEST_F(ScriptValueTest, ReadsValuesOfSeveralContextsAndKeepsNone)
{
    auto const valueIn = [](JSCContext* context) {
        auto const posted = gtk::adopt(jsc_context_evaluate(context, "[1, { a: 'b' }]", -1));
        return gtk::toValue(posted.get());
    };
    Value const expected = Array { 1, Dictionary { { "a", "b" } } };
    gpointer first = nullptr;
    {
        auto const context = gtk::adopt(jsc_context_new());
        g_object_add_weak_pointer(G_OBJECT(context.get()), &first);
        auto const other = gtk::adopt(jsc_context_new());
        for (auto* each : { context.get(), other.get(), context.get() })
            EXPECT_EQ(valueIn(each), expected);
    }
    EXPECT_FALSE(first);
    auto const later = gtk::adopt(jsc_context_new());
    EXPECT_EQ(valueIn(later.get()), expected);
}

TEST_F(ScriptValueTest, ReadsObjectsThatContainOneAnotherOrThemselves)
{
    view().evaluateJavaScript("const cycle = { name: 'c', list: [] }; cycle.me = cycle; cycle.list.push(cycle, 1);");
    post("cycle");
    EXPECT_EQ(next(), (Value(Dictionary { { "name", "c" }, { "me", Null {} }, { "list", Array { Null {}, 1 } } })));
    view().evaluateJavaScript("const shared = [7];");
    post("[shared, { shared }, shared]");
    EXPECT_EQ(next(), (Value(Array { Array { 7 }, Dictionary { { "shared", Array { 7 } } }, Array { 7 } })));
}

TEST_F(ScriptValueTest, DropsWhatIsTooLargeWithOneLineEach)
{
    std::vector<std::string> lines;
    auto const record = +[](char const*, GLogLevelFlags, char const* line, gpointer recorded) {
        static_cast<std::vector<std::string>*>(recorded)->emplace_back(line);
    };
    auto const handler = g_log_set_handler("Zelvora", G_LOG_LEVEL_WARNING, record, &lines);
    // A billion values in thirty objects.
    view().evaluateJavaScript("let doubled = [1]; for (let i = 0; i < 30; ++i) doubled = [doubled, doubled];");
    std::vector<std::string> const tooLarge { "new Array(100000)", "{ data: new Array(300000) }", "doubled",
        "new Uint8Array(100000)", "Array.from({ length: 50000 }, () => [0])" };
    for (std::size_t index = 0; index < tooLarge.size(); ++index) {
        post(tooLarge[index]);
        EXPECT_TRUE(m_harness.runUntil([&] { return lines.size() > index; })) << tooLarge[index];
    }
    post("new Array(99999)");
    auto const most = next();
    ASSERT_TRUE(most.array());
    EXPECT_EQ(most.array()->size(), 99'999U);
    g_log_remove_handler("Zelvora", handler);
    EXPECT_EQ(lines,
        (std::vector<std::string>(
            tooLarge.size(), "A message to zelvora was dropped: it contains more than 100000 values")));
}

TEST_F(ScriptValueTest, PagesCannotChangeHowValuesAreRead)
{
    view().evaluateJavaScript("Object.keys = Array.isArray = JSON.stringify = () => 'forged';"
                              "Object.prototype.toString = () => '[object Date]';");
    post("{ toString: 'x', toJSON: 'y', __proto__: { inherited: 1 }, length: 3, constructor: null }");
    EXPECT_EQ(next(),
        (Value(Dictionary { { "toString", "x" }, { "toJSON", "y" }, { "length", 3 }, { "constructor", Null {} } })));
    post("[Object.defineProperty({ a: 1 }, '__proto__', { value: new Date(5), enumerable: true }), new Date(1000)]");
    auto const body = next();
    ASSERT_TRUE(body.array());
    EXPECT_EQ(body.array()->at(0), (Value(Dictionary { { "a", 1 } })));
    EXPECT_EQ(body.array()->at(1), Value(platform::Date { 1 }));
}

}
