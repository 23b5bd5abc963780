#include "ZelvoraAdapters/memory/Shop.h"

#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

using Texts = std::vector<std::string>;

class ShopTest : public ::testing::Test {
protected:
    memory::Page open()
    {
        ZelvoraSDK::shared().initialize("user", "key", true, false, true);
        ZelvoraSDK::shared().start(m_home);
        m_platform.runUntilIdle();
        return memory::Page(m_platform);
    }

    [[nodiscard]] Texts complaints() { return m_platform.screen().complaints(); }

    memory::Platform& m_platform = memory::readyShop();
    std::shared_ptr<memory::ViewController> m_home = std::make_shared<memory::ViewController>();
};

}

TEST_F(ShopTest, OpensWithoutAFurtherWord)
{
    auto const page = open();
    EXPECT_TRUE(page.url()->starts_with("https://shop.")) << *page.url();
    EXPECT_NE(page.url()->find("adid=unknown"), std::string::npos) << *page.url();
    EXPECT_EQ(m_platform.urlSession().unansweredCount(), 0u);
}

TEST_F(ShopTest, APageIsAnsweredWhatItAskedForInOrder)
{
    auto const page = open();
    page.post("setItem", { { "key", "cup" }, { "value", "tea" } });
    EXPECT_EQ(page.answers(), Texts {});
    page.post("getItem", { { "key", "cup" }, { "callback", "gotItem" } });
    page.post("getItem", { { "key", "plate" }, { "callback", "gotItem" } });
    EXPECT_EQ(page.answers(), (Texts { "gotItem(\"tea\");", "gotItem(null);" }));
}

TEST_F(ShopTest, APageCallsEachFunctionOfTheBridge)
{
    Texts shared;
    ZelvoraSDK::shared().addCustomAction(
        "share", [&](auto const& text) { shared.push_back(text.value_or("nothing")); });
    auto const page = open();
    page.setItem("cup", "tea", 60);
    page.setItem("plate", 3);
    page.removeItem("plate");
    page.getItem("cup", "gotItem");
    page.getItem("plate", "gotItem");
    page.saveEvent({ { "eventId", "view" } });
    page.getEvents("gotEvents");
    page.setFooterVisible(false);
    page.invoke("share", "tea");
    page.invoke("share");
    m_platform.clock().advance(61);
    page.getItem("cup", "gotItem");
    EXPECT_EQ(page.answers(),
        (Texts { "gotItem(\"tea\");", "gotItem(null);", "gotEvents([{\"eventId\":\"view\"}]);", "gotItem(null);" }));
    EXPECT_EQ(shared, (Texts { "tea", "nothing" }));
    EXPECT_FALSE(ZelvoraSDK::shared().isFooterVisible());
    page.close();
    EXPECT_TRUE(page.isGone());
    EXPECT_EQ(complaints(), Texts {});
}

TEST_F(ShopTest, AnActionThatNoFunctionOfThePageHasIsComplainedOf)
{
    open().post("setitem", { { "key", "cup" }, { "value", "tea" } });
    EXPECT_EQ(
        complaints(), (Texts { "A page cannot post this: no function of its script has the action \"setitem\"." }));
}

TEST_F(ShopTest, AKeyThatTheActionDoesNotHaveIsComplainedOf)
{
    auto const page = open();
    page.post("setItem", { { "key", "cup" }, { "value", "tea" }, { "expireSec", 60 } });
    page.post("close", { { "key", "cup" } });
    EXPECT_EQ(complaints(),
        (Texts { "A page cannot post this: \"setItem\" has no key \"expireSec\"; its keys: \"key\", \"value\", "
                 "\"expire\".",
            "A page cannot post this: \"close\" has no key \"key\"; its keys: none." }));
}

TEST_F(ShopTest, AnActionThatWasRegisteredAfterThePageWasOpenedIsComplainedOf)
{
    ZelvoraSDK::shared().addCustomAction("refresh", [](auto const&) { });
    ZelvoraSDK::shared().addCustomAction("", [](auto const&) { });
    auto const page = open();
    ZelvoraSDK::shared().addCustomAction("share", [](auto const&) { });
    page.invoke("share", "tea");
    page.invoke("");
    EXPECT_EQ(complaints(),
        (Texts { "A page cannot post this: it has no function \"share\"; the app's actions when its screen was opened: "
                 "\"refresh\".",
            "A page cannot post this: it has no function \"\"; the app's actions when its screen was opened: "
            "\"refresh\"." }));
}

TEST_F(ShopTest, AnObjectForAnActionIsComplainedOfAsTheScriptMakesTextOfIt)
{
    ZelvoraSDK::shared().addCustomAction("share", [](auto const&) { });
    auto const page = open();
    page.post("invokeCustomAction", { { "name", "share" }, { "data", platform::Dictionary { { "id", "cup" } } } });
    page.post("invokeCustomAction", { { "name", "share" }, { "data", 5 } });
    EXPECT_EQ(complaints(),
        (Texts { "A page cannot post this: the data of an action is text or null, as its function makes JSON text of "
                 "an object." }));
}

TEST_F(ShopTest, WhatAHostilePagePostsIsNotComplainedOf)
{
    auto const page = open();
    EXPECT_TRUE(m_platform.webViews().back()->postMessage(
        "zelvora", platform::Dictionary { { "action", "invokeCustomAction" }, { "names", "share" } }));
    EXPECT_EQ(complaints(), Texts {});
}

TEST_F(ShopTest, APageThatClosesIsGone)
{
    auto const page = open();
    EXPECT_FALSE(page.isGone());
    page.post("close");
    EXPECT_TRUE(page.isGone());
    EXPECT_EQ(memory::peer(*m_home).presentedViewController(), nullptr);
    EXPECT_EQ(page.answers(), Texts {});
    EXPECT_EQ(page.url(), std::nullopt);
    EXPECT_DEATH(page.post("close"), "the page is gone: the shop was closed");
}

TEST_F(ShopTest, UploadsSucceed)
{
    auto const page = open();
    page.post("saveEvent", { { "data", platform::Dictionary { { "name", "view" } } } });
    page.post("close");
    EXPECT_TRUE(ZelvoraStorage::getEventTrackingData().isEmpty());
}

TEST_F(ShopTest, WithoutAWebViewThereIsNoPage)
{
    EXPECT_DEATH(memory::Page { m_platform }, "there is no page: the shop is not open, or its queues have yet to run");
}

TEST_F(ShopTest, AServerAnswersUntilItIsTakenAway)
{
    m_platform.urlSession().setServer(nullptr);
    ZelvoraSDK::shared().initialize("user", "key", true, false, true);
    m_platform.runUntilIdle();
    EXPECT_EQ(m_platform.urlSession().unansweredCount(), 1u);
}

TEST(ReadyShopTest, AUserWhoHasAnsweredAlreadyIsLeftAlone)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    auto& platform = memory::readyShop({ .trackingStatus = Status::Authorized });
    EXPECT_EQ(platform.trackingManager().trackingAuthorizationStatus(), Status::Authorized);
}

}
