#include "examples/developer/script/ScriptRunner.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zelvora::developer {

namespace {

/// An app whose page does what the test has prepared. Time passes only while it is waited for.
class AppDouble final : public ScriptedApp {
public:
    Records told;
    std::map<std::string, StoredValue> stored;
    Json events = Json::array();
    bool open_ = true;
    bool footer = true;
    Switches places;
    /// What the page says is true.
    std::vector<std::string> truths;
    std::vector<std::string> calls;
    std::string pageError;
    /// What happens when somebody has waited.
    std::function<void()> later;

    // ScriptedApp
    bool waitUntil(std::function<bool()> const& condition, double seconds) override
    {
        if (condition())
            return true;
        waited = seconds;
        if (later)
            later();
        return condition();
    }
    bool waitUntilTrue(std::string const& expression, double seconds) override
    {
        calls.push_back("true? " + expression);
        waited = seconds;
        return std::ranges::any_of(truths, [&expression](auto const& truth) { return expression.contains(truth); });
    }
    Result run(std::string const& script) override
    {
        calls.push_back("run " + script);
        if (!pageError.empty())
            return std::unexpected(pageError);
        return {};
    }
    Result open(std::optional<std::string> const& page, double) override
    {
        calls.push_back("open " + page.value_or("-"));
        open_ = true;
        return {};
    }
    Result reload(double) override
    {
        calls.emplace_back("reload");
        return {};
    }
    Result swipeBack() override
    {
        calls.emplace_back("swipe");
        return {};
    }
    void upload() override { calls.emplace_back("upload"); }
    void killPage() override { calls.emplace_back("kill"); }
    void setFooterVisible(bool visible) override { footer = visible; }
    Switches const& switches() const override { return places; }
    void setSwitches(Switches const& switches) override { places = switches; }
    void pass(double seconds) override { calls.push_back("pass " + std::to_string(static_cast<int>(seconds))); }
    void show(std::string const& part) override { calls.push_back("show " + part); }
    Result takePicture(std::string const& name) override
    {
        calls.push_back("picture " + name);
        return {};
    }
    Records const& records() const override { return told; }
    std::optional<StoredValue> storedValue(std::string const& key) const override
    {
        auto const found = stored.find(key);
        return found == stored.end() ? std::nullopt : std::optional(found->second);
    }
    Json queuedEvents() const override { return events; }
    bool isOpen() const override { return open_; }
    bool isFooterVisible() const override { return footer; }

    double waited = 0;
};

class ScriptRunnerTest : public testing::Test {
protected:
    /// Runs the lines with a runner of their own; the sentence of the line that failed, if one did.
    std::string run(std::string const& lines)
    {
        ScriptRunner runner(app);
        return runBy(runner, lines);
    }
    static std::string runBy(ScriptRunner& runner, std::string const& lines)
    {
        std::string failure;
        auto const script = readScript(lines);
        EXPECT_TRUE(script) << script.error().sentence;
        auto const held = runner.run(*script, [&failure](Step const& step, auto const& sentence) {
            if (sentence)
                failure = std::to_string(step.line) + ": " + *sentence;
        });
        EXPECT_EQ(held, failure.empty());
        return failure;
    }

    void tell(char const* action, Json body, Verdict verdict = Verdict::Done, std::optional<Json> answer = {})
    {
        body["action"] = action;
        app.told.messages.push_back({ .time = {},
            .action = action,
            .body = std::move(body),
            .outcome = { .verdict = verdict, .explanation = { "까닭", "reason" } },
            .answer = std::move(answer) });
    }

    AppDouble app;
};

}

TEST_F(ScriptRunnerTest, AScriptStopsAtTheFirstLineThatFails)
{
    EXPECT_EQ(run("upload\nexpect queue 1\nreload"), "2: after 10 s: the queue has 0 events");
    EXPECT_EQ(app.calls, (std::vector<std::string> { "upload", "run " }));
}

TEST_F(ScriptRunnerTest, AnElementIsUsedWhenItIsThere)
{
    app.truths = { "#add" };
    EXPECT_EQ(run("tap #add"), "");
    ASSERT_EQ(app.calls.size(), 2U);
    EXPECT_TRUE(app.calls.back().contains(R"(document.querySelector("#add"))")) << app.calls.back();
    EXPECT_EQ(run("patience 2 s\ntap #gone"), "2: the page shows no such element after 2 s");
    EXPECT_EQ(app.waited, 2);
}

TEST_F(ScriptRunnerTest, AnErrorOfThePageIsTold)
{
    app.pageError = "ReferenceError: no";
    EXPECT_EQ(run("run no()"), "1: ReferenceError: no");
}

TEST_F(ScriptRunnerTest, AClosedScreenHasNoPageToUse)
{
    app.open_ = false;
    EXPECT_EQ(run("tap #add"), "1: the screen is closed; open it with \"open\"");
    EXPECT_EQ(run("expect closed\nopen cart.html"), "");
    EXPECT_EQ(app.calls, std::vector<std::string> { "open cart.html" });
    EXPECT_EQ(run("expect closed"), "1: after 10 s: the screen is open");
}

TEST_F(ScriptRunnerTest, EachLineTakesAMessageOfItsOwn)
{
    tell("setItem", { { "key", "a" } });
    tell("saveEvent", Json::object());
    EXPECT_EQ(run("expect message setItem"), "");
    EXPECT_EQ(run("expect message setItem {\"key\":\"a\"}\nexpect message saveEvent"), "");
    EXPECT_EQ(run("expect message setItem\nexpect message setItem"),
        "2: after 10 s: the messages so far: setItem {\"key\":\"a\"} (reason); saveEvent (reason)");
    EXPECT_NE(run("expect message saveEvent\nexpect message setItem"), "");
}

TEST_F(ScriptRunnerTest, AMessageIsWaitedFor)
{
    app.later = [this] { tell("close", Json::object()); };
    EXPECT_EQ(run("expect message close"), "");
}

TEST_F(ScriptRunnerTest, OnlyADroppedMessageIsExpectedAsDropped)
{
    tell("setItem", { { "key", "a" } });
    EXPECT_NE(run("expect dropped setItem"), "");
    EXPECT_EQ(run("expect nothing dropped"), "");
    tell("setItem", { { "key", 7 } }, Verdict::Dropped);
    EXPECT_EQ(run("expect dropped setItem {\"key\":7}"), "");
    EXPECT_EQ(run("expect nothing dropped"), "1: setItem {\"key\":7} (dropped: reason)");
    EXPECT_EQ(run("expect message setItem {\"key\":7}"), "");
}

TEST_F(ScriptRunnerTest, AnAnswerThatNobodyReceivedCountsAsDropped)
{
    tell("getItem", { { "key", "a" } }, Verdict::Answered, Json(nullptr));
    EXPECT_EQ(run("expect nothing dropped"), "");
    app.told.messages.back().isAnswerLost = true;
    app.told.messages.back().outcome.warning = Text { "없음", "no function f" };
    EXPECT_EQ(run("expect nothing dropped"), "1: getItem {\"key\":\"a\"} (no function f)");
    EXPECT_NE(run("expect dropped getItem"), "") << "the message itself was answered";
}

TEST_F(ScriptRunnerTest, AnAnswerIsComparedWithWhatThePageReceives)
{
    tell("getItem", { { "key", "a" } }, Verdict::Answered, Json::parse(R"([{"id":"moon-jar","count":1}])"));
    tell("getItem", { { "key", "b" } }, Verdict::Answered, Json(nullptr));
    EXPECT_EQ(run("expect answer [{\"id\":\"moon-jar\"}]\nexpect answer null"), "");
    EXPECT_NE(run("expect answer [{\"id\":\"lamp\"}]"), "");
    EXPECT_NE(run("expect answer []"), "") << "a list has to be whole";
}

TEST_F(ScriptRunnerTest, AStoredValueIsComparedWithItsExpiry)
{
    app.stored["cart"] = { .key = "cart", .value = 7, .expiry = 60, .secondsLeft = 10 };
    EXPECT_EQ(run("expect stored cart\nexpect stored cart 7\nexpect expiry cart 1 min"), "");
    EXPECT_EQ(run("expect stored cart 8"), "1: after 10 s: the value is 7");
    EXPECT_EQ(run("expect expiry cart never"), "1: after 10 s: the value is stored for 60 s");
    EXPECT_EQ(run("expect stored none"), "1: after 10 s: there is no such value");
    EXPECT_EQ(run("expect nothing stored none"), "");
    EXPECT_EQ(run("expect nothing stored cart"), "1: after 10 s: the value is 7");
    app.stored["cart"].expiry.reset();
    EXPECT_EQ(run("expect expiry cart never"), "");
}

TEST_F(ScriptRunnerTest, AnUploadCountsOnceItIsAnswered)
{
    app.told.uploads.push_back({ .time = {},
        .request = 1,
        .events = Json::parse(R"([{"eventId":"a"}])"),
        .status = {},
        .body = {},
        .error = {} });
    EXPECT_EQ(run("expect upload 200"), "1: after 10 s: the uploads so far: 1 event, not answered yet");
    app.told.uploads.back().status = 503;
    EXPECT_EQ(run("expect upload 503 {\"eventId\":\"a\"}"), "");
    EXPECT_NE(run("expect upload 503 {\"eventId\":\"b\"}"), "");
    EXPECT_NE(run("expect upload failed"), "");
    app.told.uploads.back() = {
        .time = {}, .request = 1, .events = Json::array(), .status = {}, .body = {}, .error = "no"
    };
    EXPECT_EQ(run("expect upload failed"), "");
}

TEST_F(ScriptRunnerTest, TheQueueIsComparedWhenAllThatThePagePostedIsHere)
{
    app.events = Json::parse(R"([{"eventId":"a","n":1}])");
    EXPECT_EQ(run("expect queue 1\nexpect event {\"eventId\":\"a\"}"), "");
    EXPECT_EQ(app.calls, std::vector<std::string> { "run " });
    EXPECT_NE(run("expect event {\"eventId\":\"b\"}"), "");
}

TEST_F(ScriptRunnerTest, PagesActionsAndTheFooterAreCompared)
{
    app.told.navigations = { "https://shop/v1/", "https://shop/v1/cart.html" };
    app.told.actions = { { "share", R"({"id":"a","n":1})" }, { "share", "hello" }, { "share", {} } };
    EXPECT_EQ(run("expect page cart.html"), "");
    EXPECT_EQ(
        run("expect page list.html"), "1: after 10 s: the pages so far: https://shop/v1/; https://shop/v1/cart.html");
    EXPECT_EQ(run("expect action share {\"id\":\"a\"}\nexpect action share \"hello\"\nexpect action share"), "");
    EXPECT_NE(run("expect action share\nexpect action share\nexpect action share\nexpect action share"), "");
    EXPECT_EQ(run("footer off\nexpect footer hidden"), "");
    EXPECT_NE(run("expect footer shown"), "");
}

TEST_F(ScriptRunnerTest, ASwitchLeavesTheOthersWhereTheyAre)
{
    EXPECT_EQ(run("switch look dark\nswitch network slow\nswitch size 320x640"), "");
    EXPECT_EQ(app.places,
        (Switches { .service = ServiceState::Works,
            .network = NetworkState::Slow,
            .language = Language::English,
            .look = Look::Dark,
            .size = { 320, 640 } }));
}

TEST_F(ScriptRunnerTest, WhatRemainsIsPassedOnToTheApp)
{
    EXPECT_EQ(run("swipe back\nkill page\npass 2 min\nshow uploads\npicture cart\nreload"), "");
    EXPECT_EQ(app.calls,
        (std::vector<std::string> { "swipe", "kill", "pass 120", "show uploads", "picture cart", "reload" }));
}

}
