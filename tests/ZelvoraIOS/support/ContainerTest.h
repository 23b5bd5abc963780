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

void PrintTo(NSLayoutConstraint const& constraint, std::ostream* stream);
void PrintTo(WKNavigationActionPolicy policy, std::ostream* stream);

}

namespace zelvora::memory {

void PrintTo(Transition const& transition, std::ostream* stream);

}

namespace zelvora::tests {

using platform::Animated;
using platform::CGRect;

/// A host's delegate that records its calls.
class DelegateSpy final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) override;
    void zelvoraSDKWillDismiss() override;

    bool answer = true;
    std::vector<ZelvoraWebView const*> askedWith;
    std::size_t dismissals = 0;
    /// Called before the answer is returned.
    std::function<void()> onAsked;
    std::function<void()> onWillDismiss;
};

/// Shows containers on the screen in memory: 390 by 844 points, with 47 points outside the safe area at the top.
class ContainerTest : public SDKTest {
protected:
    static constexpr char const* entryUrl = "https://shop-1.shop.zelvora.example/v1/";
    static constexpr double safeTop = 47;
    static constexpr double screenWidth = 390;
    static constexpr double screenHeight = 844;

    using SDKTest::SDKTest;

    /// Runs an initialization that a test has started to its end: the lookup answers with "shop-1", and a prompt for
    /// tracking is answered with authorized.
    void finishInitialization();

    /// A container created directly, with its root view loaded.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> makeContainer(std::string const& url = entryUrl);
    /// The container that the host's screen presents, or nullptr.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> containerPresentedBy(
        platform::UIViewController const& presenter);
    /// The container on top of a stack, or nullptr.
    [[nodiscard]] static std::shared_ptr<ZelvoraIOSViewController> containerOn(
        memory::NavigationController const& stack);
    /// A stack with this screen on it.
    [[nodiscard]] static std::shared_ptr<memory::NavigationController> makeStack(
        std::shared_ptr<platform::UIViewController> root = std::make_shared<memory::ViewController>(),
        memory::NavigationController::SwipeToPop swipe = memory::NavigationController::SwipeToPop::Yes);

    /// A view with an intrinsic height, as hosts' headers and footers have.
    [[nodiscard]] static std::shared_ptr<memory::View> makeBar(double height);
    /// Makes containers use the view as their header or footer.
    static void setHeader(std::shared_ptr<platform::UIView> view);
    static void setFooter(std::shared_ptr<platform::UIView> view);

    /// The system's web view inside one of the SDK's.
    [[nodiscard]] static memory::WebView& engine(ZelvoraWebView const& view);
    /// The one in the active web view.
    [[nodiscard]] static memory::WebView& engine();

    /// Posts to the bridge from the page in the active web view.
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
