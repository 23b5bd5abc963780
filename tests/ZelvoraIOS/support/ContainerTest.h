#pragma once

#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraAdapters/memory/WebKit/WebView.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace zelvora::platform {

void PrintTo(CGRect const& rect, std::ostream* stream);
void PrintTo(NSLayoutConstraint const& constraint, std::ostream* stream);
void PrintTo(WKNavigationActionPolicy policy, std::ostream* stream);

}

namespace zelvora::memory {

void PrintTo(Transition const& transition, std::ostream* stream);

}

namespace zelvora::tests {

using platform::Animated;
using platform::CGRect;

/// A host's delegate that remembers what it was asked and told.
class DelegateSpy final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) override;
    void zelvoraSDKWillDismiss() override;

    bool answer = true;
    std::vector<ZelvoraWebView const*> askedWith;
    std::size_t dismissals = 0;
    /// Called before the answer is given.
    std::function<void()> onAsked;
    std::function<void()> onWillDismiss;
};

/// What it takes to put containers on the screen in memory: 390 by 844 points, 47 of them safe area at the top.
class ContainerTest : public SDKTest {
protected:
    static constexpr char const* entryUrl = "https://shop-1.shop.zelvora.example/v1/";
    static constexpr double safeTop = 47;
    static constexpr double screenWidth = 390;
    static constexpr double screenHeight = 844;

    using SDKTest::SDKTest;

    /// Carries through an initialization that a test began: the lookup answers with "shop-1", a prompt for tracking is
    /// answered with authorized.
    void finishInitialization();

    /// A container that was made by hand, with its root view loaded.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> makeContainer(std::string const& url = entryUrl);
    /// The container that the host's screen presents, or nullptr.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> containerPresentedBy(
        platform::UIViewController const& presenter);
    /// The container on top of a stack, or nullptr.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> containerOn(
        memory::NavigationController const& stack);
    /// A stack that holds the screen.
    [[nodiscard]] static std::shared_ptr<memory::NavigationController> makeStack(
        std::shared_ptr<platform::UIViewController> root = std::make_shared<memory::ViewController>(),
        memory::NavigationController::SwipeToPop swipe = memory::NavigationController::SwipeToPop::Yes);

    /// A view of a height of its own, as hosts' headers and footers are.
    [[nodiscard]] static std::shared_ptr<memory::View> makeBar(double height);
    /// Lets containers have the view as their header or footer.
    static void setHeader(std::shared_ptr<platform::UIView> view);
    static void setFooter(std::shared_ptr<platform::UIView> view);

    /// The system's web view in one of the SDK's.
    [[nodiscard]] static memory::WebView& engine(ZelvoraWebView const& view);
    /// That of the container that was made last.
    [[nodiscard]] static memory::WebView& engine();

    /// The page of the container that was made last posts to the bridge.
    static void post(Dictionary body);

    [[nodiscard]] static platform::URL url(std::string const& text);
};

/// The user has allowed tracking, so that the entry URL names the advertising identifier "AD-1".
class AuthorizedContainerTest : public ContainerTest {
protected:
    AuthorizedContainerTest() : ContainerTest({ .trackingStatus = platform::ATTrackingAuthorizationStatus::Authorized })
    {
    }

    void SetUp() override { platform.identifierManager().setAdvertisingIdentifier("AD-1"); }

    std::shared_ptr<memory::ViewController> presenter = std::make_shared<memory::ViewController>();
};

}
