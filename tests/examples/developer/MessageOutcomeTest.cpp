#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "tests/examples/developer/ObservedSDK.h"

#include <limits>

namespace zelvora::developer {

namespace {

using platform::Array;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

struct Case {
    Value body;
    Verdict verdict;
    char const* explanation;
};

Dictionary message(char const* action, Dictionary::Entries members = {})
{
    members.emplace_back("action", action);
    return Dictionary(std::move(members));
}

// What the SDK does with each of these is its own affair: here it is told from what the SDK was seen to do.
std::vector<Case> const& cases()
{
    static std::vector<Case> const s_cases {
        { message("setItem", { { "key", "k" }, { "value", 1 } }), Verdict::Done, "k is stored without expiry" },
        { message("setItem", { { "key", "k" }, { "value", 1 }, { "expire", 60 } }), Verdict::Done,
            "k is stored for 1 min" },
        { message("setItem", { { "value", 1 } }), Verdict::Dropped, "key is missing: a key is a text" },
        { message("setItem", { { "key", 7 }, { "value", 1 } }), Verdict::Dropped, "key is a number: a key is a text" },
        { message("setItem", { { "key", "k" } }), Verdict::Dropped,
            "value is missing: use removeItem to remove a value" },
        { message("setItem", { { "key", "k" }, { "value", Null {} } }), Verdict::Dropped,
            "null cannot be stored: use removeItem" },
        { message("getItem", { { "key", "none" }, { "callback", "f" } }), Verdict::Answered, "answered with null" },
        { message("getItem", { { "key", "none" } }), Verdict::Dropped,
            "callback is missing: pass the name of a global function as text" },
        { message("removeItem", { { "key", "k" } }), Verdict::Done, "k is removed" },
        { message("removeItem", { { "key", true } }), Verdict::Dropped, "key is a boolean: a key is a text" },
        { message("saveEvent", { { "data", Dictionary { { "eventId", "e" } } } }), Verdict::Done,
            "the event is queued" },
        { message("saveEvent", { { "data", R"({"eventId":"e"})" } }), Verdict::Dropped,
            "data is a text: pass an object, not its JSON text" },
        { message("saveEvent", { { "data", Array {} } }), Verdict::Dropped,
            "data is an array: pass an object, not its JSON text" },
        { message("getEvents", { { "callback", "f" } }), Verdict::Answered, "answered with [" },
        { message("getEvents"), Verdict::Dropped, "callback is missing: pass the name of a global function as text" },
        { message("setFooterVisible", { { "visible", false } }), Verdict::Done, "the footer is hidden" },
        { message("setFooterVisible", { { "visible", "false" } }), Verdict::Dropped,
            "visible is a text: pass true or false" },
        { message("invokeCustomAction", { { "name", "share" }, { "data", "hello" } }), Verdict::Done,
            "the app's action was called with \"hello\"" },
        { message("invokeCustomAction", { { "name", "share" }, { "data", Null {} } }), Verdict::Done,
            "the app's action was called without data" },
        { message("invokeCustomAction", { { "name", "shrae" } }), Verdict::Dropped, "the app has no action shrae" },
        { message("invokeCustomAction"), Verdict::Dropped, "name is missing: the name of an action is a text" },
        { message("setitem", { { "key", "k" } }), Verdict::Dropped, "the bridge has no action setitem" },
        { Dictionary { { "key", "k" } }, Verdict::Dropped, "the message has no action" },
        { Dictionary { { "action", 7 } }, Verdict::Dropped, "the message has no action" },
        { "setItem", Verdict::Dropped, "the message is no object" },
        { message("close"), Verdict::Done, "events are uploaded, and the screen closes" },
    };
    return s_cases;
}

class MessageOutcomeTest : public ObservedSDK {
protected:
    MessageOutcomeTest()
    {
        ZelvoraSDK::shared().addCustomAction(
            "share", [this](auto const& data) { recorder.didCallAction("share", data); });
        open();
    }

    [[nodiscard]] std::string warning() const { return outcome().warning ? outcome().warning->english : ""; }
};

}

TEST_F(MessageOutcomeTest, EveryKindOfMessageIsToldWithWhatTheSDKDidWithIt)
{
    for (auto const& [body, verdict, explanation] : cases()) {
        post(body);
        EXPECT_EQ(outcome().verdict, verdict) << debugDescription(body);
        EXPECT_TRUE(outcome().explanation.english.starts_with(explanation)) << outcome().explanation.english;
        EXPECT_FALSE(outcome().explanation.korean.empty()) << debugDescription(body);
    }
    EXPECT_EQ(records().messages.size(), cases().size());
}

TEST_F(MessageOutcomeTest, AnAnswerIsKeptAsThePageReceivesIt)
{
    post(message("setItem", { { "key", "cart" }, { "value", Array { Dictionary { { "id", "moon-jar" } } } } }));
    post(message("getItem", { { "key", "cart" }, { "callback", "f" } }));
    EXPECT_EQ(records().messages.back().answer, Json::parse(R"([{"id":"moon-jar"}])"));
    post(message("getItem", { { "key", "none" }, { "callback", "f" } }));
    EXPECT_EQ(records().messages.back().answer, Json(nullptr));
    EXPECT_FALSE(records().messages.front().answer);
}

TEST_F(MessageOutcomeTest, AnExpiryThatIsTextIsWarnedOf)
{
    post(message("setItem", { { "key", "k" }, { "value", 1 }, { "expire", "60" } }));
    EXPECT_EQ(outcome().verdict, Verdict::Done);
    EXPECT_EQ(warning(), "the expiry is a text, no number: the value never expires");
    post(message("setItem", { { "key", "k" }, { "value", 1 }, { "expire", 60 } }));
    EXPECT_EQ(warning(), "");
}

TEST_F(MessageOutcomeTest, WhatJsonCannotHoldIsWarnedOfWhereverItIs)
{
    Array const list { 1, Dictionary { { "at", Date {} } } };
    post(message("saveEvent", { { "data", Dictionary { { "list", list } } } }));
    EXPECT_EQ(warning(), "this event stops its own upload and all later ones, because JSON cannot hold a date");
    post(message("setItem", { { "key", "k" }, { "value", std::numeric_limits<double>::quiet_NaN() } }));
    EXPECT_EQ(warning(), "this reads back as null, because JSON cannot hold nan");
}

TEST_F(MessageOutcomeTest, DataThatAnActionDoesNotReceiveIsWarnedOf)
{
    post(message("invokeCustomAction", { { "name", "share" }, { "data", 5 } }));
    EXPECT_EQ(outcome().verdict, Verdict::Done);
    EXPECT_EQ(warning(), "an action takes text only, and this is a number");
}

TEST_F(MessageOutcomeTest, AMessageThatTheSDKSilentlyIgnoredIsNeverToldAsDone)
{
    EXPECT_EQ(judge(message("setItem", { { "key", "k" }, { "value", 1 } }), {}).verdict, Verdict::Dropped);
    EXPECT_EQ(
        judge(message("setItem", { { "key", "k" }, { "value", 1 } }), {}).explanation.english, "the SDK did nothing");
}

TEST_F(MessageOutcomeTest, AnErrorInTheLogDoesNotMeanThatTheMessageWasDropped)
{
    auto const call = message("invokeCustomAction", { { "name", "share" } });
    EXPECT_EQ(judge(call, { .errors = { "the action complains" }, .action = "share" }).verdict, Verdict::Done);
}

}
