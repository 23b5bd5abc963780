#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/driving/engineOf.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using examples::Page;
using gtk::runMainLoopUntil;

std::optional<platform::Value> stored(std::string const& key)
{
    return ZelvoraStorage::get(key);
}

bool becomesStored(std::string const& key, platform::Value const& value)
{
    return runMainLoopUntil([&] { return stored(key) == value; });
}

class BridgeTest : public testing::Test {
protected:
    void open()
    {
        shop.initialize();
        ASSERT_TRUE(shop.open());
        ASSERT_TRUE(shop.openPage("bridge.html"));
    }

    // Runs a statement in the page.
    void run(std::string const& script) { (void)shop.page().evaluate("(" + script + ", true)"); }

    LiveShop shop;
};

}

TEST_F(BridgeTest, APageStoresReadsAndRemovesValuesOfEveryKindWithTheirTypesKept)
{
    open();
    run("ZelvoraSDKBridge.setItem('text', \"it's\\n\\u0000 가\", 60)");
    EXPECT_TRUE(becomesStored("text", std::string("it's\n\0 가", 10)));
    run("ZelvoraSDKBridge.setItem('yes', true), ZelvoraSDKBridge.setItem('one', 1)");
    EXPECT_TRUE(becomesStored("one", 1));
    EXPECT_EQ(stored("yes"), platform::Value(true));
    run("ZelvoraSDKBridge.setItem('nested', { list: [1, 'a', null, false], gone: undefined })");
    platform::Array const list { 1, "a", platform::Null {}, false };
    EXPECT_TRUE(becomesStored("nested", platform::Dictionary { { "list", list } }));

    run("window.received = [], window.receive = (value) => window.received.push(value)");
    run("ZelvoraSDKBridge.getItem('text', 'receive'), ZelvoraSDKBridge.getItem('yes', 'window.receive'), "
        "ZelvoraSDKBridge.getItem('one', 'receive'), ZelvoraSDKBridge.getItem('nested', 'receive'), "
        "ZelvoraSDKBridge.removeItem('one'), ZelvoraSDKBridge.getItem('one', 'receive')");
    EXPECT_TRUE(shop.page().waitFor("received.length === 5"));
    EXPECT_EQ(shop.page().evaluate("received"), R"(["it's\n\u0000 가",true,1,{"list":[1,"a",null,false]},null])");
    EXPECT_FALSE(stored("one"));
}

TEST_F(BridgeTest, APageSavesEventsReadsThemBackAndSwitchesTheFooter)
{
    open();
    auto const before = ZelvoraStorage::getEventTrackingData().size();
    shop.page().click("btn-save-event");
    shop.page().click("btn-save-event-text");
    shop.page().click("btn-get-events");
    EXPECT_TRUE(shop.logHas("← onBridgeEvents(["));
    EXPECT_EQ(ZelvoraStorage::getEventTrackingData().size(), before + 1) << "JSON text is no event";

    shop.page().click("btn-footer-text");
    shop.page().click("btn-footer-hide");
    EXPECT_TRUE(runMainLoopUntil([] { return !ZelvoraSDK::shared().isFooterVisible(); }));
    shop.page().click("btn-footer-show");
    EXPECT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().isFooterVisible(); }));
}

TEST_F(BridgeTest, AFrameFromAnotherOriginCallsTheBridgeAndItsAnswersReachTheMainFrame)
{
    open();
    auto const before = ZelvoraStorage::getEventTrackingData().size();
    shop.page().click("btn-frame-save-event");
    EXPECT_TRUE(runMainLoopUntil([before] { return ZelvoraStorage::getEventTrackingData().size() == before + 1; }));
    auto const events = ZelvoraStorage::getEventTrackingData();
    auto const* event = events.at(before).dictionary();
    EXPECT_EQ(
        *event->find("origin"), platform::Value("https://frames.zelvora.localhost:" + std::to_string(shop.port())));
    shop.page().click("btn-frame-set-item");
    EXPECT_TRUE(becomesStored("fromFrame", "프레임에서 안녕"));
    shop.page().click("btn-frame-get-item");
    EXPECT_TRUE(shop.logHas("← onFrameItem(\"프레임에서 안녕\")"));
    EXPECT_FALSE(shop.page().waitFor("document.getElementById('log').textContent.includes('frame onFrameItem')", 0.5));
}

TEST_F(BridgeTest, AFrameGetsTheAnswersThatItsMainFrameShares)
{
    open();
    shop.page().click("btn-frame-set-item");
    shop.page().click("btn-frame-shared-item");
    EXPECT_TRUE(shop.logHas("▣ frame ← \"프레임에서 안녕\""));
}

TEST_F(BridgeTest, ASandboxedFrameRunsScriptInTheMainFrame)
{
    open();
    run("(frame => { frame.sandbox = 'allow-scripts'; frame.srcdoc = '<script>"
        "ZelvoraSDKBridge.getItem(\"none\", \"window.writtenBy = location.hostname, String\")</script>'; "
        "document.body.append(frame); })(document.createElement('iframe'))");
    EXPECT_TRUE(shop.page().waitFor("window.writtenBy === location.hostname"));
}

TEST_F(BridgeTest, ACustomActionGetsTextAndTheJSONOfObjectsAndNothingElse)
{
    std::vector<std::optional<std::string>> received;
    ZelvoraSDK::shared().addCustomAction("share", [&received](auto const& data) { received.push_back(data); });
    open();
    for (auto const* kind : { "object", "text", "number", "true", "null", "nothing" })
        shop.page().click("btn-custom-" + std::string(kind));
    EXPECT_TRUE(runMainLoopUntil([&received] { return received.size() == 6; }));
    std::vector<std::optional<std::string>> const expected { R"({"from":"상점","count":2})", "안녕", std::nullopt,
        std::nullopt, "null", std::nullopt };
    EXPECT_EQ(received, expected);
    run("ZelvoraSDKBridge.share(''), ZelvoraSDKBridge.share(0), ZelvoraSDKBridge.share(false), "
        "ZelvoraSDKBridge.share(['목', 1])");
    EXPECT_TRUE(runMainLoopUntil([&received] { return received.size() == 10; }));
    EXPECT_EQ(received.at(6), std::nullopt);
    EXPECT_EQ(received.at(7), std::nullopt);
    EXPECT_EQ(received.at(8), std::nullopt);
    EXPECT_EQ(received.at(9), R"(["목",1])");
}

TEST_F(BridgeTest, ACustomActionNamedLikeABuiltInFunctionReplacesIt)
{
    auto closed = 0;
    ZelvoraSDK::shared().addCustomAction("close", [&closed](auto const&) { ++closed; });
    open();
    shop.page().click("btn-close");
    EXPECT_TRUE(runMainLoopUntil([&closed] { return closed == 1; }));
    EXPECT_NE(ZelvoraSDK::shared().activeWebView(), nullptr);
}

TEST_F(BridgeTest, TheAlertPrecedesEveryCallbackAndAQuoteBreaksOnlyTheAlert)
{
    open();
    run("window.steps = [], window.alert = (text) => steps.push('alert ' + text), "
        "window.receive = (value) => steps.push('callback ' + value)");
    run("ZelvoraSDKBridge.setItem('n', 7), ZelvoraSDKBridge.setItem('q', \"it's\"), "
        "ZelvoraSDKBridge.getItem('n', 'receive'), ZelvoraSDKBridge.getItem('q', 'receive'), "
        "ZelvoraSDKBridge.getItem('n', 'receive')");
    EXPECT_TRUE(shop.page().waitFor("steps.length === 5"));
    EXPECT_EQ(shop.page().evaluate("steps"), R"(["alert 7","callback 7","callback it's","alert 7","callback 7"])");
}

TEST_F(BridgeTest, TheEnginesOwnAlertShowsNoPanelAndLetsTheAnswerFollow)
{
    open();
    run("window.receive = (value) => { window.received = value; }");
    run("ZelvoraSDKBridge.setItem('n', 7), ZelvoraSDKBridge.getItem('n', 'receive')");
    EXPECT_TRUE(shop.page().waitFor("received === 7"));
    EXPECT_EQ(shop.page().evaluate("confirm('?')"), "false");
}

TEST_F(BridgeTest, WhatJSONCannotRepresentIsAnsweredAsNull)
{
    open();
    run("window.received = [], window.receive = (value) => window.received.push(value)");
    run("ZelvoraSDKBridge.setItem('nan', NaN), ZelvoraSDKBridge.setItem('list', [1 / 0]), "
        "ZelvoraSDKBridge.setItem('date', new Date(0)), ZelvoraSDKBridge.getItem('nan', 'receive'), "
        "ZelvoraSDKBridge.getItem('list', 'receive'), ZelvoraSDKBridge.getItem('date', 'receive')");
    EXPECT_TRUE(shop.page().waitFor("received.length === 3"));
    EXPECT_EQ(shop.page().evaluate("received"), "[null,null,null]");
    EXPECT_EQ(stored("date"), platform::Value(platform::Date { 0 }));
}

TEST_F(BridgeTest, NoMessageFromAPageCrashesTheAppOrStopsTheBridge)
{
    open();
    run("[null, 1, 'text', [], {}, { action: 7 }, { action: 'nonsense' }, { action: 'setItem', key: 1, value: 2 }, "
        "{ action: 'getItem', key: 'k' }, { action: 'saveEvent', data: '{}' }, { action: 'setFooterVisible', visible: "
        "1 }]"
        ".forEach((body) => webkit.messageHandlers.zelvora.postMessage(body))");
    run("(() => { let deep = {}; for (let i = 0; i < 20000; ++i) deep = { deep }; "
        "ZelvoraSDKBridge.setItem('deep', deep); ZelvoraSDKBridge.saveEvent(deep); })()");
    run("ZelvoraSDKBridge.setItem('huge', 'x'.repeat(20e6)), ZelvoraSDKBridge.setItem('bare', null)");
    run("ZelvoraSDKBridge.setItem('after', 'alive')");
    EXPECT_TRUE(becomesStored("after", "alive"));
    EXPECT_FALSE(stored("deep"));
    EXPECT_FALSE(stored("bare"));
    EXPECT_EQ(stored("huge")->text()->size(), 20'000'000U);
    EXPECT_TRUE(ZelvoraSDK::shared().isFooterVisible());
}

TEST_F(BridgeTest, ThePageReloadsAfterItsWebProcessDied)
{
    open();
    webkit_web_view_terminate_web_process(shop.engine());
    EXPECT_TRUE(shop.page().waitUntilReady("/bridge.html"));
    run("ZelvoraSDKBridge.setItem('after', 'alive')");
    EXPECT_TRUE(becomesStored("after", "alive"));
}

TEST_F(BridgeTest, AnErrorOfAnEarlierVisitDoesNotReplaceAPageWhoseWebProcessDied)
{
    shop.initialize();
    shop.service().faults().set(examples::Target::Site, { .status = 503 });
    ZelvoraSDK::shared().start(shop.presenter());
    ASSERT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() != nullptr; }));
    {
        Page page(examples::engineOf(*ZelvoraSDK::shared().activeWebView()));
        ASSERT_TRUE(page.waitFor("document.body.textContent.includes('told to fail')"));
        (void)page.evaluate("(ZelvoraSDKBridge.close(), true)");
    }
    ASSERT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() == nullptr; }));
    shop.service().faults().reset();
    ASSERT_TRUE(shop.open());

    (void)shop.page().evaluate("(window.isFromBeforeDeath = true)");
    webkit_web_view_terminate_web_process(shop.engine());
    EXPECT_TRUE(shop.page().waitFor("!window.isFromBeforeDeath && !!window.ZelvoraSDKBridge && "
                                    "!!document.querySelector('main')"));
}

}
