#include "ZelvoraAdapters/memory/ForwardingPlatform.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zelvora::tests {

namespace {

class ForwardingPlatformTest : public InstalledPlatform {
protected:
    memory::ForwardingPlatform forwarding { platform };
};

/// Replaces one service, as hosts do.
class OtherClockPlatform final : public memory::ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;

    // platform::Platform
    [[nodiscard]] memory::Clock& clock() override { return m_clock; }

private:
    memory::Clock m_clock;
};

}

TEST_F(ForwardingPlatformTest, EveryServiceIsTheTargets)
{
    EXPECT_EQ(&forwarding.target(), &platform);
    EXPECT_EQ(&forwarding.mainBundle(), &platform.mainBundle());
    EXPECT_EQ(&forwarding.clock(), &platform.clock());
    EXPECT_EQ(&forwarding.standardUserDefaults(), &platform.standardUserDefaults());
    EXPECT_EQ(&forwarding.notificationCenter(), &platform.notificationCenter());
    EXPECT_EQ(&forwarding.urlSession(), &platform.urlSession());
    EXPECT_EQ(&forwarding.jsonSerialization(), &platform.jsonSerialization());
    EXPECT_EQ(&forwarding.mainQueue(), &platform.mainQueue());
    EXPECT_EQ(&forwarding.globalQueue(), &platform.globalQueue());
    EXPECT_EQ(&forwarding.trackingManager(), &platform.trackingManager());
    EXPECT_EQ(&forwarding.identifierManager(), &platform.identifierManager());
    EXPECT_EQ(&forwarding.application(), &platform.application());
}

TEST_F(ForwardingPlatformTest, TheServiceAddressesAreTheTargets)
{
    EXPECT_FALSE(forwarding.serviceAddresses());
    platform::ServiceAddresses addresses;
    addresses.lookupEndpoint = "https://lookup.test/";
    platform.setServiceAddresses(addresses);
    ASSERT_TRUE(forwarding.serviceAddresses());
    EXPECT_EQ(forwarding.serviceAddresses(), addresses);
}

TEST_F(ForwardingPlatformTest, TheMainThreadAndComplaintsAreTheTargets)
{
    EXPECT_TRUE(forwarding.isMainThread());
    std::thread([this] { EXPECT_FALSE(forwarding.isMainThread()); }).join();
    forwarding.complain("This is wrong.");
    EXPECT_EQ(screen.complaints(), (std::vector<std::string> { "This is wrong." }));
}

TEST_F(ForwardingPlatformTest, LoggersAreTheTargets)
{
    forwarding.makeLogger("com.example", "category")->log(platform::OSLogType::Info, "message");
    EXPECT_EQ(platform.log().loggersMade(), (std::vector<memory::Log::Handle> { { "com.example", "category" } }));
    EXPECT_TRUE(platform.log().holds(platform::OSLogType::Info, "message"));
}

TEST_F(ForwardingPlatformTest, ViewsAndControllersHaveTheTargetsPeers)
{
    platform::UIView view;
    auto const viewPeer = forwarding.makeViewPeer(view, { 1, 2, 3, 4 }, std::nullopt);
    auto const* const memoryViewPeer = dynamic_cast<memory::UIViewPeer const*>(viewPeer.get());
    ASSERT_TRUE(memoryViewPeer);
    EXPECT_EQ(&memoryViewPeer->owner(), &view);
    EXPECT_EQ(memoryViewPeer->frame(), (platform::CGRect { 1, 2, 3, 4 }));

    platform::UIViewController controller;
    auto const controllerPeer = forwarding.makeViewControllerPeer(controller, std::nullopt);
    auto const* const memoryControllerPeer = dynamic_cast<memory::UIViewControllerPeer const*>(controllerPeer.get());
    ASSERT_TRUE(memoryControllerPeer);
    EXPECT_EQ(&memoryControllerPeer->screen(), &screen);
}

TEST_F(ForwardingPlatformTest, WebViewsAndTheirContentAreMadeByTheTarget)
{
    auto const content = forwarding.makeUserContentController();
    EXPECT_TRUE(std::dynamic_pointer_cast<memory::UserContentController>(content));
    auto const webView = forwarding.makeWebView({ 1, 2, 3, 4 }, { content });
    ASSERT_EQ(platform.webViews().size(), 1U);
    EXPECT_EQ(platform.webViews().front(), webView);
    EXPECT_EQ(memory::frame(*webView), (platform::CGRect { 1, 2, 3, 4 }));
    EXPECT_EQ(webView->configuration().userContentController, content);
}

TEST_F(ForwardingPlatformTest, AnimationsRunOnTheTargetsScreen)
{
    int runs = 0;
    forwarding.animate(0.25, [&runs] { ++runs; });
    EXPECT_EQ(runs, 1);
    ASSERT_EQ(screen.animations().size(), 1U);
    EXPECT_EQ(screen.animations().front().duration, 0.25);
}

TEST_F(ForwardingPlatformTest, ADerivedPlatformReplacesSingleServices)
{
    OtherClockPlatform derived { platform };
    platform::Platform& used = derived;
    EXPECT_NE(&used.clock(), &platform.clock());
    EXPECT_EQ(&used.mainBundle(), &platform.mainBundle());
}

TEST_F(ForwardingPlatformTest, AnOwnedTargetIsDestroyedWithIt)
{
    auto owned = std::make_unique<memory::Platform>();
    auto& target = *owned;
    auto block = std::make_shared<int>();
    target.mainQueue().async([block] { });
    {
        memory::ForwardingPlatform const owning(std::move(owned));
        EXPECT_EQ(&owning.target(), &target);
        EXPECT_EQ(block.use_count(), 2);
    }
    EXPECT_EQ(block.use_count(), 1);
}

TEST(ForwardingPlatformDeathTest, ATargetThatIsNullStopsTheProcess)
{
    EXPECT_DEATH(memory::ForwardingPlatform(std::unique_ptr<platform::Platform>()), "needs a target");
}

}
