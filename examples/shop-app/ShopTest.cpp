#include "Shop.h"

#include "ZelvoraAdapters/memory/Shop.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace zelvora;

/// The shop on a screen, a network and a clock in memory. Each test runs in a process of its own, as there is one SDK
/// in a process.
class ShopTest : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    explicit ShopTest(memory::Platform& platform = memory::readyShop()) : m_platform(platform) { }

    void tap()
    {
        m_shop->open(m_home);
        m_platform.runUntilIdle();
    }
    memory::Page open()
    {
        tap();
        return memory::Page(m_platform);
    }
    void breakNetwork()
    {
        m_platform.urlSession().setServer(
            [](auto const&) { return std::unexpected(memory::URLSession::notConnected()); });
    }
    void mendNetwork()
    {
        m_platform.urlSession().setServer(
            [](auto const&) { return memory::URLSession::Answer { { R"({"data": {"shopId": "shop"}})" }, { 200 } }; });
    }
    bool isOpen() const { return memory::peer(*m_home).presentedViewController() != nullptr; }

    // Nothing of what the app did was wrong, and every view has a place.
    void TearDown() override
    {
        m_platform.layout();
        EXPECT_EQ(m_platform.screen().complaints(), Texts {});
        EXPECT_EQ(m_platform.screen().ambiguities(), Texts {});
    }

    memory::Platform& m_platform;
    std::shared_ptr<memory::ViewController> m_home = std::make_shared<memory::ViewController>();
    Shop::Action m_goBack;
    std::shared_ptr<memory::View> m_footer;
    Texts m_shared;
    Texts m_errors;
    int m_departures = 0;
    std::shared_ptr<Shop> m_shop = Shop::create({
        // A view without a size of its own would have no place.
        .makeHeader =
            [this](Shop::Action goBack) {
                m_goBack = std::move(goBack);
                return std::make_shared<memory::View>(memory::IntrinsicSize { .height = 44 });
            },
        .makeFooter =
            [this] { return m_footer = std::make_shared<memory::View>(memory::IntrinsicSize { .height = 60 }); },
        .share = [this](std::string const& text) { m_shared.push_back(text); },
        .showError = [this](std::string const& code) { m_errors.push_back(code); },
        .didLeave = [this] { ++m_departures; },
    });
};

TEST_F(ShopTest, OpensAtTheUsersAddress)
{
    auto const page = open();
    EXPECT_TRUE(page.url()->ends_with("&uKey=user-key&rid=M-AD-SDK")) << *page.url();
}

TEST_F(ShopTest, APageSharesAText)
{
    auto const page = open();
    page.invoke("share", "tea");
    EXPECT_EQ(m_shared, (Texts { "tea" }));
}

TEST_F(ShopTest, APageIsAnsweredWhatItStored)
{
    auto const page = open();
    page.setItem("cup", "tea");
    page.getItem("cup", "gotItem");
    EXPECT_EQ(page.answers(), (Texts { "gotItem(\"tea\");" }));
}

TEST_F(ShopTest, APageClosesTheShop)
{
    auto const page = open();
    page.close();
    EXPECT_TRUE(page.isGone());
    EXPECT_EQ(m_departures, 1);
}

TEST_F(ShopTest, APageHidesTheFooterAndGetsItsSpace)
{
    auto const page = open();
    page.setFooterVisible(false);
    m_platform.layout();
    EXPECT_TRUE(m_footer->isHidden());
    // A hidden view keeps its place; the page reaches over it, from the header to the end of the screen.
    EXPECT_EQ(memory::frame(*m_footer), (platform::CGRect { 0, 784, 390, 60 }));
    auto const webView = ZelvoraSDK::shared().activeWebView();
    EXPECT_EQ(memory::frame(*webView), (platform::CGRect { 0, 91, 390, 753 }));
}

TEST_F(ShopTest, AFooterThatAPageHidIsThereAtTheNextVisit)
{
    open().setFooterVisible(false);
    m_goBack();
    open();
    EXPECT_FALSE(m_footer->isHidden());
}

TEST_F(ShopTest, TheBackButtonGoesThroughTheHistoryAndThenLeaves)
{
    auto const page = open();
    auto const entry = page.url();
    m_platform.webViews().back()->navigate(*platform::URL::parse("https://shop.example/cart"));
    m_goBack();
    EXPECT_EQ(page.url(), entry);
    m_goBack();
    EXPECT_FALSE(isOpen());
}

TEST_F(ShopTest, AfterAFailureTheNextTapTriesAgain)
{
    breakNetwork();
    tap();
    // The failed lookup, E200, is for the log.
    EXPECT_EQ(m_errors, (Texts { "E001" }));

    mendNetwork();
    open();
    EXPECT_TRUE(isOpen());
}

TEST_F(ShopTest, AFailureIsShownOnceHoweverOftenTheUserTaps)
{
    breakNetwork();
    for (int step = 0; step < 100 && m_errors.empty(); ++step) {
        m_shop->open(m_home);
        m_platform.globalQueue().runAll();
        m_platform.urlSession().loaderQueue().runAll();
        m_platform.mainQueue().runOne();
    }
    m_platform.runUntilIdle();
    EXPECT_EQ(m_errors, (Texts { "E001" }));
}

/// The user has not been asked about tracking yet.
class NewUserTest : public ShopTest {
protected:
    NewUserTest() : ShopTest(memory::install()) { }

    void waitForTheQuestion()
    {
        m_platform.clock().advance(0.1);
        m_platform.runUntilIdle();
    }
    void answerTheQuestion()
    {
        m_platform.trackingManager().answer(platform::ATTrackingAuthorizationStatus::Denied);
        m_platform.runUntilIdle();
    }
};

TEST_F(NewUserTest, AfterAFailureATapWaitsUntilTheUserHasAnsweredTheQuestion)
{
    breakNetwork();
    tap();
    waitForTheQuestion();
    tap();
    EXPECT_EQ(m_errors, Texts {});
    answerTheQuestion();
    EXPECT_EQ(m_errors, (Texts { "E001" }));

    mendNetwork();
    open();
    EXPECT_TRUE(isOpen());
}
