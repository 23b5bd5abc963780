#include "examples/host/ShopCover.h"

#include "examples/driving/engineOf.h"
#include "examples/host/findWidget.h"
#include "examples/host/style.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace zelvora::tests {

namespace {

using examples::Cut;
using examples::Fault;
using examples::ShopCover;
using gtk::runMainLoopUntil;

class ShopCoverTest : public testing::Test {
protected:
    ShopCoverTest()
    {
        examples::installStyle("light");
        shop.initialize();
    }

    void siteMeets(Fault const& fault) { shop.service().faults().set(examples::Target::Site, fault); }

    // Opens the shop with a cover over it, as the example host does, and does not wait for its page.
    void start()
    {
        ZelvoraSDK::shared().start(shop.presenter());
        ASSERT_TRUE(runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() != nullptr; }));
        cover = ShopCover::layOver(*ZelvoraSDK::shared().activeWebView());
    }

    void startAndLoad()
    {
        ASSERT_TRUE(shop.open());
        cover = ShopCover::layOver(*ZelvoraSDK::shared().activeWebView());
        ASSERT_TRUE(shop.openPage("links.html"));
        ASSERT_TRUE(becomesHidden());
    }

    bool becomesHidden()
    {
        return runMainLoopUntil([this] { return cover.lock()->isHidden(); });
    }

    bool showsFailure()
    {
        return runMainLoopUntil([this] { return cover.lock()->showsFailure(); });
    }

    bool showsProgress()
    {
        auto* const line = examples::findNamed(GTK_WIDGET(shop.window()), "progress");
        return line && gtk_widget_get_mapped(line);
    }

    void press(char const* name)
    {
        auto* const button = examples::findNamed(GTK_WIDGET(shop.window()), name);
        ASSERT_TRUE(button);
        EXPECT_TRUE(gtk_widget_get_mapped(button));
        g_signal_emit_by_name(button, "clicked");
    }

    LiveShop shop;
    std::weak_ptr<ShopCover> cover;
};

/// What the window draws near its left edge, half way down: the background of what is there.
std::array<guchar, 3> drawnColor(GtkWindow* window)
{
    auto* const widget = GTK_WIDGET(window);
    auto const height = gtk_widget_get_height(widget);
    auto const paintable = gtk::adopt(gtk_widget_paintable_new(widget));
    auto* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(paintable.get(), snapshot, gtk_widget_get_width(widget), height);
    std::unique_ptr<GskRenderNode, gtk::Releasing<gsk_render_node_unref>> const node(
        gtk_snapshot_free_to_node(snapshot));
    if (!node)
        return {};
    graphene_rect_t const place { { 2, static_cast<float>(height / 2) }, { 1, 1 } };
    auto const texture =
        gtk::adopt(gsk_renderer_render_texture(gtk_native_get_renderer(GTK_NATIVE(widget)), node.get(), &place));
    std::array<guchar, 4> bytes {};
    gdk_texture_download(texture.get(), bytes.data(), bytes.size());
    return { bytes[0], bytes[1], bytes[2] };
}

}

TEST_F(ShopCoverTest, TheAppShowsThatTheFirstPageIsOnItsWayUntilItIsThere)
{
    siteMeets({ .delay = std::chrono::milliseconds(700), .requests = 1 });
    start();
    EXPECT_FALSE(runMainLoopUntil([this] { return cover.lock()->isHidden(); }, 0.3));
    EXPECT_FALSE(cover.lock()->showsFailure());
    EXPECT_TRUE(becomesHidden());
}

TEST_F(ShopCoverTest, APageThatCannotBeReachedIsReplacedByTheAppsOwnAndTryingAgainLoadsIt)
{
    siteMeets({ .cut = Cut::BeforeAnswer });
    start();
    ASSERT_TRUE(showsFailure());
    press("try-again");
    EXPECT_FALSE(cover.lock()->showsFailure()) << "it says that it tries";
    ASSERT_TRUE(showsFailure());
    shop.service().faults().reset();
    press("try-again");
    EXPECT_TRUE(becomesHidden());
    EXPECT_TRUE(ZelvoraSDK::shared().getCurrentUrl().value().ends_with("&rid=M-AD-SDK"));
}

TEST_F(ShopCoverTest, AServersErrorIsNoPageToShow)
{
    siteMeets({ .status = 503 });
    start();
    ASSERT_TRUE(showsFailure());
    shop.service().faults().reset();
    press("try-again");
    EXPECT_TRUE(becomesHidden());
}

TEST_F(ShopCoverTest, APageThatFailsLaterLeavesTheOneBeforeItToGoBackTo)
{
    startAndLoad();
    siteMeets({ .cut = Cut::BeforeAnswer });
    shop.page().click("to-shop");
    ASSERT_TRUE(showsFailure());
    press("back");
    EXPECT_TRUE(cover.lock()->isHidden());
    EXPECT_EQ(shop.page().evaluate("location.pathname"), R"("/v1/links.html")");
}

TEST_F(ShopCoverTest, ALineShowsHowFarAPageIsUntilItIsThereOrHasFailed)
{
    siteMeets({ .delay = std::chrono::milliseconds(700), .requests = 1 });
    start();
    EXPECT_TRUE(runMainLoopUntil([this] { return showsProgress(); }));
    ASSERT_TRUE(becomesHidden());
    EXPECT_TRUE(runMainLoopUntil([this] { return !showsProgress(); }));
    siteMeets({ .cut = Cut::BeforeAnswer });
    webkit_web_view_reload(examples::engineOf(*ZelvoraSDK::shared().activeWebView()));
    ASSERT_TRUE(showsFailure());
    EXPECT_FALSE(runMainLoopUntil([this] { return showsProgress(); }, 0.3));
}

TEST_F(ShopCoverTest, WhatIsShownAgainIsAlsoDrawn)
{
    siteMeets({ .delay = std::chrono::milliseconds(700), .requests = 1 });
    start();
    auto const colorOfCover = drawnColor(shop.window());
    ASSERT_TRUE(becomesHidden());
    ASSERT_TRUE(runMainLoopUntil([&] { return drawnColor(shop.window()) != colorOfCover; }));
    siteMeets({ .cut = Cut::BeforeAnswer });
    webkit_web_view_reload(examples::engineOf(*ZelvoraSDK::shared().activeWebView()));
    ASSERT_TRUE(showsFailure());
    EXPECT_TRUE(runMainLoopUntil([&] { return drawnColor(shop.window()) == colorOfCover; }, 5));
}

TEST_F(ShopCoverTest, ALinkThatTheSDKHandsToAnotherAppIsNoFailure)
{
    startAndLoad();
    shop.page().click("link-unknown");
    EXPECT_FALSE(runMainLoopUntil([this] { return cover.lock()->showsFailure(); }, 1));
    EXPECT_TRUE(cover.lock()->isHidden());
}

TEST_F(ShopCoverTest, TheCoverGoesWithItsContainer)
{
    startAndLoad();
    ASSERT_TRUE(shop.openPage("bridge.html"));
    shop.page().click("btn-close");
    EXPECT_TRUE(runMainLoopUntil([this] { return cover.expired(); }));
}

}
