#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::tests {

namespace {

/// A platform that remembers the native classes that it is asked for, "any" where none is named.
class NamingPlatform final : public ForwardingPlatform {
public:
    // platform::Platform
    [[nodiscard]] std::unique_ptr<platform::UIView::Peer> makeViewPeer(
        platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view> nativeClass) override
    {
        viewClasses.emplace_back(nativeClass.value_or("any"));
        return ForwardingPlatform::makeViewPeer(owner, frame, nativeClass);
    }
    [[nodiscard]] std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(
        platform::UIViewController& owner, std::optional<std::string_view> nativeClass) override
    {
        controllerClasses.emplace_back(nativeClass.value_or("any"));
        return ForwardingPlatform::makeViewControllerPeer(owner, nativeClass);
    }

    std::vector<std::string> viewClasses;
    std::vector<std::string> controllerClasses;
};

class NativeClassTest : public testing::Test {
protected:
    NamingPlatform& platform = install<NamingPlatform>();
};

TEST_F(NativeClassTest, AViewOrAControllerNamesNoneUnlessItIsTold)
{
    platform::UIView const view;
    platform::UIViewController const controller;
    EXPECT_EQ(platform.viewClasses, std::vector<std::string> { "any" });
    EXPECT_EQ(platform.controllerClasses, std::vector<std::string> { "any" });
}

TEST_F(NativeClassTest, TheNameReachesThePlatform)
{
    platform::UIView const view({ 1, 2, 3, 4 }, "ShopView");
    platform::UIViewController const controller("ShopScreen");
    EXPECT_EQ(platform.viewClasses, std::vector<std::string> { "ShopView" });
    EXPECT_EQ(platform.controllerClasses, std::vector<std::string> { "ShopScreen" });
}

TEST_F(NativeClassTest, AForwardingPlatformPassesTheNameOn)
{
    platform::Platform& target = platform;
    memory::ForwardingPlatform forwarding(target);
    platform::UIView view;
    platform::UIViewController controller;
    (void)forwarding.makeViewPeer(view, {}, "ShopView");
    (void)forwarding.makeViewControllerPeer(controller, "ShopScreen");
    EXPECT_EQ(platform.viewClasses, (std::vector<std::string> { "any", "ShopView" }));
    EXPECT_EQ(platform.controllerClasses, (std::vector<std::string> { "any", "ShopScreen" }));
}

TEST_F(NativeClassTest, AnSDKsWebViewIsOfTheClassThatHostsKnow)
{
    auto const view = std::make_shared<ZelvoraWebView>(platform::CGRect {}, "https://shop.example/", false);
    ASSERT_FALSE(platform.viewClasses.empty());
    EXPECT_EQ(platform.viewClasses.front(), "ZelvoraWebView");
}

TEST_F(NativeClassTest, AContainerIsOfTheClassThatHostsKnow)
{
    auto const container = std::make_shared<ZelvoraIOSViewController>("https://shop.example/");
    EXPECT_EQ(platform.controllerClasses, std::vector<std::string> { "ZelvoraIOSViewController" });
}

}

}
