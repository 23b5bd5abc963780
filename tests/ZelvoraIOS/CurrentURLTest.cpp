#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <optional>

namespace zelvora::tests {

namespace {

class CurrentURLTest : public AuthorizedContainerTest { };

TEST_F(CurrentURLTest, BeforeAnyWebViewThereIsNoCurrentUrl)
{
    EXPECT_FALSE(sdk().getCurrentUrl());
    initializeAndFinish();
    EXPECT_FALSE(sdk().getCurrentUrl());
    sdk().start(presenter);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(CurrentURLTest, OnceTheContainerIsShownTheCurrentUrlIsThatOfItsPage)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/?adid=AD-1&uKey=user-1&rid=M-AD-SDK");

    engine().navigate(url("https://shop-1.shop.zelvora.example/v1/cart"));
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/cart");
    engine().setURL(std::nullopt);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(CurrentURLTest, TheWebViewThatWasMadeLastHasTheCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    engine().navigate(url("https://shop-1.shop.zelvora.example/v1/container"));

    auto const created = sdk().createWebView();
    EXPECT_EQ(sdk().getCurrentUrl(), created->currentUrl());
    EXPECT_NE(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/container");

    engine(*created).navigate(url("https://shop-1.shop.zelvora.example/v1/created"));
    sdk().start(makeStack());
    platform.runUntilIdle();
    EXPECT_NE(sdk().getCurrentUrl(), "https://shop-1.shop.zelvora.example/v1/created");
}

TEST_F(CurrentURLTest, OnceTheHostDropsACreatedWebViewThereIsNoCurrentUrl)
{
    initializeAndFinish();
    auto view = sdk().createWebView();
    ASSERT_TRUE(sdk().getCurrentUrl());
    view.reset();
    EXPECT_FALSE(sdk().activeWebView());
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(CurrentURLTest, AClosedContainerThatTheHostKeepsStillHasTheCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    auto const container = containerPresentedBy(*presenter);
    container->dismiss(Animated::No);
    EXPECT_FALSE(containerPresentedBy(*presenter));
    EXPECT_TRUE(sdk().getCurrentUrl());
}

TEST_F(CurrentURLTest, AClosedContainerThatNobodyKeepsHasNoCurrentUrl)
{
    initializeAndFinish();
    sdk().start(presenter);
    platform.runUntilIdle();
    presenter->dismiss(Animated::No);
    EXPECT_FALSE(sdk().getCurrentUrl());
}

TEST_F(CurrentURLTest, TheActiveWebViewIsHeldWeaklyAndMayBeSetByTheHost)
{
    auto webView = std::make_shared<ZelvoraWebView>(platform::CGRect {}, "https://shop.example/", false);
    sdk().setActiveWebView(webView);
    EXPECT_EQ(sdk().activeWebView(), webView);
    webView.reset();
    EXPECT_EQ(sdk().activeWebView(), nullptr);
}

}

}
