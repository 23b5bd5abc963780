#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"
#include "tests/ZelvoraIOS/support/RecordingPlatform.h"

#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::NSLayoutConstraint;

constexpr char const* footerNotification = "ZelvoraFooterVisibilityChanged";

class ZelvoraIOSViewControllerTest : public ContainerTest {
protected:
    // The frame of the container's web view after a layout pass without ambiguities.
    [[nodiscard]] CGRect webViewFrame() const
    {
        platform.layout();
        EXPECT_EQ(platform.screen().ambiguities(), std::vector<std::string>());
        return memory::frame(*sdk().activeWebView());
    }

    [[nodiscard]] std::size_t observerCount() const
    {
        return platform.notificationCenter().observerCount(footerNotification);
    }
};

TEST_F(ZelvoraIOSViewControllerTest, MakingTheControllerMakesNothingElse)
{
    auto const container = std::make_shared<ZelvoraIOSViewController>(entryUrl);
    EXPECT_FALSE(container->isViewLoaded());
    EXPECT_TRUE(platform.webViews().empty());
    EXPECT_EQ(observerCount(), 0U);
}

TEST_F(ZelvoraIOSViewControllerTest, TheLoadedScreenIsWhiteAndObservesTheFooter)
{
    auto const container = makeContainer();
    EXPECT_EQ(memory::peer(container->view()).backgroundColor(), platform::UIColor::white());
    EXPECT_EQ(observerCount(), 1U);
}

TEST_F(ZelvoraIOSViewControllerTest, TheScreenIsLoadedOnce)
{
    auto const container = makeContainer();
    (void)container->view();
    EXPECT_EQ(observerCount(), 1U);
    EXPECT_EQ(platform.webViews().size(), 1U);
}

TEST_F(ZelvoraIOSViewControllerTest, TheWebViewIsOnTheEntryUrlAndActsOnThisScreen)
{
    auto const container = makeContainer("https://shop.example/entry");
    auto const view = sdk().activeWebView();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->currentUrl(), "https://shop.example/entry");
    EXPECT_EQ(view->parentViewController(), container);
    EXPECT_EQ(view->superview(), &container->view());
    EXPECT_EQ(engine().initialFrame(), CGRect());
}

TEST_F(ZelvoraIOSViewControllerTest, AnEntryUrlThatIsNotAUrlLeavesTheWebViewBlank)
{
    auto const container = makeContainer("");
    EXPECT_TRUE(engine().loadedRequests().empty());
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop }));
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(ZelvoraIOSViewControllerTest, TheWebViewsOwnSwipesFollowTheFlagOfTheSDK)
{
    auto const without = makeContainer();
    EXPECT_FALSE(engine().allowsBackForwardNavigationGestures());
    sdk().setAllowsSwipeBack(true);
    auto const with = makeContainer();
    EXPECT_TRUE(engine().allowsBackForwardNavigationGestures());
}

TEST_F(ZelvoraIOSViewControllerTest, ALaterContainersWebViewIsTheActiveOne)
{
    auto const first = makeContainer("https://shop.example/1");
    auto const second = makeContainer("https://shop.example/2");
    EXPECT_EQ(sdk().getCurrentUrl(), "https://shop.example/2");
}

TEST_F(ZelvoraIOSViewControllerTest, WithoutProvidersTheWebViewReachesFromTheSafeTopToTheVeryBottom)
{
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop }));
    EXPECT_EQ(container->view().subviews().size(), 1U);
}

TEST_F(ZelvoraIOSViewControllerTest, AHeaderHangsFromTheSafeTopWithTheWebViewBelowIt)
{
    auto const header = makeBar(44);
    setHeader(header);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop + 44, screenWidth, screenHeight - safeTop - 44 }));
    EXPECT_EQ(memory::frame(*header), (CGRect { 0, safeTop, screenWidth, 44 }));
    EXPECT_FALSE(header->isHidden());
}

TEST_F(ZelvoraIOSViewControllerTest, AFooterIsAtTheVeryBottomWithTheWebViewAboveIt)
{
    auto const footer = makeBar(60);
    setFooter(footer);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop - 60 }));
    EXPECT_EQ(memory::frame(*footer), (CGRect { 0, screenHeight - 60, screenWidth, 60 }));
    EXPECT_FALSE(footer->isHidden());
}

TEST_F(ZelvoraIOSViewControllerTest, TheWebViewFillsWhatHeaderAndFooterLeave)
{
    setHeader(makeBar(44));
    setFooter(makeBar(60));
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop + 44, screenWidth, screenHeight - safeTop - 44 - 60 }));
}

TEST_F(ZelvoraIOSViewControllerTest, AHiddenFooterIsStillLaidOutAndTheWebViewReachesTheBottom)
{
    auto const footer = makeBar(60);
    setFooter(footer);
    sdk().setFooterVisible(false);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop }));
    EXPECT_EQ(memory::frame(*footer), (CGRect { 0, screenHeight - 60, screenWidth, 60 }));
    EXPECT_TRUE(footer->isHidden());
}

TEST_F(ZelvoraIOSViewControllerTest, AFooterThatTheHostHidIsShownWhenFootersAreVisible)
{
    auto const footer = makeBar(60);
    footer->setHidden(true);
    setFooter(footer);
    auto const container = makeContainer();
    EXPECT_FALSE(footer->isHidden());
}

TEST_F(ZelvoraIOSViewControllerTest, HiddenFootersWithoutAFooterChangeNothing)
{
    sdk().setFooterVisible(false);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop }));
}

TEST_F(ZelvoraIOSViewControllerTest, ProvidersThatGiveNoViewCountAsNone)
{
    setHeader(nullptr);
    setFooter(nullptr);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop, screenWidth, screenHeight - safeTop }));
    EXPECT_EQ(container->view().subviews().size(), 1U);
}

TEST_F(ZelvoraIOSViewControllerTest, TheHeadersHeightIsItsOwnAffair)
{
    auto const header = makeBar(44);
    setHeader(header);
    auto const container = makeContainer();
    EXPECT_EQ(webViewFrame().y, safeTop + 44);
    memory::peer(*header).setIntrinsicSize({ .height = 100 });
    EXPECT_EQ(webViewFrame(), (CGRect { 0, safeTop + 100, screenWidth, screenHeight - safeTop - 100 }));
}

TEST_F(ZelvoraIOSViewControllerTest, TheLayoutFollowsTheScreen)
{
    setHeader(makeBar(44));
    setFooter(makeBar(60));
    auto const container = makeContainer();
    platform.screen().setSize(844, 390);
    platform.screen().setSafeAreaInsets({ .top = 0, .bottom = 21 });
    EXPECT_EQ(webViewFrame(), (CGRect { 0, 44, 844, 390 - 44 - 60 }));
}

TEST_F(ZelvoraIOSViewControllerTest, TheProvidersAreAskedOnceWithThisControllerTheHeadersFirst)
{
    std::vector<std::pair<std::string, platform::UIViewController const*>> asked;
    sdk().setHeaderViewProvider([&asked](platform::UIViewController& controller) {
        asked.emplace_back("header", &controller);
        return makeBar(44);
    });
    sdk().setFooterViewProvider([&asked](platform::UIViewController& controller) {
        asked.emplace_back("footer", &controller);
        return makeBar(60);
    });
    auto const container = makeContainer();
    using Asked = decltype(asked);
    EXPECT_EQ(asked, (Asked { { "header", container.get() }, { "footer", container.get() } }));
}

TEST_F(ZelvoraIOSViewControllerTest, TheWebViewIsMadeAfterHeaderAndFooter)
{
    std::vector<std::size_t> webViewCounts;
    auto const provider = [&](platform::UIViewController&) {
        webViewCounts.push_back(platform.webViews().size());
        return makeBar(10);
    };
    sdk().setHeaderViewProvider(provider);
    sdk().setFooterViewProvider(provider);
    auto const container = makeContainer();
    EXPECT_EQ(webViewCounts, (std::vector<std::size_t> { 0, 0 }));
    EXPECT_EQ(platform.webViews().size(), 1U);
}

TEST_F(ZelvoraIOSViewControllerTest, TheFooterEndsAboveTheWebViewAndTheHeaderBelowIt)
{
    auto const header = makeBar(44);
    auto const footer = makeBar(60);
    setHeader(header);
    setFooter(footer);
    auto const container = makeContainer();
    EXPECT_EQ(container->view().subviews(),
        (std::vector<std::shared_ptr<platform::UIView>> { header, sdk().activeWebView(), footer }));
}

TEST_F(ZelvoraIOSViewControllerTest, AHiddenFooterEndsAboveTheWebViewToo)
{
    auto const footer = makeBar(60);
    setFooter(footer);
    sdk().setFooterVisible(false);
    auto const container = makeContainer();
    EXPECT_EQ(container->view().subviews().back(), footer);
}

TEST_F(ZelvoraIOSViewControllerTest, TheConstraintsAreActivatedInTheOrderOfTheLayout)
{
    auto const header = makeBar(44);
    auto const footer = makeBar(60);
    setHeader(header);
    setFooter(footer);
    auto const container = makeContainer();
    auto& root = container->view();
    auto& web = *sdk().activeWebView();
    EXPECT_EQ(root.constraints(),
        (std::vector<NSLayoutConstraint> {
            { header->topAnchor(), root.safeAreaLayoutGuide().topAnchor() },
            { header->leadingAnchor(), root.leadingAnchor() },
            { header->trailingAnchor(), root.trailingAnchor() },
            { footer->bottomAnchor(), root.bottomAnchor() },
            { footer->leadingAnchor(), root.leadingAnchor() },
            { footer->trailingAnchor(), root.trailingAnchor() },
            { web.topAnchor(), header->bottomAnchor() },
            { web.leadingAnchor(), root.leadingAnchor() },
            { web.trailingAnchor(), root.trailingAnchor() },
            { web.bottomAnchor(), footer->topAnchor() },
        }));
}

TEST_F(ZelvoraIOSViewControllerTest, WithoutHeaderAndFooterTheWebViewsConstraintsAreTheOnlyOnes)
{
    auto const container = makeContainer();
    auto& root = container->view();
    auto& web = *sdk().activeWebView();
    EXPECT_EQ(root.constraints(),
        (std::vector<NSLayoutConstraint> {
            { web.topAnchor(), root.safeAreaLayoutGuide().topAnchor() },
            { web.leadingAnchor(), root.leadingAnchor() },
            { web.trailingAnchor(), root.trailingAnchor() },
            { web.bottomAnchor(), root.bottomAnchor() },
        }));
}

TEST_F(ZelvoraIOSViewControllerTest, NoPartOfTheLayoutTranslatesItsAutoresizingMask)
{
    auto const header = makeBar(44);
    auto const footer = makeBar(60);
    setHeader(header);
    setFooter(footer);
    auto const container = makeContainer();
    EXPECT_FALSE(memory::peer(*header).translatesAutoresizingMaskIntoConstraints());
    EXPECT_FALSE(memory::peer(*footer).translatesAutoresizingMaskIntoConstraints());
    EXPECT_FALSE(memory::peer(*sdk().activeWebView()).translatesAutoresizingMaskIntoConstraints());
}

class DisappearanceTest : public ZelvoraIOSViewControllerTest {
protected:
    DisappearanceTest()
    {
        sdk().setDelegate(delegate);
        saveEvents(1);
        stack = makeStack();
    }

    std::shared_ptr<ZelvoraIOSViewController> push() const
    {
        auto container = std::make_shared<ZelvoraIOSViewController>(entryUrl);
        stack->pushViewController(container, Animated::No);
        return container;
    }

    [[nodiscard]] std::size_t uploadCount() const { return platform.urlSession().requests().size(); }

    std::shared_ptr<DelegateSpy> delegate = std::make_shared<DelegateSpy>();
    std::shared_ptr<memory::NavigationController> stack;
};

TEST_F(DisappearanceTest, TheDelegateIsCalledBeforeTheEventsAreUploaded)
{
    auto const container = push();
    std::optional<std::size_t> uploadsBefore;
    delegate->onWillDismiss = [&] { uploadsBefore = uploadCount(); };
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(uploadsBefore, 0U);
    EXPECT_EQ(delegate->dismissals, 1U);
    EXPECT_EQ(uploadCount(), 1U);
}

TEST_F(DisappearanceTest, AppearingCallsNoDelegateAndUploadsNothing)
{
    auto const container = push();
    EXPECT_EQ(delegate->dismissals, 0U);
    EXPECT_EQ(uploadCount(), 0U);
}

TEST_F(DisappearanceTest, DismissingAPresentedContainerCountsToo)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    presenter->present(std::make_shared<ZelvoraIOSViewController>(entryUrl), Animated::No);
    presenter->dismiss(Animated::Yes);
    EXPECT_EQ(delegate->dismissals, 1U);
    EXPECT_EQ(uploadCount(), 1U);
}

TEST_F(DisappearanceTest, BeingCoveredByAPushedScreenCountsEveryTime)
{
    auto const container = push();
    for (auto round = 1U; round <= 3; ++round) {
        stack->pushViewController(std::make_shared<memory::ViewController>(), Animated::Yes);
        EXPECT_EQ(delegate->dismissals, round);
        EXPECT_EQ(uploadCount(), round);
        stack->popViewController(Animated::Yes);
        EXPECT_EQ(delegate->dismissals, round);
    }
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(delegate->dismissals, 4U);
}

TEST_F(DisappearanceTest, BeingCoveredByAFullScreenPresentationCounts)
{
    auto const container = push();
    auto const modal = std::make_shared<memory::ViewController>();
    modal->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    container->present(modal, Animated::Yes);
    EXPECT_EQ(delegate->dismissals, 1U);
    EXPECT_EQ(uploadCount(), 1U);
}

TEST_F(DisappearanceTest, NothingIsTornDown)
{
    auto const container = push();
    auto const view = sdk().activeWebView();
    auto const constraints = container->view().constraints();
    stack->pushViewController(std::make_shared<memory::ViewController>(), Animated::Yes);
    EXPECT_EQ(observerCount(), 1U);
    EXPECT_EQ(sdk().activeWebView(), view);
    EXPECT_EQ(view->superview(), &container->view());
    EXPECT_EQ(container->view().constraints(), constraints);
    EXPECT_TRUE(engine().userContentController().handler("zelvora"));
    EXPECT_TRUE(engine().navigationDelegate());
}

TEST_F(DisappearanceTest, WithoutADelegateTheEventsAreStillUploaded)
{
    sdk().setDelegate(nullptr);
    auto const container = push();
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(uploadCount(), 1U);
}

TEST_F(DisappearanceTest, AReleasedDelegateIsNotCalled)
{
    delegate.reset();
    auto const container = push();
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(uploadCount(), 1U);
}

TEST_F(DisappearanceTest, TheCurrentDelegateIsCalled)
{
    auto const container = push();
    auto const later = std::make_shared<DelegateSpy>();
    sdk().setDelegate(later);
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(delegate->dismissals, 0U);
    EXPECT_EQ(later->dismissals, 1U);
}

TEST_F(DisappearanceTest, WithoutEventsNothingIsUploaded)
{
    ZelvoraStorage::clearEventTrackingData();
    auto const container = push();
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(delegate->dismissals, 1U);
    EXPECT_EQ(uploadCount(), 0U);
}

TEST_F(ZelvoraIOSViewControllerTest, ConstructionFromAnArchiveStopsTheProcess)
{
    platform::NSCoder const archive;
    EXPECT_DEATH(
        ZelvoraIOSViewController const controller(archive), "Fatal error: init\\(coder:\\) has not been implemented\n");
}

TEST_F(ZelvoraIOSViewControllerTest, TheInitialiserWithANibStopsTheProcess)
{
    EXPECT_DEATH(ZelvoraIOSViewController const controller(std::nullopt, nullptr),
        "Fatal error: Use of unimplemented initializer 'init\\(nibName:bundle:\\)' for class "
        "'ZelvoraIOS.ZelvoraIOSViewController'\n");
}

TEST(ZelvoraIOSViewControllerWithoutPlatformDeathTest, AControllerMadeBeforeAPlatformIsInstalledStopsTheProcess)
{
    EXPECT_DEATH(ZelvoraIOSViewController const controller("https://shop.example/"),
        "the SDK was used before a platform was installed: call Platform::install first");
}

// A navigation stack that records changes of its swipe to pop.
class RecordingStack final : public platform::UINavigationController {
public:
    explicit RecordingStack(memory::CallRecord& record) : m_pop(std::make_shared<Pop>(record)) { }

    // platform::UINavigationController
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIViewController>> viewControllers() const override
    {
        return {};
    }
    void pushViewController(std::shared_ptr<platform::UIViewController> controller, Animated) override
    {
        memory::peer(*controller).setNavigationController(std::static_pointer_cast<RecordingStack>(shared_from_this()));
        (void)controller->view();
    }
    void popViewController(Animated) override { }
    [[nodiscard]] std::shared_ptr<platform::UIGestureRecognizer> interactivePopGestureRecognizer() const override
    {
        return m_pop;
    }

private:
    class Pop final : public platform::UIGestureRecognizer {
    public:
        explicit Pop(memory::CallRecord& record) : m_record(record) { }

        void setEnabled(bool enabled) override { m_record.add(this, enabled ? "setEnabled true" : "setEnabled false"); }
        void setDelegate(std::weak_ptr<platform::UIGestureRecognizerDelegate>) override
        {
            m_record.add(this, "setDelegate");
        }

    private:
        memory::CallRecord& m_record;
    };

    std::shared_ptr<Pop> m_pop;
};

class ContainerOrderTest : public ::testing::Test {
protected:
    RecordingPlatform& platform = install<RecordingPlatform>();
};

TEST_F(ContainerOrderTest, TheScreenIsSetUpInThisOrder)
{
    auto const bar = [](double height) { return std::make_shared<memory::View>(memory::IntrinsicSize { {}, height }); };
    auto& sdk = ZelvoraSDK::shared();
    sdk.setAllowsSwipeBack(true);
    sdk.setHeaderViewProvider([&](platform::UIViewController&) { return bar(44); });
    sdk.setFooterViewProvider([&](platform::UIViewController&) { return bar(60); });
    auto const stack = std::make_shared<RecordingStack>(platform.memory.screen().calls());
    auto const container = std::make_shared<ZelvoraIOSViewController>("https://shop.example/");
    stack->pushViewController(container, Animated::Yes);

    EXPECT_EQ(platform.calls(),
        (std::vector<std::string> {
            "setBackgroundColor",
            "addObserver ZelvoraFooterVisibilityChanged",
            "setDelegate",
            "setEnabled true",
            "addGestureRecognizer",
            // The header.
            "setTranslatesAutoresizingMaskIntoConstraints false",
            "addSubview",
            "activate top = safeArea.top",
            "activate leading = leading",
            "activate trailing = trailing",
            // The footer.
            "setTranslatesAutoresizingMaskIntoConstraints false",
            "addSubview",
            "activate bottom = bottom",
            "activate leading = leading",
            "activate trailing = trailing",
            "setHidden false",
            // The web view, which sets itself up first.
            "addScriptMessageHandler zelvora",
            "addUserScript",
            "makeWebView",
            "setInspectable true",
            "setNavigationDelegate",
            "setAllowsBackForwardNavigationGestures true",
            "setTranslatesAutoresizingMaskIntoConstraints false",
            "addSubview",
            "activate top = top",
            "activate leading = leading",
            "activate trailing = trailing",
            "activate bottom = bottom",
            "load https://shop.example/",
            "observeURL",
            "setTranslatesAutoresizingMaskIntoConstraints false",
            "addSubview",
            "activate top = bottom",
            "activate leading = leading",
            "activate trailing = trailing",
            "activate bottom = top",
            "bringSubviewToFront",
        }));
}

TEST_F(ContainerOrderTest, TheControllerStopsObservingWhenItIsDestroyed)
{
    auto container = std::make_shared<ZelvoraIOSViewController>("https://shop.example/");
    (void)container->view();
    EXPECT_TRUE(platform.notificationCenter().removed().empty());
    void const* const address = container.get();
    platform.memory.screen().calls().clear();
    container.reset();
    EXPECT_EQ(platform.notificationCenter().removed(), std::vector { address });
    EXPECT_EQ(platform.calls().front(), "removeObserver");
}

TEST_F(ContainerOrderTest, AWebViewIsTakenApartInThisOrder)
{
    auto view = std::make_shared<ZelvoraWebView>(CGRect {}, "https://shop.example/", false);
    // A queued answer may keep the system's web view alive longer.
    auto const held = view->subviews().at(0);
    platform.memory.screen().calls().clear();
    view.reset();
    auto calls = platform.calls();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[0], "invalidate");
    EXPECT_EQ(calls[1], "removeScriptMessageHandler zelvora");
    EXPECT_EQ(calls.back(), "removeSubview");
}

}

}
