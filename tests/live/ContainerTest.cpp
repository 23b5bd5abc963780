#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using gtk::runMainLoopUntil;

class Delegate final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView&) override
    {
        ++swipes;
        return handlesSwipes;
    }
    void zelvoraSDKWillDismiss() override { ++dismissals; }

    bool handlesSwipes = true;
    int swipes = 0;
    int dismissals = 0;
};

class ContainerTest : public testing::Test {
protected:
    void open()
    {
        shop.initialize(delegate);
        ASSERT_TRUE(shop.open());
    }

    // Drags the display's pointer from the left edge over more than half of the page.
    void swipeFromLeftEdge()
    {
        std::string const command = "xdotool mousemove 4 400 mousedown 1 mousemove 40 402 mousemove 120 404 "
                                    "mousemove 250 405 mousemove 300 405 mouseup 1";
        GError* error = nullptr;
        auto const started = g_spawn_command_line_async(command.c_str(), &error);
        ASSERT_TRUE(started) << error->message;
    }

    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    LiveShop shop;
};

bool contains(std::string const& text, std::string const& part)
{
    return text.find(part) != std::string::npos;
}

}

TEST_F(ContainerTest, AnEntryURLWithInvalidCharactersIsEncodedAndLoads)
{
    open();
    EXPECT_EQ(ZelvoraSDK::shared().getCurrentUrl(),
        "https://hanok.shop.zelvora.localhost:" + std::to_string(shop.port())
            + "/v1/?adid=unknown&uKey=user%20%EA%B0%80&rid=M-AD-SDK");
}

TEST_F(ContainerTest, TheHostIsToldOfEveryURLChangeAlsoWithoutALoad)
{
    open();
    ASSERT_TRUE(shop.openPage("cart.html"));
    (void)shop.page().evaluate("(history.pushState({}, '', '?pushed=1'), location.hash = 'place', true)");
    auto const wasReported = [this] { return !shop.urls().empty() && shop.urls().back().ends_with("?pushed=1#place"); };
    EXPECT_TRUE(runMainLoopUntil(wasReported));
    ASSERT_GE(shop.urls().size(), 3U);
    EXPECT_TRUE(shop.urls().at(shop.urls().size() - 2).ends_with("?pushed=1"));
    EXPECT_TRUE(contains(shop.urls().at(shop.urls().size() - 3), "/cart.html"));
    EXPECT_EQ(ZelvoraSDK::shared().getCurrentUrl(), shop.urls().back());
}

TEST_F(ContainerTest, OnlyWebSchemesAreFollowedAndTheOthersAreNotOpenedWithoutAnApp)
{
    open();
    ASSERT_TRUE(shop.openPage("links.html"));
    testing::internal::CaptureStdout();
    shop.page().click("link-unknown");
    shop.page().click("link-tel");
    shop.page().click("btn-data-frame");
    shop.page().click("btn-custom-frame");
    (void)shop.page().waitFor("false", 1);
    std::fflush(stdout);
    auto const output = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(contains(output, "[ZelvoraSDK-debug] Cannot open external scheme: nobody-knows-this://nowhere\n"));
    EXPECT_TRUE(contains(output, "[ZelvoraSDK-debug] Cannot open external scheme: tel:+82212345678\n"));
    EXPECT_TRUE(contains(output, "[ZelvoraSDK-debug] Cannot open external scheme: data:text/html"));
    EXPECT_TRUE(contains(output, "[ZelvoraSDK-debug] Cannot open external scheme: zelvora-demo://frame\n"));
    EXPECT_EQ(shop.page().evaluate("location.pathname"), R"("/v1/links.html")");

    shop.page().click("link-https-upper");
    EXPECT_TRUE(shop.page().waitUntilReady("/index.html"));
    ASSERT_TRUE(shop.openPage("links.html"));
    shop.page().click("link-about-blank");
    EXPECT_TRUE(shop.page().waitFor("location.href === 'about:blank'"));
}

TEST_F(ContainerTest, ASwipeFromTheLeftEdgeGoesBackInThePageFirstAndThenLeaves)
{
    open();
    ASSERT_TRUE(shop.openPage("cart.html"));
    swipeFromLeftEdge();
    EXPECT_TRUE(shop.page().waitUntilReady("/v1/"));
    EXPECT_EQ(delegate->swipes, 1);
    EXPECT_EQ(delegate->dismissals, 0);

    swipeFromLeftEdge();
    EXPECT_TRUE(runMainLoopUntil([this] { return delegate->dismissals == 1; }));
    EXPECT_EQ(delegate->swipes, 2);
}

TEST_F(ContainerTest, ADelegateThatHandlesTheSwipeItselfKeepsThePageWhereItIs)
{
    delegate->handlesSwipes = false;
    open();
    ASSERT_TRUE(shop.openPage("cart.html"));
    swipeFromLeftEdge();
    EXPECT_TRUE(runMainLoopUntil([this] { return delegate->swipes == 1; }));
    EXPECT_FALSE(shop.page().waitFor("!location.pathname.endsWith('/cart.html')", 0.5));
    EXPECT_EQ(delegate->dismissals, 0);
}

TEST_F(ContainerTest, HidingTheFooterLetsThePageGrowToTheBottomWithinTheAnimation)
{
    open();
    auto const height = [this] { return std::stoi(shop.page().evaluate("innerHeight").value_or("0")); };
    auto const withFooter = height();
    ZelvoraSDK::shared().setFooterVisible(false);
    auto const begin = g_get_monotonic_time();
    EXPECT_TRUE(runMainLoopUntil([&] { return height() == withFooter + 60; }));
    auto const seconds = static_cast<double>(g_get_monotonic_time() - begin) / G_USEC_PER_SEC;
    EXPECT_GE(seconds, 0.2) << "it moves there, it does not jump";
    ZelvoraSDK::shared().setFooterVisible(true);
    EXPECT_TRUE(runMainLoopUntil([&] { return height() == withFooter; }));
}

TEST_F(ContainerTest, ClosingFromThePageDismissesUploadsAndLeavesNothingBehind)
{
    open();
    shop.page().click("product-moon-jar");
    ASSERT_TRUE(runMainLoopUntil([] { return !ZelvoraStorage::getEventTrackingData().isEmpty(); }));
    ASSERT_TRUE(shop.openPage("bridge.html"));
    shop.page().click("btn-close");
    EXPECT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() == nullptr; }));
    EXPECT_EQ(delegate->dismissals, 1);
    EXPECT_TRUE(runMainLoopUntil([] { return ZelvoraStorage::getEventTrackingData().isEmpty(); }));
    EXPECT_GE(shop.collectedBatches(), 1U);
    EXPECT_FALSE(ZelvoraSDK::shared().getCurrentUrl());
}

TEST_F(ContainerTest, ALaunchDuringInitializationHappensWhenItEnds)
{
    shop.initialize(delegate);
    EXPECT_TRUE(ZelvoraSDK::shared().start(shop.presenter()));
    EXPECT_EQ(ZelvoraSDK::shared().activeWebView(), nullptr);
    EXPECT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() != nullptr; }));
}

}
