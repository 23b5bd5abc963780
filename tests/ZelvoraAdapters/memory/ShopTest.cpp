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
    EXPECT_DEATH(memory::Page { m_platform }, "there is no page: the shop is not open");
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
