#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::NSLayoutConstraint;

class ZelvoraWebViewTest : public ContainerTest {
protected:
    static std::shared_ptr<ZelvoraWebView> makeView(
        std::string const& address = entryUrl, bool allowsSwipeBack = false, CGRect frame = {})
    {
        return std::make_shared<ZelvoraWebView>(frame, address, allowsSwipeBack);
    }

    // The system's web view, which may outlive the SDK's.
    [[nodiscard]] std::shared_ptr<memory::WebView> lastEngine() const { return platform.webViews().back(); }

    // What `onPageNavigation` was called with.
    std::vector<std::string> navigations;
    void listen()
    {
        sdk().setOnPageNavigation([this](std::string const& address) { navigations.push_back(address); });
    }
};

TEST_F(ZelvoraWebViewTest, SetUpAsksTheSystemInThisOrder)
{
    auto const view = makeView();
    auto const& webView = engine(*view);
    EXPECT_EQ(platform.screen().calls().of({ &webView, &webView.userContentController(), view.get() }),
        (std::vector<std::string> {
            "addScriptMessageHandler zelvora",
            "addUserScript",
            "makeWebView",
            "setInspectable true",
            "setNavigationDelegate",
            "setAllowsBackForwardNavigationGestures false",
            "setTranslatesAutoresizingMaskIntoConstraints false",
            "addSubview",
            "activate top = top",
            "activate leading = leading",
            "activate trailing = trailing",
            "activate bottom = bottom",
            std::string("load ") + entryUrl,
            "observeURL",
        }));
}

TEST_F(ZelvoraWebViewTest, TheViewReceivesMessagesUnderTheBridgesNameOnly)
{
    auto const view = makeView();
    auto const& controller = engine(*view).userContentController();
    EXPECT_EQ(controller.handler("zelvora"), view.get());
    EXPECT_FALSE(engine(*view).postMessage("Zelvora", Dictionary { { "action", "close" } }));
    EXPECT_FALSE(engine(*view).postMessage("", Dictionary { { "action", "close" } }));
}

TEST_F(ZelvoraWebViewTest, TheWebViewStartsWithTheBoundsOfTheView)
{
    auto const view = makeView(entryUrl, false, { 10, 20, 300, 400 });
    EXPECT_EQ(engine(*view).initialFrame(), (CGRect { 0, 0, 300, 400 }));
    EXPECT_EQ(memory::frame(*view), (CGRect { 10, 20, 300, 400 }));
}

TEST_F(ZelvoraWebViewTest, ThePageCanAlwaysBeInspected)
{
    auto const view = makeView();
    EXPECT_TRUE(engine(*view).isInspectable());
}

TEST_F(ZelvoraWebViewTest, TheViewItselfDecidesOnNavigations)
{
    auto const view = makeView();
    EXPECT_EQ(engine(*view).navigationDelegate(), view.get());
}

TEST_F(ZelvoraWebViewTest, TheWebViewsOwnSwipesFollowTheFlagOfTheView)
{
    auto const without = makeView(entryUrl, false);
    EXPECT_FALSE(engine(*without).allowsBackForwardNavigationGestures());
    auto const with = makeView(entryUrl, true);
    EXPECT_TRUE(engine(*with).allowsBackForwardNavigationGestures());
}

TEST_F(ZelvoraWebViewTest, TheWebViewIsPinnedToTheFourEdgesOfTheView)
{
    auto const view = makeView();
    auto& webView = engine(*view);
    EXPECT_FALSE(webView.superview() != view.get());
    EXPECT_FALSE(memory::peer(webView).translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(view->constraints(),
        (std::vector<NSLayoutConstraint> {
            { webView.topAnchor(), view->topAnchor() },
            { webView.leadingAnchor(), view->leadingAnchor() },
            { webView.trailingAnchor(), view->trailingAnchor() },
            { webView.bottomAnchor(), view->bottomAnchor() },
        }));
}

TEST_F(ZelvoraWebViewTest, TheWebViewFillsTheViewWhereverTheHostPutsIt)
{
    auto const view = makeView();
    memory::peer(*view).setFrame({ 10, 20, 300, 400 });
    platform.layout();
    EXPECT_EQ(memory::frame(engine(*view)), (CGRect { 0, 0, 300, 400 }));
    memory::peer(*view).setFrame({ 0, 0, 50, 60 });
    platform.layout();
    EXPECT_EQ(memory::frame(engine(*view)), (CGRect { 0, 0, 50, 60 }));
    EXPECT_TRUE(platform.screen().ambiguities().empty());
}

TEST_F(ZelvoraWebViewTest, TheAddressIsLoadedOnceWithTheProtocolsCachePolicyAndSixtySeconds)
{
    auto const view = makeView();
    auto const& requests = engine(*view).loadedRequests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].url, url(entryUrl));
    EXPECT_EQ(requests[0].httpMethod, "GET");
    EXPECT_TRUE(requests[0].httpHeaderFields.empty());
    EXPECT_TRUE(requests[0].httpBody.bytes.empty());
    EXPECT_EQ(requests[0].timeoutInterval, 60);
}

TEST_F(ZelvoraWebViewTest, AnAddressWithCharactersThatAUrlCannotHaveIsEncodedAndLoads)
{
    auto const view = makeView("https://shop.example/a b?q=\xED\x95\x9C");
    EXPECT_EQ(view->currentUrl(), "https://shop.example/a%20b?q=%ED%95%9C");
}

class BlankViewTest
    : public ZelvoraWebViewTest
    , public ::testing::WithParamInterface<char const*> { };

TEST_P(BlankViewTest, AnAddressThatFormsNoUrlLeavesTheViewBlankAndLogsNothing)
{
    listen();
    auto const view = makeView(GetParam());
    platform.runUntilIdle();
    EXPECT_TRUE(engine(*view).loadedRequests().empty());
    EXPECT_TRUE(engine(*view).decisions().empty());
    EXPECT_FALSE(view->currentUrl());
    EXPECT_FALSE(view->canGoBack());
    EXPECT_TRUE(logMessages().empty());
    EXPECT_TRUE(navigations.empty());
    // Everything else is set up as usual.
    EXPECT_EQ(engine(*view).observerCount(), 1U);
    EXPECT_EQ(engine(*view).calls().back(), "observeURL");
}

INSTANTIATE_TEST_SUITE_P(Addresses, BlankViewTest,
    ::testing::Values(
        "", "https://[", "https://[::1", "https://host:port/", "https://host:123456/", "//[no address]/"));

TEST_F(ZelvoraWebViewTest, TheCurrentUrlIsTheWebViewsOwn)
{
    auto const view = makeView();
    EXPECT_EQ(view->currentUrl(), entryUrl);
    engine(*view).setURL(url("https://shop.example/a"));
    EXPECT_EQ(view->currentUrl(), "https://shop.example/a");
    engine(*view).setURL(std::nullopt);
    EXPECT_FALSE(view->currentUrl());
}

TEST_F(ZelvoraWebViewTest, GoingBackIsTheWebViewsOwn)
{
    auto const view = makeView();
    platform.runUntilIdle();
    EXPECT_FALSE(view->canGoBack());
    engine(*view).navigate(url("https://shop.example/a"));
    EXPECT_TRUE(view->canGoBack());
    view->goBack();
    EXPECT_EQ(view->currentUrl(), entryUrl);
    EXPECT_FALSE(view->canGoBack());
    EXPECT_EQ(engine(*view).calls().back(), "goBack");
}

TEST_F(ZelvoraWebViewTest, GoingBackWithoutAHistoryIsLeftToTheWebView)
{
    auto const view = makeView();
    platform.runUntilIdle();
    view->goBack();
    EXPECT_EQ(engine(*view).calls().back(), "goBack");
    EXPECT_EQ(view->currentUrl(), entryUrl);
}

TEST_F(ZelvoraWebViewTest, AViewHasNoScreenUntilItIsGivenOneAndNeverKeepsItAlive)
{
    auto const view = makeView();
    EXPECT_FALSE(view->parentViewController());
    auto screen = std::make_shared<memory::ViewController>();
    view->setParentViewController(screen);
    EXPECT_EQ(view->parentViewController(), screen);
    screen.reset();
    EXPECT_FALSE(view->parentViewController());
}

TEST_F(ZelvoraWebViewTest, AScreenCanBeTakenAwayAgain)
{
    auto const view = makeView();
    auto const screen = std::make_shared<memory::ViewController>();
    view->setParentViewController(screen);
    view->setParentViewController(nullptr);
    EXPECT_FALSE(view->parentViewController());
}

TEST_F(ZelvoraWebViewTest, EveryChangeOfTheUrlIsReportedOnceWithTheWholeNewUrl)
{
    listen();
    auto const view = makeView();
    platform.runUntilIdle();
    navigations.clear();

    engine(*view).navigate(url("https://shop.example/a?b=c#d"));
    engine(*view).setURL(url("https://shop.example/a?b=c#e"));
    view->goBack();
    EXPECT_EQ(navigations,
        (std::vector<std::string> { "https://shop.example/a?b=c#d", "https://shop.example/a?b=c#e", entryUrl }));
}

TEST_F(ZelvoraWebViewTest, TheUrlThatWasThereBeforeTheObservationBeganIsNotReported)
{
    listen();
    auto const view = makeView();
    EXPECT_TRUE(navigations.empty());
}

TEST_F(ZelvoraWebViewTest, LosingTheUrlIsNotReported)
{
    listen();
    auto const view = makeView();
    platform.runUntilIdle();
    navigations.clear();
    engine(*view).setURL(std::nullopt);
    EXPECT_TRUE(navigations.empty());
    engine(*view).setURL(url("https://shop.example/a"));
    EXPECT_EQ(navigations, (std::vector<std::string> { "https://shop.example/a" }));
}

TEST_F(ZelvoraWebViewTest, WithoutACallbackAChangeOfTheUrlDoesNothing)
{
    auto const view = makeView();
    platform.runUntilIdle();
    engine(*view).setURL(url("https://shop.example/a"));
    EXPECT_EQ(view->currentUrl(), "https://shop.example/a");
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(ZelvoraWebViewTest, TheCallbackSetAtTheTimeOfTheChangeIsCalled)
{
    auto const view = makeView();
    platform.runUntilIdle();
    listen();
    engine(*view).setURL(url("https://shop.example/a"));
    sdk().setOnPageNavigation(nullptr);
    engine(*view).setURL(url("https://shop.example/b"));
    std::vector<std::string> others;
    sdk().setOnPageNavigation([&others](std::string const& address) { others.push_back(address); });
    engine(*view).setURL(url("https://shop.example/c"));
    EXPECT_EQ(navigations, (std::vector<std::string> { "https://shop.example/a" }));
    EXPECT_EQ(others, (std::vector<std::string> { "https://shop.example/c" }));
}

TEST_F(ZelvoraWebViewTest, TheCallbackMayDropTheView)
{
    auto view = makeView();
    platform.runUntilIdle();
    auto const webView = lastEngine();
    sdk().setOnPageNavigation([&](std::string const& address) {
        navigations.push_back(address);
        view.reset();
    });
    webView->setURL(url("https://shop.example/a"));
    webView->setURL(url("https://shop.example/b"));
    EXPECT_EQ(navigations, (std::vector<std::string> { "https://shop.example/a" }));
}

TEST_F(ZelvoraWebViewTest, TheCallbackMayReplaceItself)
{
    auto const view = makeView();
    platform.runUntilIdle();
    sdk().setOnPageNavigation([this](std::string const& address) {
        navigations.push_back("first " + address);
        listen();
    });
    engine(*view).setURL(url("https://shop.example/a"));
    engine(*view).setURL(url("https://shop.example/b"));
    EXPECT_EQ(navigations, (std::vector<std::string> { "first https://shop.example/a", "https://shop.example/b" }));
}

TEST_F(ZelvoraWebViewTest, MessagesActOnTheInnerWebViewAndOnTheScreen)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    auto const screen = std::make_shared<memory::ViewController>();
    presenter->present(screen, Animated::No);
    auto const view = makeView();
    view->setParentViewController(screen);

    engine(*view).postMessage(
        "zelvora", Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "answered" } });
    engine(*view).postMessage("zelvora", Dictionary { { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_EQ(engine(*view).evaluated().back(), "answered(null);");
    EXPECT_FALSE(memory::peer(*presenter).presentedViewController());
}

TEST_F(ZelvoraWebViewTest, ACloseWithoutAScreenDismissesNothing)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    presenter->present(std::make_shared<memory::ViewController>(), Animated::No);
    auto const view = makeView();
    engine(*view).postMessage("zelvora", Dictionary { { "action", "close" } });
    platform.runUntilIdle();
    EXPECT_TRUE(memory::peer(*presenter).presentedViewController());
}

TEST_F(ZelvoraWebViewTest, EveryViewAnswersItsOwnPage)
{
    auto const first = makeView();
    auto const second = makeView();
    engine(*first).postMessage("zelvora", Dictionary { { "action", "getEvents" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(engine(*first).evaluated().size(), 2U);
    EXPECT_TRUE(engine(*second).evaluated().empty());
}

TEST_F(ZelvoraWebViewTest, CustomActionsRegisteredLaterAreNotInTheViewsScript)
{
    sdk().addCustomAction("before", [](auto const&) { });
    auto const view = makeView();
    sdk().addCustomAction("after", [](auto const&) { });
    auto const& source = engine(*view).userContentController().userScripts().at(0).source;
    EXPECT_NE(source.find("var customKeys = [\"before\"];"), std::string::npos);
    EXPECT_EQ(source.find("after"), std::string::npos);
}

TEST_F(ZelvoraWebViewTest, ADestroyedViewReceivesAndReportsNothingMore)
{
    listen();
    auto view = makeView();
    platform.runUntilIdle();
    navigations.clear();
    auto const webView = lastEngine();
    platform.log().clear();
    view.reset();

    EXPECT_EQ(webView->observerCount(), 0U);
    EXPECT_FALSE(webView->userContentController().handler("zelvora"));
    EXPECT_FALSE(webView->navigationDelegate());
    EXPECT_FALSE(webView->postMessage("zelvora", Dictionary { { "action", "close" } }));
    webView->navigate(url("tel:1"));
    webView->setURL(url("https://shop.example/a"));
    EXPECT_TRUE(navigations.empty());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(ZelvoraWebViewTest, AViewThatIsDestroyedRightAfterItWasMadeLeavesNothing)
{
    makeView().reset();
    EXPECT_TRUE(platform.webViews().empty());
    platform.runUntilIdle();
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(ZelvoraWebViewTest, AViewCanBeDestroyedByItsOwnPagesMessage)
{
    auto view = makeView();
    auto const webView = lastEngine();
    sdk().addCustomAction("drop", [&view](auto const&) { view.reset(); });
    webView->postMessage("zelvora", Dictionary { { "action", "invokeCustomAction" }, { "name", "drop" } });
    EXPECT_FALSE(view);
    EXPECT_FALSE(webView->userContentController().handler("zelvora"));
}

TEST_F(ZelvoraWebViewTest, ConstructionFromAnArchiveStopsTheProcess)
{
    platform::NSCoder const archive;
    EXPECT_DEATH(ZelvoraWebView const view(archive), "Fatal error: init\\(coder:\\) has not been implemented\n");
}

TEST_F(ZelvoraWebViewTest, ThePlainInitialiserStopsTheProcess)
{
    EXPECT_DEATH(ZelvoraWebView const view(CGRect {}),
        "Fatal error: Use of unimplemented initializer 'init\\(frame:\\)' for class 'ZelvoraIOS.ZelvoraWebView'\n");
}

TEST(ZelvoraWebViewWithoutPlatformDeathTest, AViewMadeBeforeAPlatformIsInstalledStopsTheProcess)
{
    EXPECT_DEATH(ZelvoraWebView const view({}, "https://shop.example/", false),
        "the SDK was used before a platform was installed: call Platform::install first");
}

}

}
