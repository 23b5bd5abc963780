#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace zelvora::tests {

namespace {

constexpr auto rounds = 100;

class LifetimeTest : public ContainerTest {
protected:
    void SetUp() override
    {
        sdk().setHeaderViewProvider([this](platform::UIViewController&) { return watched(makeBar(44)); });
        sdk().setFooterViewProvider([this](platform::UIViewController&) { return watched(makeBar(60)); });
        initializeAndFinish({ .allowsSwipeBack = true,
            .headerViewProvider = sdk().headerViewProvider(),
            .footerViewProvider = sdk().footerViewProvider(),
            .delegate = delegate });
    }

    // Adds the object to those that must be destroyed in the end.
    template<typename Object>
    std::shared_ptr<Object> watched(std::shared_ptr<Object> object)
    {
        m_watched.push_back(object);
        return object;
    }

    void watchContainer(std::shared_ptr<ZelvoraIOSViewController> const& container)
    {
        ASSERT_TRUE(container);
        watched(container);
        watched(container->view().shared_from_this());
        watched(sdk().activeWebView());
        watched(platform.webViews().back());
        watched(platform.webViews().back()->configuration().userContentController);
        for (auto const& recognizer : container->view().gestureRecognizers())
            watched(recognizer);
    }

    [[nodiscard]] std::size_t watchedCount() const { return m_watched.size(); }
    [[nodiscard]] std::size_t aliveCount() const
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(m_watched, [](auto const& object) { return !object.expired(); }));
    }

    void expectNothingLeft()
    {
        EXPECT_EQ(aliveCount(), 0U);
        EXPECT_TRUE(platform.webViews().empty());
        EXPECT_FALSE(sdk().activeWebView());
        EXPECT_FALSE(sdk().getCurrentUrl());
        EXPECT_EQ(platform.notificationCenter().observerCount("ZelvoraFooterVisibilityChanged"), 0U);
        EXPECT_TRUE(platform.mainQueue().isEmpty());
        EXPECT_FALSE(ZelvoraSDKInspector::properties().pendingViewController);
    }

    // Some of what a page and its user do.
    void use()
    {
        platform.runUntilIdle();
        engine().navigate(url("https://shop.example/next"));
        post({ { "action", "setItem" }, { "key", "k" }, { "value", "v" } });
        post({ { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
        post({ { "action", "saveEvent" }, { "data", Dictionary { { "name", "a" } } } });
        post({ { "action", "setFooterVisible" }, { "visible", !sdk().isFooterVisible() } });
        platform.runUntilIdle();
        platform.layout();
    }

    // The collector answers, so that no upload is left open.
    void answerUploads()
    {
        while (platform.urlSession().unansweredCount() > 0)
            platform.urlSession().answer(200);
        platform.runUntilIdle();
    }

    std::shared_ptr<DelegateSpy> delegate = std::make_shared<DelegateSpy>();
    std::shared_ptr<memory::ViewController> presenter = std::make_shared<memory::ViewController>();

private:
    std::vector<std::weak_ptr<void const>> m_watched;
};

TEST_F(LifetimeTest, AHundredPresentedContainersDismissedByTheHostLeaveNothingBehind)
{
    for (auto round = 0; round < rounds; ++round) {
        ASSERT_TRUE(sdk().start(presenter));
        platform.runUntilIdle();
        watchContainer(containerPresentedBy(*presenter));
        use();
        presenter->dismiss(Animated::Yes);
        expectNothingLeft();
    }
    answerUploads();
    EXPECT_EQ(delegate->dismissals, static_cast<std::size_t>(rounds));
    // The screen, its root view, both web views, the content controller, the recogniser, header and footer.
    EXPECT_EQ(watchedCount(), 8U * rounds);
    expectNothingLeft();
}

TEST_F(LifetimeTest, AHundredPushedContainersPoppedByTheHostLeaveNothingBehind)
{
    auto const stack = makeStack();
    for (auto round = 0; round < rounds; ++round) {
        ASSERT_TRUE(sdk().start(stack));
        platform.runUntilIdle();
        watchContainer(containerOn(*stack));
        use();
        stack->popViewController(Animated::Yes);
        expectNothingLeft();
    }
    answerUploads();
    EXPECT_EQ(delegate->dismissals, static_cast<std::size_t>(rounds));
    EXPECT_EQ(watchedCount(), 8U * rounds);
    // The system keeps a weak reference to it.
    EXPECT_FALSE(stack->interactivePopGestureRecognizer()->delegate());
}

TEST_F(LifetimeTest, AHundredContainersClosedByTheirPagesLeaveNothingBehind)
{
    for (auto round = 0; round < rounds; ++round) {
        ASSERT_TRUE(sdk().start(presenter));
        platform.runUntilIdle();
        watchContainer(containerPresentedBy(*presenter));
        use();
        post({ { "action", "close" } });
        platform.runUntilIdle();
        expectNothingLeft();
    }
    answerUploads();
    EXPECT_EQ(watchedCount(), 8U * rounds);
}

TEST_F(LifetimeTest, AHundredContainersLeftBySwipesLeaveNothingBehind)
{
    auto const stack = makeStack();
    for (auto round = 0; round < rounds; ++round) {
        auto const isPushed = round % 2 == 0;
        ASSERT_TRUE(sdk().start(isPushed ? std::shared_ptr<platform::UIViewController>(stack) : presenter));
        platform.runUntilIdle();
        watchContainer(isPushed ? containerOn(*stack) : containerPresentedBy(*presenter));
        use();
        // The system keeps the gesture's view alive during the gesture.
        auto root = engine().superview()->superview()->shared_from_this();
        memory::edgePan(*root);
        memory::edgePan(*root);
        root.reset();
        expectNothingLeft();
    }
    answerUploads();
    expectNothingLeft();
    EXPECT_EQ(delegate->dismissals, static_cast<std::size_t>(rounds));
}

TEST_F(LifetimeTest, AHundredCreatedWebViewsLeaveNothingBehind)
{
    for (auto round = 0; round < rounds; ++round) {
        auto const view = watched(sdk().createWebView());
        ASSERT_TRUE(view);
        watched(platform.webViews().back());
        use();
    }
    EXPECT_EQ(watchedCount(), 2U * rounds);
    expectNothingLeft();
}

TEST_F(LifetimeTest, AHundredContainersThatAreGoneBeforeTheirQueuedWorkHasRunLeaveNothingBehind)
{
    for (auto round = 0; round < rounds; ++round) {
        sdk().start(presenter);
        platform.mainQueue().runOne();
        watchContainer(containerPresentedBy(*presenter));
        post({ { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
        sdk().setFooterVisible(round % 2 == 0);
        post({ { "action", "close" } });
        presenter->dismiss(Animated::No);
        EXPECT_GT(aliveCount(), 0U);
        platform.runUntilIdle();
        expectNothingLeft();
    }
}

TEST_F(LifetimeTest, AQueuedCloseKeepsTheControllerAlive)
{
    sdk().start(presenter);
    platform.runUntilIdle();
    std::weak_ptr<ZelvoraIOSViewController> const weak = containerPresentedBy(*presenter);
    post({ { "action", "close" } });
    presenter->dismiss(Animated::No);
    EXPECT_FALSE(weak.expired());
    platform.runUntilIdle();
    EXPECT_TRUE(weak.expired());
}

TEST_F(LifetimeTest, AQueuedAnswerKeepsTheWebViewAliveAndNotTheController)
{
    sdk().start(presenter);
    platform.runUntilIdle();
    std::weak_ptr<ZelvoraIOSViewController> const controller = containerPresentedBy(*presenter);
    std::weak_ptr<ZelvoraWebView> const view = sdk().activeWebView();
    std::weak_ptr<memory::WebView> const page = platform.webViews().back();
    post({ { "action", "getItem" }, { "key", "k" }, { "callback", "f" } });
    presenter->dismiss(Animated::No);
    EXPECT_TRUE(controller.expired());
    EXPECT_TRUE(view.expired());
    ASSERT_FALSE(page.expired());

    auto const held = page.lock();
    platform.runUntilIdle();
    EXPECT_EQ(held->evaluated().back(), "f(null);");
}

TEST_F(LifetimeTest, AQueuedAnswerReleasesTheWebViewOnceItHasRun)
{
    sdk().start(presenter);
    platform.runUntilIdle();
    std::weak_ptr<memory::WebView> const page = platform.webViews().back();
    post({ { "action", "getEvents" }, { "callback", "f" } });
    presenter->dismiss(Animated::No);
    EXPECT_FALSE(page.expired());
    platform.runUntilIdle();
    EXPECT_TRUE(page.expired());
}

TEST_F(LifetimeTest, AnUploadInProgressKeepsNoContainerAlive)
{
    sdk().start(presenter);
    platform.runUntilIdle();
    watchContainer(containerPresentedBy(*presenter));
    saveEvents(3);
    presenter->dismiss(Animated::No);
    EXPECT_EQ(platform.urlSession().unansweredCount(), 1U);
    EXPECT_EQ(aliveCount(), 0U);
    answerUploads();
    EXPECT_TRUE(ZelvoraStorage::getEventTrackingData().isEmpty());
}

TEST_F(LifetimeTest, AContainerThatWasNeverShownLeavesNothing)
{
    watched(std::make_shared<ZelvoraIOSViewController>(entryUrl));
    expectNothingLeft();
    watchContainer(makeContainer());
    platform.runUntilIdle();
    expectNothingLeft();
}

TEST_F(LifetimeTest, TheFacadeKeepsNeitherPresenterNorContainerNorDelegate)
{
    sdk().start(presenter);
    platform.runUntilIdle();
    watchContainer(containerPresentedBy(*presenter));
    watched(std::exchange(presenter, nullptr));
    watched(std::exchange(delegate, nullptr));
    expectNothingLeft();
    EXPECT_FALSE(sdk().delegate());
}

TEST_F(LifetimeTest, TwoContainersOnOneAnotherAreIndependent)
{
    auto const stack = makeStack();
    sdk().start(stack);
    sdk().start(stack);
    platform.runUntilIdle();
    ASSERT_EQ(stack->viewControllers().size(), 3U);
    watchContainer(containerOn(*stack));
    stack->popViewController(Animated::No);
    // Of the watched objects, only the first container's header and footer are left; their screen still exists.
    EXPECT_EQ(aliveCount(), 2U);
    EXPECT_EQ(platform.webViews().size(), 1U);
    stack->popViewController(Animated::No);
    expectNothingLeft();
}

}

}
