#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::Date;
using platform::debugDescription;

// Deep enough to overflow the stack of any recursion.
constexpr std::size_t bottomless = 100'000;

// Arrays nested in arrays.
Value nestedArrays(std::size_t depth)
{
    Value value { Array() };
    for (std::size_t i = 1; i < depth; ++i)
        value = Array { value };
    return value;
}

Value nestedDictionaries(std::size_t depth)
{
    Value value { Dictionary() };
    for (std::size_t i = 1; i < depth; ++i)
        value = Dictionary { { "a", value } };
    return value;
}

class MessageDispatchTest : public ContainerTest {
protected:
    void handle(Value body, std::string const& name = "zelvora")
    {
        ZelvoraJavascriptInterface::handle({ name, std::move(body) }, webView, viewController);
    }

    // Every possible effect of a message: log lines after the first, changes of the store, scripts, queued work.
    void expectNoEffect(Value const& body) const
    {
        EXPECT_EQ(logMessages(),
            (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: " + description(body) } }));
        EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
        EXPECT_TRUE(webView->evaluated().empty());
        EXPECT_TRUE(platform.mainQueue().isEmpty());
        EXPECT_TRUE(platform.urlSession().requests().empty());
    }
    void expectDropped(Value const& body)
    {
        handle(body);
        expectNoEffect(body);
    }

    [[nodiscard]] std::optional<Value> storedItem(std::string const& key) const { return stored(fullKey(key)); }

    std::shared_ptr<memory::WebView> webView =
        std::dynamic_pointer_cast<memory::WebView>(platform.makeWebView({}, { platform.makeUserContentController() }));
    std::shared_ptr<platform::UIViewController> viewController;
};

class ForeignHandlerTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<char const*> { };

TEST_P(ForeignHandlerTest, AMessageUnderAnotherNameIsNotLoggedAndHasNoEffect)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", 1 } }, GetParam());
    handle(Dictionary { { "action", "close" } }, GetParam());
    EXPECT_TRUE(logMessages().empty());
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Names, ForeignHandlerTest,
    ::testing::Values("", "Zelvora", "ZELVORA", "zelvora ", " zelvora", "zelvora2", "other"));

class AnyBodyTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<Value> { };

TEST_P(AnyBodyTest, ABodyThatIsNotAMapIsLoggedAndIgnored)
{
    expectDropped(GetParam());
}

TEST_P(AnyBodyTest, AnActionThatIsNotTextIsLoggedAndIgnored)
{
    expectDropped(Dictionary { { "action", GetParam() }, { "key", "k" } });
}

INSTANTIATE_TEST_SUITE_P(Kinds, AnyBodyTest,
    ::testing::Values(Value(), Value(true), Value(7), Value(Date { 1 }), Value(platform::Data { "close" }),
        Value(Array { "action", "close" }), Value(std::numeric_limits<double>::quiet_NaN())));

TEST_F(MessageDispatchTest, ABareTextIsLoggedAndDropped)
{
    expectDropped("close");
    platform.log().clear();
    expectDropped(R"({"action": "close"})");
}

TEST_F(MessageDispatchTest, ABareTextIsLoggedWithoutQuotationMarks)
{
    handle("say \"close\"");
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: say \"close\"" } }));
}

TEST_F(MessageDispatchTest, AMapWithoutAnActionIsLoggedAndDropped)
{
    expectDropped(Dictionary());
}

TEST_F(MessageDispatchTest, AMapOfAMapIsNoAction)
{
    expectDropped(Dictionary { { "action", Dictionary { { "action", "close" } } } });
}

TEST_F(MessageDispatchTest, TheKeyIsCalledActionExactly)
{
    expectDropped(Dictionary { { "Action", "close" } });
}

class UnknownActionTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<std::string> { };

TEST_P(UnknownActionTest, IsWarnedOfAndHasNoEffect)
{
    Value const body = Dictionary { { "action", GetParam() }, { "key", "k" }, { "value", 1 }, { "callback", "f" } };
    handle(body);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: " + description(body) },
            { OSLogType::Error, "Unknown JS action: " + GetParam() } }));
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Actions, UnknownActionTest,
    ::testing::Values("", "Close", "CLOSE", "close ", "setitem", "getItems", "getEvent", "open",
        "\xEB\x8B\xAB\xEA\xB8\xB0", std::string("close\0", 6), "\xFF"));

class DroppedMessageTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<Dictionary> { };

TEST_P(DroppedMessageTest, AMissingOrWronglyTypedArgumentIsNotAnswered)
{
    expectDropped(GetParam());
}

INSTANTIATE_TEST_SUITE_P(SetItem, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "setItem" } }, Dictionary { { "action", "setItem" }, { "value", 1 } },
        Dictionary { { "action", "setItem" }, { "key", "k" } },
        Dictionary { { "action", "setItem" }, { "key", "k" }, { "expire", 1 } },
        Dictionary { { "action", "setItem" }, { "key", 1 }, { "value", 1 } },
        Dictionary { { "action", "setItem" }, { "key", Value() }, { "value", 1 } },
        Dictionary { { "action", "setItem" }, { "key", true }, { "value", 1 } },
        Dictionary { { "action", "setItem" }, { "key", Array { "k" } }, { "value", 1 } },
        Dictionary { { "action", "setItem" }, { "key", Dictionary() }, { "value", 1 } }));

INSTANTIATE_TEST_SUITE_P(GetItem, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "getItem" } }, Dictionary { { "action", "getItem" }, { "key", "k" } },
        Dictionary { { "action", "getItem" }, { "callback", "f" } },
        Dictionary { { "action", "getItem" }, { "key", 1 }, { "callback", "f" } },
        Dictionary { { "action", "getItem" }, { "key", Value() }, { "callback", "f" } },
        Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", Value() } },
        Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", 1 } },
        Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", Dictionary() } }));

INSTANTIATE_TEST_SUITE_P(RemoveItem, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "removeItem" } },
        Dictionary { { "action", "removeItem" }, { "key", 1 } },
        Dictionary { { "action", "removeItem" }, { "key", Value() } },
        Dictionary { { "action", "removeItem" }, { "key", Array { "k" } } }));

INSTANTIATE_TEST_SUITE_P(SaveEvent, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "saveEvent" } },
        Dictionary { { "action", "saveEvent" }, { "data", R"({"name": "as JSON text"})" } },
        Dictionary { { "action", "saveEvent" }, { "data", Array { Dictionary() } } },
        Dictionary { { "action", "saveEvent" }, { "data", Value() } },
        Dictionary { { "action", "saveEvent" }, { "data", 1 } },
        Dictionary { { "action", "saveEvent" }, { "data", true } }));

INSTANTIATE_TEST_SUITE_P(GetEvents, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "getEvents" } },
        Dictionary { { "action", "getEvents" }, { "callback", 1 } },
        Dictionary { { "action", "getEvents" }, { "callback", Value() } },
        Dictionary { { "action", "getEvents" }, { "callback", Array { "f" } } }));

INSTANTIATE_TEST_SUITE_P(SetFooterVisible, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "setFooterVisible" } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", "false" } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", "true" } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", 0 } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", 1 } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", Value() } },
        Dictionary { { "action", "setFooterVisible" }, { "visible", Array { false } } }));

INSTANTIATE_TEST_SUITE_P(InvokeCustomAction, DroppedMessageTest,
    ::testing::Values(Dictionary { { "action", "invokeCustomAction" } },
        Dictionary { { "action", "invokeCustomAction" }, { "data", "d" } },
        Dictionary { { "action", "invokeCustomAction" }, { "name", 1 } },
        Dictionary { { "action", "invokeCustomAction" }, { "name", Value() } },
        Dictionary { { "action", "invokeCustomAction" }, { "name", Dictionary() } }));

TEST_F(MessageDispatchTest, TheMessageIsLoggedBeforeAnythingElseHappens)
{
    Value const body = Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" } };
    handle(body);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: " + description(body) },
            { OSLogType::Debug, "set(forKey: k, value: " + debugDescription(Value("v")) + ")" } }));
}

// Setting.

TEST_F(MessageDispatchTest, AnItemWithoutExpiryIsStoredWithoutExpiry)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" } });
    EXPECT_EQ(storedItem("k"), Value("v"));
    EXPECT_FALSE(storedItem("k_ts"));
    EXPECT_FALSE(storedItem("k_exp"));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(MessageDispatchTest, AnItemWithANumberAsExpiryIsStoredWithIt)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "expire", 12.5 } });
    EXPECT_EQ(storedItem("k"), Value("v"));
    EXPECT_EQ(storedItem("k_ts"), Value(memory::Clock::start));
    EXPECT_EQ(storedItem("k_exp"), Value(12.5));
}

class ExpiryThatIsNoneTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<Value> { };

TEST_P(ExpiryThatIsNoneTest, StoresTheItemWithoutExpiry)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "former" }, { "expire", 10 } });
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "expire", GetParam() } });
    EXPECT_EQ(storedItem("k"), Value("v"));
    EXPECT_FALSE(storedItem("k_ts"));
    EXPECT_FALSE(storedItem("k_exp"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ExpiryThatIsNoneTest,
    ::testing::Values(Value("10"), Value(true), Value(), Value(Array { 10 }), Value(Dictionary()), Value(Date { 10 })));

class ExpiryTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<double> { };

TEST_P(ExpiryTest, AnyNumberIsPassedOnUnchanged)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "expire", GetParam() } });
    EXPECT_EQ(storedItem("k_exp"), Value(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, ExpiryTest, ::testing::Values(0.0, -1.0, 0.001, 1e300, std::numeric_limits<double>::infinity()));

class StoredKindTest
    : public MessageDispatchTest
    , public ::testing::WithParamInterface<Value> { };

TEST_P(StoredKindTest, AValueIsStoredAsItIs)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", GetParam() } });
    EXPECT_EQ(storedItem("k"), GetParam());
    EXPECT_EQ(storedItem("k")->kind(), GetParam().kind());
}

INSTANTIATE_TEST_SUITE_P(Values, StoredKindTest,
    ::testing::Values(Value(true), Value(false), Value(0), Value(1), Value(-2.5), Value(""), Value("true"), Value("1"),
        Value(Date { 5 }), Value(platform::Data { "\x01" }), Value(Array()), Value(Array { 1, Value(), "a" }),
        Value(Dictionary()), Value(Dictionary { { "a", Value() }, { "b", Array { true } } })));

TEST_F(MessageDispatchTest, ANullValueIsPassedOnAndRefusedByTheStoreSoThatTheFormerValueStays)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "former" }, { "expire", 10 } });
    platform.standardUserDefaults().clearCalls();
    platform.log().clear();
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", Value() } });
    EXPECT_EQ(storedItem("k"), Value("former"));
    EXPECT_EQ(storedItem("k_exp"), Value(10));
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
    EXPECT_EQ(logMessages(OSLogType::Error).size(), 1U);
    // The store received it.
    EXPECT_EQ(logMessages(OSLogType::Debug).back(), "set(forKey: k, value: " + debugDescription(Value()) + ")");
}

TEST_F(MessageDispatchTest, AnEmptyKeyIsAKey)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "" }, { "value", "v" } });
    EXPECT_EQ(storedItem(""), Value("v"));
}

TEST_F(MessageDispatchTest, UnknownMembersAreIgnored)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "callback", "f" }, { "x", 1 } });
    EXPECT_EQ(storedItem("k"), Value("v"));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

// Getting.

TEST_F(MessageDispatchTest, AnItemIsReadAndSentToTheCallback)
{
    ZelvoraStorage::set("v", "k");
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(), (std::vector<std::string> { "javascript:alert('\"v\"');", "f(\"v\");" }));
}

TEST_F(MessageDispatchTest, AMissingItemIsAnsweredWithNull)
{
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), "f(null);");
}

TEST_F(MessageDispatchTest, AnExpiredItemIsAnsweredWithNullAndGone)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "expire", 10 } });
    platform.clock().advance(11);
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), "f(null);");
    EXPECT_FALSE(storedItem("k"));
    EXPECT_FALSE(storedItem("k_ts"));
    EXPECT_FALSE(storedItem("k_exp"));
}

TEST_F(MessageDispatchTest, AnInfiniteOrNaNExpiryNeverExpires)
{
    for (double const expire : { std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() }) {
        handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "expire", expire } });
        platform.clock().advance(1e9);
        handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
        platform.runUntilIdle();
        EXPECT_EQ(webView->evaluated().back(), "f(\"v\");");
    }
}

TEST_F(MessageDispatchTest, WithoutACallbackTheStoreIsNotReadAndAnExpiredItemStays)
{
    ZelvoraStorage::set("v", "k", 10);
    platform.clock().advance(11);
    platform.standardUserDefaults().clearCalls();
    platform.log().clear();
    expectDropped(Dictionary { { "action", "getItem" }, { "key", "k" } });
    EXPECT_TRUE(storedItem("k"));
}

TEST_F(MessageDispatchTest, AReadIsLoggedAsReceivedReadAndSent)
{
    ZelvoraStorage::set(1, "k");
    platform.log().clear();
    Value const body = Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } };
    handle(body);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: " + description(body) },
            { OSLogType::Debug, "get(forKey: k, value: 1)" }, { OSLogType::Debug, "Send callback data: 1" } }));
}

// Removing.

TEST_F(MessageDispatchTest, AnItemIsRemovedWithItsExpiryAndNothingIsAnswered)
{
    ZelvoraStorage::set("v", "k", 10);
    ZelvoraStorage::set("w", "other");
    handle(Dictionary { { "action", "removeItem" }, { "key", "k" } });
    EXPECT_FALSE(storedItem("k"));
    EXPECT_FALSE(storedItem("k_ts"));
    EXPECT_FALSE(storedItem("k_exp"));
    EXPECT_TRUE(storedItem("other"));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

// Events.

TEST_F(MessageDispatchTest, AnEventIsAppendedAsThePageSentIt)
{
    Dictionary const first { { "name", "a" }, { "nothing", Value() }, { "list", Array { 1, true } } };
    handle(Dictionary { { "action", "saveEvent" }, { "data", first } });
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary() } });
    EXPECT_EQ(storedItem("tracking_event"), Value(Array { first, Dictionary() }));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(MessageDispatchTest, AnEmptyQueueIsAnsweredWithAnEmptyArray)
{
    handle(Dictionary { { "action", "getEvents" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(), (std::vector<std::string> { "javascript:alert('[]');", "f([]);" }));
}

TEST_F(MessageDispatchTest, TheEventsAreAnsweredAsCompactJSONAndStay)
{
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary { { "name", "a" }, { "n", Value() } } } });
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary { { "name", "b" } } } });
    auto const before = storedItem("tracking_event");
    platform.standardUserDefaults().clearCalls();
    handle(Dictionary { { "action", "getEvents" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), R"(f([{"n":null,"name":"a"},{"name":"b"}]);)");
    EXPECT_EQ(storedItem("tracking_event"), before);
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
}

TEST_F(MessageDispatchTest, AForeignValueInThePlaceOfTheQueueIsAnsweredWithAnEmptyArray)
{
    ZelvoraStorage::set(Array { "no event" }, "tracking_event");
    handle(Dictionary { { "action", "getEvents" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), "f([]);");
}

// The footer.

TEST_F(MessageDispatchTest, ABooleanSwitchesTheFooterBeforeTheMessageIsDone)
{
    std::vector<std::optional<Dictionary>> posted;
    auto const observer = std::make_shared<int>();
    platform.notificationCenter().addObserver(observer, "ZelvoraFooterVisibilityChanged",
        [&posted](platform::Notification const& notification) { posted.push_back(notification.userInfo); });
    handle(Dictionary { { "action", "setFooterVisible" }, { "visible", false } });
    EXPECT_FALSE(sdk().isFooterVisible());
    handle(Dictionary { { "action", "setFooterVisible" }, { "visible", true } });
    EXPECT_TRUE(sdk().isFooterVisible());
    EXPECT_EQ(posted,
        (std::vector<std::optional<Dictionary>> {
            Dictionary { { "visible", false } }, Dictionary { { "visible", true } } }));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(MessageDispatchTest, AnythingButABooleanLeavesTheFooterUnchanged)
{
    auto posts = 0;
    auto const observer = std::make_shared<int>();
    platform.notificationCenter().addObserver(
        observer, "ZelvoraFooterVisibilityChanged", [&posts](platform::Notification const&) { ++posts; });
    for (auto const& visible : std::vector<Value> { "false", 0, Value(), Array { false } })
        handle(Dictionary { { "action", "setFooterVisible" }, { "visible", visible } });
    EXPECT_TRUE(sdk().isFooterVisible());
    EXPECT_EQ(posts, 0);
}

// Custom actions.

class CustomActionTest : public MessageDispatchTest {
protected:
    CustomActionTest()
    {
        sdk().addCustomAction("open", [this](std::optional<std::string> const& data) { calls.push_back(data); });
    }

    using Calls = std::vector<std::optional<std::string>>;
    Calls calls;
};

TEST_F(CustomActionTest, IsCalledAtOnceWithThePagesText)
{
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", "text" } });
    EXPECT_EQ(calls, (Calls { "text" }));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    EXPECT_TRUE(webView->evaluated().empty());
    EXPECT_EQ(
        logMessages().back(), (LogMessage { OSLogType::Debug, "invokeCustomAction(name=open, data=text) called" }));
}

TEST_F(CustomActionTest, IsCalledAfterTheLogLine)
{
    std::vector<LogMessage> before;
    sdk().addCustomAction("open", [&](auto const&) { before = logMessages(); });
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" } });
    ASSERT_FALSE(before.empty());
    EXPECT_EQ(before.back(), (LogMessage { OSLogType::Debug, "invokeCustomAction(name=open, data=null) called" }));
}

TEST_F(CustomActionTest, AnEmptyTextIsData)
{
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", "" } });
    EXPECT_EQ(calls, (Calls { "" }));
    EXPECT_EQ(logMessages().back().text, "invokeCustomAction(name=open, data=) called");
}

TEST_F(CustomActionTest, WithoutDataGetsNoValue)
{
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" } });
    EXPECT_EQ(calls, (Calls { std::nullopt }));
    EXPECT_EQ(logMessages().back().text, "invokeCustomAction(name=open, data=null) called");
}

class CustomActionDataTest
    : public CustomActionTest
    , public ::testing::WithParamInterface<Value> { };

TEST_P(CustomActionDataTest, DataThatIsNotTextCountsAsAbsent)
{
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", GetParam() } });
    EXPECT_EQ(calls, (Calls { std::nullopt }));
    EXPECT_EQ(logMessages().back().text, "invokeCustomAction(name=open, data=null) called");
}

INSTANTIATE_TEST_SUITE_P(Kinds, CustomActionDataTest,
    ::testing::Values(
        Value(), Value(true), Value(7), Value(Array { "a" }), Value(Dictionary { { "a", 1 } }), Value(Date { 1 })));

TEST_F(CustomActionTest, AnObjectsJSONTextArrivesAsItIs)
{
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", R"({"id":7})" } });
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", "null" } });
    EXPECT_EQ(calls, (Calls { R"({"id":7})", "null" }));
}

TEST_F(CustomActionTest, OfAnUnknownNameIsOnlyLogged)
{
    Value const body = Dictionary { { "action", "invokeCustomAction" }, { "name", "Open" }, { "data", "d" } };
    handle(body);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Debug, "JS Message Received: " + description(body) },
            { OSLogType::Debug, "invokeCustomAction(name=Open, data=d) called" } }));
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    EXPECT_TRUE(errors.empty());
}

TEST_F(CustomActionTest, WithoutANameIsNeitherLoggedNorCalled)
{
    expectDropped(Dictionary { { "action", "invokeCustomAction" }, { "data", "d" } });
    EXPECT_TRUE(calls.empty());
}

TEST_F(CustomActionTest, OfTheEmptyNameIsCalledLikeAnyOther)
{
    sdk().addCustomAction("", [this](auto const& data) { calls.push_back(data); });
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "" }, { "data", "d" } });
    EXPECT_EQ(calls, (Calls { "d" }));
}

TEST_F(CustomActionTest, NamedLikeABuiltInActionDoesNotReplaceIt)
{
    sdk().addCustomAction("removeItem", [this](auto const& data) { calls.push_back(data); });
    ZelvoraStorage::set("v", "k");
    handle(Dictionary { { "action", "removeItem" }, { "key", "k" } });
    EXPECT_FALSE(storedItem("k"));
    EXPECT_TRUE(calls.empty());
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "removeItem" } });
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(CustomActionTest, RegisteredAfterTheViewWasMadeIsStillFound)
{
    auto const container = makeContainer();
    sdk().addCustomAction("late", [this](auto const& data) { calls.push_back(data); });
    post({ { "action", "invokeCustomAction" }, { "name", "late" }, { "data", "d" } });
    EXPECT_EQ(calls, (Calls { "d" }));
}

TEST_F(CustomActionTest, MayReplaceItselfAndInvokeFurtherMessages)
{
    sdk().addCustomAction("open", [this](auto const& data) {
        calls.push_back(data);
        sdk().addCustomAction("open", [this](auto const&) { calls.emplace_back("replaced"); });
        handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" } });
    });
    handle(Dictionary { { "action", "invokeCustomAction" }, { "name", "open" }, { "data", "first" } });
    EXPECT_EQ(calls, (Calls { "first", "replaced" }));
}

TEST_F(CustomActionTest, MayCloseItsOwnContainer)
{
    auto const stack = makeStack();
    stack->pushViewController(std::make_shared<ZelvoraIOSViewController>(entryUrl), Animated::No);
    auto const page = platform.webViews().back();
    sdk().addCustomAction("leave", [stack](auto const&) { stack->popViewController(Animated::No); });
    page->postMessage("zelvora", Dictionary { { "action", "invokeCustomAction" }, { "name", "leave" } });
    EXPECT_EQ(stack->viewControllers().size(), 1U);
    EXPECT_FALSE(sdk().activeWebView());
    EXPECT_FALSE(page->userContentController().handler("zelvora"));
}

// Closing.

class CloseTest : public MessageDispatchTest {
protected:
    // A screen that notes the number of uploads when it is dismissed.
    class Presented final : public platform::UIViewController {
    public:
        explicit Presented(memory::Platform& platform) : m_platform(platform) { }

        void viewWillDisappear(Animated animated) override
        {
            UIViewController::viewWillDisappear(animated);
            uploadsWhenLeaving = m_platform.urlSession().requests().size();
            flag = animated;
        }

        std::optional<std::size_t> uploadsWhenLeaving;
        std::optional<Animated> flag;

    private:
        memory::Platform& m_platform;
    };

    CloseTest()
    {
        saveEvents(1);
        platform.log().clear();
        viewController = presented;
        presenter->present(presented, Animated::No);
    }

    [[nodiscard]] bool isPresented() const { return memory::peer(*presenter).presentedViewController() == presented; }

    std::shared_ptr<memory::ViewController> presenter = std::make_shared<memory::ViewController>();
    std::shared_ptr<Presented> presented = std::make_shared<Presented>(platform);
};

TEST_F(CloseTest, UploadsAndThenDismissesWithAnimationOnTheMainQueue)
{
    handle(Dictionary { { "action", "close" } });
    EXPECT_TRUE(isPresented());
    EXPECT_TRUE(platform.urlSession().requests().empty());
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);

    platform.mainQueue().runOne();
    EXPECT_FALSE(isPresented());
    EXPECT_EQ(presented->uploadsWhenLeaving, 1U);
    EXPECT_EQ(presented->flag, Animated::Yes);
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    EXPECT_TRUE(webView->evaluated().empty());
}

TEST_F(CloseTest, WithoutAScreenUploadsAndLeavesEverythingAsItIs)
{
    viewController = nullptr;
    handle(Dictionary { { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_EQ(platform.urlSession().requests().size(), 1U);
    EXPECT_TRUE(isPresented());
}

TEST_F(CloseTest, WithoutAWebViewStillCloses)
{
    webView = nullptr;
    handle(Dictionary { { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_FALSE(isPresented());
}

TEST_F(CloseTest, WithoutEventsOnlyDismisses)
{
    ZelvoraStorage::clearEventTrackingData();
    handle(Dictionary { { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_TRUE(platform.urlSession().requests().empty());
    EXPECT_FALSE(isPresented());
}

TEST_F(CloseTest, ArgumentsMakeNoDifference)
{
    handle(Dictionary { { "action", "close" }, { "key", 1 }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_FALSE(isPresented());
    EXPECT_TRUE(webView->evaluated().empty());
}

TEST_F(CloseTest, TwiceFindsNothingMoreToDismiss)
{
    handle(Dictionary { { "action", "close" } });
    handle(Dictionary { { "action", "close" } });
    platform.mainQueue().runAll();
    EXPECT_FALSE(isPresented());
    EXPECT_EQ(platform.urlSession().requests().size(), 2U);
}

TEST_F(CloseTest, OfAPushedContainerLeavesItOnItsStack)
{
    auto const stack = makeStack();
    stack->pushViewController(std::make_shared<ZelvoraIOSViewController>(entryUrl), Animated::No);
    post({ { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_TRUE(containerOn(*stack));
    EXPECT_EQ(platform.urlSession().requests().size(), 1U);
}

TEST_F(CloseTest, OfAPresentedContainerEndsIt)
{
    auto const other = std::make_shared<memory::ViewController>();
    other->present(std::make_shared<ZelvoraIOSViewController>(entryUrl), Animated::No);
    post({ { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_FALSE(memory::peer(*other).presentedViewController());
}

// Several messages.

TEST_F(MessageDispatchTest, MessagesTakeEffectInTheirOrder)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", 1 } });
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "a" } });
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", 2 } });
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "b" } });
    handle(Dictionary { { "action", "removeItem" }, { "key", "k" } });
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "c" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated(),
        (std::vector<std::string> { "javascript:alert('1');", "a(1);", "javascript:alert('2');", "b(2);",
            "javascript:alert('null');", "c(null);" }));
}

// Hostile input.

TEST_F(MessageDispatchTest, HundredsOfThousandsOfLevelsAreNoMessage)
{
    Value const body = nestedArrays(300'000);
    handle(body);
    expectNoEffect(body);
}

TEST_F(MessageDispatchTest, BottomlessValuesInAnUnknownArgumentAreIgnored)
{
    handle(Dictionary {
        { "action", "setItem" }, { "key", "k" }, { "value", "v" }, { "more", nestedDictionaries(bottomless) } });
    EXPECT_EQ(storedItem("k"), Value("v"));
}

TEST_F(MessageDispatchTest, BottomlessValuesInPlaceOfTextAreNoText)
{
    for (auto const& deep : { nestedArrays(bottomless), nestedDictionaries(bottomless) }) {
        platform.log().clear();
        expectDropped(Dictionary { { "action", deep } });
        platform.log().clear();
        expectDropped(Dictionary { { "action", "getItem" }, { "key", deep }, { "callback", deep } });
        platform.log().clear();
        expectDropped(Dictionary { { "action", "setFooterVisible" }, { "visible", deep } });
    }
}

TEST_F(MessageDispatchTest, BottomlessValuesAreRefusedByTheStoreAndTheFormerValueStays)
{
    ZelvoraStorage::set("former", "k");
    for (auto const& deep : { nestedArrays(bottomless), nestedDictionaries(bottomless) }) {
        platform.log().clear();
        handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", deep } });
        EXPECT_EQ(storedItem("k"), Value("former"));
        EXPECT_EQ(logMessages(OSLogType::Error).size(), 1U);
    }
}

TEST_F(MessageDispatchTest, BottomlessValuesInAnEventAreRefusedAndTheQueueStays)
{
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary { { "name", "a" } } } });
    platform.log().clear();
    handle(Dictionary { { "action", "saveEvent" }, { "data", nestedDictionaries(bottomless) } });
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary { { "deep", nestedArrays(bottomless) } } } });
    EXPECT_EQ(logMessages(OSLogType::Error).size(), 2U);
    EXPECT_EQ(names(ZelvoraStorage::getEventTrackingData()), (std::vector<std::string> { "a" }));
}

TEST_F(MessageDispatchTest, AsManyLevelsAsTheStoreAcceptsComeBackUnchanged)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", nestedArrays(Value::maximumNesting) } });
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    platform.runUntilIdle();
    auto const brackets = std::string(Value::maximumNesting, '[') + std::string(Value::maximumNesting, ']');
    EXPECT_EQ(webView->evaluated().back(), "f(" + brackets + ");");
    EXPECT_TRUE(logMessages(OSLogType::Error).empty());

    handle(
        Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", nestedArrays(Value::maximumNesting + 1) } });
    EXPECT_EQ(logMessages(OSLogType::Error).size(), 1U);
}

TEST_F(MessageDispatchTest, AHugeTextIsStoredWholeAndLoggedTruncated)
{
    std::string const huge(4'000'000, 'x');
    handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", huge } });
    EXPECT_EQ(storedItem("k"), Value(huge));
    for (auto const& line : logMessages())
        EXPECT_LT(line.text.size(), 1000U);
    handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back().size(), huge.size() + std::string("f(\"\");").size());
}

TEST_F(MessageDispatchTest, AHugeActionIsUnknownLikeAnyOther)
{
    std::string const huge(1'000'000, 'x');
    handle(Dictionary { { "action", huge } });
    EXPECT_EQ(logMessages(OSLogType::Error), (std::vector<std::string> { "Unknown JS action: " + huge }));
}

TEST_F(MessageDispatchTest, AHugeMapIsLoggedInBrief)
{
    Dictionary::Entries entries { { "action", "close" } };
    for (auto i = 0; i < 100'000; ++i)
        entries.emplace_back("key" + std::to_string(i), i);
    handle(Dictionary(std::move(entries)));
    ASSERT_EQ(logMessages().size(), 1U);
    EXPECT_LT(logMessages()[0].text.size(), 1000U);
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);
}

TEST_F(MessageDispatchTest, TextsThatAreNotUTF8ArriveAsTheyAre)
{
    handle(Dictionary { { "action", "setItem" }, { "key", "\xFF" }, { "value", "\xC3" } });
    EXPECT_EQ(storedItem("\xFF"), Value("\xC3"));
}

TEST_F(MessageDispatchTest, TextsWithNULAreNotCutShort)
{
    std::string const key("k\0k", 3);
    handle(Dictionary { { "action", "setItem" }, { "key", key }, { "value", "v" } });
    EXPECT_EQ(storedItem(key), Value("v"));
    EXPECT_FALSE(storedItem("k"));
}

TEST_F(MessageDispatchTest, ANumberThatIsNotFiniteIsStoredAndAnsweredWithNull)
{
    for (double const number : { std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity() }) {
        handle(Dictionary { { "action", "setItem" }, { "key", "k" }, { "value", number } });
        EXPECT_TRUE(storedItem("k"));
        handle(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
        platform.runUntilIdle();
        EXPECT_EQ(webView->evaluated().back(), "f(null);");
    }
}

TEST_F(MessageDispatchTest, AnEventWithANumberThatIsNotFiniteMakesTheAnswerNullAndStays)
{
    handle(Dictionary {
        { "action", "saveEvent" }, { "data", Dictionary { { "price", std::numeric_limits<double>::quiet_NaN() } } } });
    handle(Dictionary { { "action", "saveEvent" }, { "data", Dictionary { { "name", "b" } } } });
    handle(Dictionary { { "action", "getEvents" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(webView->evaluated().back(), "f(null);");
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData().size(), 2U);
}

TEST(MessageDispatchWithoutPlatformDeathTest, AMessageBeforeAPlatformIsInstalledStopsTheProcess)
{
    platform::WKScriptMessage const message { "zelvora", Dictionary() };
    EXPECT_DEATH(ZelvoraJavascriptInterface::handle(message, nullptr, nullptr),
        "the SDK was used before a platform was installed: call Platform::install first");
}

}

}
