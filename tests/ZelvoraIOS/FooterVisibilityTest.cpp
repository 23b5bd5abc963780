#include "tests/ZelvoraIOS/support/ContainerTest.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::NSLayoutConstraint;

constexpr char const* notificationName = "ZelvoraFooterVisibilityChanged";

constexpr double footerHeight = 60;

class FooterVisibilityTest : public ContainerTest {
protected:
    void openWithFooter()
    {
        setFooter(footer);
        open();
    }
    void open()
    {
        container = makeContainer();
        // The page begins to load.
        platform.runUntilIdle();
        platform.layout();
        platform.screen().calls().clear();
    }

    // Runs the blocks that the notification queued, and nothing else.
    void turn() { platform.mainQueue().runAll(); }

    void postRaw(std::optional<Dictionary> userInfo)
    {
        platform.notificationCenter().post({ notificationName, std::move(userInfo) });
    }

    [[nodiscard]] static ZelvoraWebView& webView() { return *sdk().activeWebView(); }
    [[nodiscard]] NSLayoutConstraint bottomConstraint() const { return container->view().constraints().back(); }
    [[nodiscard]] NSLayoutConstraint toTheFooter() const { return { webView().bottomAnchor(), footer->topAnchor() }; }
    [[nodiscard]] NSLayoutConstraint toTheBottom() const
    {
        return { webView().bottomAnchor(), container->view().bottomAnchor() };
    }
    [[nodiscard]] static double webViewHeight() { return memory::frame(webView()).height; }

    static constexpr double fullHeight = screenHeight - safeTop;

    std::shared_ptr<memory::View> footer = makeBar(footerHeight);
    std::shared_ptr<ZelvoraIOSViewController> container;
};

TEST_F(FooterVisibilityTest, HidingTheFooterIsQueuedToTheMainQueue)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    EXPECT_FALSE(footer->isHidden());
    EXPECT_EQ(bottomConstraint(), toTheFooter());
    EXPECT_TRUE(platform.screen().calls().all().empty());
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);

    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_EQ(bottomConstraint(), toTheBottom());
    EXPECT_EQ(webViewHeight(), fullHeight);
    EXPECT_EQ(memory::frame(*footer), (CGRect { 0, screenHeight - footerHeight, screenWidth, footerHeight }));
}

TEST_F(FooterVisibilityTest, ShowingItAgainShrinksTheWebViewToTheFootersTop)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    turn();
    sdk().setFooterVisible(true);
    turn();
    EXPECT_FALSE(footer->isHidden());
    EXPECT_EQ(bottomConstraint(), toTheFooter());
    EXPECT_EQ(webViewHeight(), fullHeight - footerHeight);
}

TEST_F(FooterVisibilityTest, AFooterHiddenAtLaunchIsShownByALaterNotificationWithinPointThreeSeconds)
{
    sdk().setFooterVisible(false);
    openWithFooter();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_EQ(webViewHeight(), fullHeight);

    sdk().setFooterVisible(true);
    turn();
    EXPECT_FALSE(footer->isHidden());
    EXPECT_EQ(webViewHeight(), fullHeight - footerHeight);
    ASSERT_EQ(platform.screen().animations().size(), 1U);
    EXPECT_EQ(platform.screen().animations()[0].duration, 0.3);
}

TEST_F(FooterVisibilityTest, OneLayoutPassIsAnimatedOverPointThreeSeconds)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    turn();

    ASSERT_EQ(platform.screen().animations().size(), 1U);
    auto const& animation = platform.screen().animations()[0];
    EXPECT_EQ(animation.duration, 0.3);
    EXPECT_TRUE(animation.laidOut);
    CGRect const from { 0, safeTop, screenWidth, fullHeight - footerHeight };
    CGRect const to { 0, safeTop, screenWidth, fullHeight };
    EXPECT_NE(std::ranges::find(animation.moves, memory::Move { &webView(), from, to }), animation.moves.end());
    for (auto const& move : animation.moves)
        EXPECT_TRUE(webView().contains(*move.view)) << "only the web view moves";
}

TEST_F(FooterVisibilityTest, TheStepsOfAChangeAreMadeInThisOrder)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    turn();
    EXPECT_EQ(platform.screen().calls().of({ footer.get(), &container->view(), &webView() }),
        (std::vector<std::string> {
            "setHidden true",
            "deactivate bottom = top",
            "activate bottom = bottom",
            "layoutIfNeeded",
        }));

    platform.screen().calls().clear();
    sdk().setFooterVisible(true);
    turn();
    EXPECT_EQ(platform.screen().calls().of({ footer.get(), &container->view(), &webView() }),
        (std::vector<std::string> {
            "setHidden false",
            "deactivate bottom = bottom",
            "activate bottom = top",
            "layoutIfNeeded",
        }));
}

TEST_F(FooterVisibilityTest, TheOtherConstraintsStayAsTheyAre)
{
    openWithFooter();
    auto expected = container->view().constraints();
    sdk().setFooterVisible(false);
    turn();
    expected.back() = toTheBottom();
    EXPECT_EQ(container->view().constraints(), expected);
}

TEST_F(FooterVisibilityTest, WithoutAFooterTheBottomConstraintIsReplacedByAnIdenticalOne)
{
    open();
    for (bool const visible : { false, true }) {
        platform.screen().calls().clear();
        sdk().setFooterVisible(visible);
        turn();
        EXPECT_EQ(platform.screen().calls().of({ &container->view() }),
            (std::vector<std::string> { "deactivate bottom = bottom", "activate bottom = bottom", "layoutIfNeeded" }));
        EXPECT_EQ(bottomConstraint(), toTheBottom());
        EXPECT_EQ(webViewHeight(), fullHeight);
        EXPECT_TRUE(platform.screen().animations().back().moves.empty());
        EXPECT_TRUE(platform.screen().animations().back().laidOut);
    }
}

TEST_F(FooterVisibilityTest, ShowingAFooterThatIsShownReplacesTheConstraintByAnIdenticalOne)
{
    openWithFooter();
    sdk().setFooterVisible(true);
    turn();
    EXPECT_EQ(platform.screen().calls().of({ footer.get(), &container->view() }),
        (std::vector<std::string> {
            "setHidden false", "deactivate bottom = top", "activate bottom = top", "layoutIfNeeded" }));
    EXPECT_EQ(webViewHeight(), fullHeight - footerHeight);
}

TEST_F(FooterVisibilityTest, TheHeaderIsNotTouched)
{
    auto const header = makeBar(44);
    setHeader(header);
    openWithFooter();
    sdk().setFooterVisible(false);
    turn();
    EXPECT_TRUE(platform.screen().calls().of({ header.get() }).empty());
    EXPECT_FALSE(header->isHidden());
    EXPECT_EQ(memory::frame(*header), (CGRect { 0, safeTop, screenWidth, 44 }));
    EXPECT_EQ(memory::frame(webView()), (CGRect { 0, safeTop + 44, screenWidth, fullHeight - 44 }));
}

class MalformedFooterNotificationTest
    : public FooterVisibilityTest
    , public ::testing::WithParamInterface<std::optional<Dictionary>> { };

TEST_P(MalformedFooterNotificationTest, IsIgnored)
{
    openWithFooter();
    auto const constraints = container->view().constraints();
    postRaw(GetParam());
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    turn();
    EXPECT_FALSE(footer->isHidden());
    EXPECT_EQ(container->view().constraints(), constraints);
    EXPECT_TRUE(platform.screen().calls().all().empty());
    EXPECT_TRUE(platform.screen().animations().empty());
    EXPECT_TRUE(logMessages().empty());
}

INSTANTIATE_TEST_SUITE_P(UserInfo, MalformedFooterNotificationTest,
    ::testing::Values(std::nullopt, Dictionary(), Dictionary { { "Visible", false } },
        Dictionary { { "visible", "false" } }, Dictionary { { "visible", 0 } }, Dictionary { { "visible", Value() } },
        Dictionary { { "visible", Array { false } } },
        Dictionary { { "visible", Dictionary { { "visible", false } } } }));

TEST_F(FooterVisibilityTest, ANotificationOfAnotherNameIsIgnored)
{
    openWithFooter();
    platform.notificationCenter().post({ "zelvoraFooterVisibilityChanged", Dictionary { { "visible", false } } });
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(FooterVisibilityTest, AnybodysNotificationCountsAndLeavesTheFacadesFlagAlone)
{
    openWithFooter();
    postRaw(Dictionary { { "visible", false }, { "more", 1 } });
    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_TRUE(sdk().isFooterVisible());
}

TEST_F(FooterVisibilityTest, TheNotificationsValueCountsAndNotTheFlagWhenTheQueueRuns)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    ZelvoraSDKInspector::change([](auto& properties) { properties.isFooterVisible = true; });
    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_EQ(bottomConstraint(), toTheBottom());
}

TEST_F(FooterVisibilityTest, APostOnAnotherThreadIsAppliedOnTheMainQueue)
{
    openWithFooter();
    std::thread([] { sdk().setFooterVisible(false); }).join();
    EXPECT_FALSE(footer->isHidden());
    turn();
    EXPECT_TRUE(footer->isHidden());
}

TEST_F(FooterVisibilityTest, SeveralPostsAreAppliedInTheirOrder)
{
    openWithFooter();
    sdk().setFooterVisible(false);
    sdk().setFooterVisible(true);
    sdk().setFooterVisible(false);
    EXPECT_EQ(platform.mainQueue().pendingCount(), 3U);
    turn();
    EXPECT_EQ(platform.screen().calls().of({ footer.get() }),
        (std::vector<std::string> { "setHidden true", "setHidden false", "setHidden true" }));
    EXPECT_EQ(platform.screen().animations().size(), 3U);
    EXPECT_EQ(bottomConstraint(), toTheBottom());
}

TEST_F(FooterVisibilityTest, TheQueuedChangeKeepsTheControllerAliveUntilItHasRun)
{
    openWithFooter();
    std::weak_ptr<ZelvoraIOSViewController> const weak = container;
    sdk().setFooterVisible(false);
    container.reset();
    EXPECT_FALSE(weak.expired());
    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_TRUE(weak.expired());
}

TEST_F(FooterVisibilityTest, ADestroyedControllerIsNotNotified)
{
    openWithFooter();
    container.reset();
    sdk().setFooterVisible(false);
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    EXPECT_FALSE(footer->isHidden());
}

TEST_F(FooterVisibilityTest, EveryContainerFollows)
{
    openWithFooter();
    auto const secondFooter = makeBar(footerHeight);
    setFooter(secondFooter);
    auto const second = makeContainer();
    sdk().setFooterVisible(false);
    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_TRUE(secondFooter->isHidden());
}

TEST_F(FooterVisibilityTest, ACoveredContainerFollowsToo)
{
    setFooter(footer);
    auto const stack = makeStack();
    stack->pushViewController(std::make_shared<ZelvoraIOSViewController>(entryUrl), Animated::No);
    stack->pushViewController(std::make_shared<memory::ViewController>(), Animated::No);
    sdk().setFooterVisible(false);
    turn();
    EXPECT_TRUE(footer->isHidden());
}

TEST_F(FooterVisibilityTest, AControllerWhoseScreenIsNotLoadedIsNotNotifiedButStartsOutRight)
{
    setFooter(footer);
    auto const unloaded = std::make_shared<ZelvoraIOSViewController>(entryUrl);
    sdk().setFooterVisible(false);
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    (void)unloaded->view();
    EXPECT_TRUE(footer->isHidden());
}

TEST_F(FooterVisibilityTest, AProviderMayHideTheFooterWhileTheScreenIsSetUp)
{
    sdk().setHeaderViewProvider([](platform::UIViewController&) {
        sdk().setFooterVisible(false);
        return makeBar(44);
    });
    openWithFooter();
    EXPECT_TRUE(footer->isHidden());
    turn();
    EXPECT_TRUE(footer->isHidden());
    EXPECT_EQ(webViewHeight(), fullHeight - 44);
}

TEST_F(FooterVisibilityTest, ThePageSwitchesTheFooter)
{
    openWithFooter();
    post({ { "action", "setFooterVisible" }, { "visible", false } });
    EXPECT_FALSE(sdk().isFooterVisible());
    EXPECT_FALSE(footer->isHidden());
    turn();
    EXPECT_TRUE(footer->isHidden());
}

/// A main queue whose thread has run a submitted block, and later ones, before the submitter continues.
class ImpatientMainQueue final : public platform::DispatchQueue {
public:
    // platform::DispatchQueue
    void async(Work work) override
    {
        std::thread([this, work = std::move(work)]() mutable {
            work();
            work = nullptr;
            thread = std::this_thread::get_id();
            std::exchange(more, [] { })();
        }).join();
    }
    void asyncAfter(platform::TimeInterval, Work) override { }

    std::function<void()> more = [] { };
    std::thread::id thread;
};

class ImpatientPlatform final : public ForwardingPlatform {
public:
    [[nodiscard]] ImpatientMainQueue& mainQueue() override { return m_mainQueue; }

private:
    ImpatientMainQueue m_mainQueue;
};

class WatchedFooter final : public memory::View {
public:
    explicit WatchedFooter(std::thread::id& destroyedOn) : m_destroyedOn(destroyedOn) { }
    ~WatchedFooter() override { m_destroyedOn = std::this_thread::get_id(); }

private:
    std::thread::id& m_destroyedOn;
};

TEST(FooterVisibilityThreadsTest, AContainerReleasedDuringAPostOnAnotherThreadIsDestroyedOnTheMainThread)
{
    auto& platform = tests::install<ImpatientPlatform>();
    std::thread::id destroyedOn;
    auto& sdk = ZelvoraSDK::shared();
    sdk.setFooterViewProvider(
        [&destroyedOn](platform::UIViewController&) { return std::make_shared<WatchedFooter>(destroyedOn); });
    auto container = std::make_shared<ZelvoraIOSViewController>("https://shop.example/");
    (void)container->view();
    platform.mainQueue().more = [&container] { container.reset(); };
    sdk.setFooterVisible(false);
    EXPECT_FALSE(container);
    EXPECT_EQ(destroyedOn, platform.mainQueue().thread);
}

}

}
