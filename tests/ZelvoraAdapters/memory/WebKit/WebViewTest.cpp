#include "ZelvoraAdapters/memory/WebKit/WebView.h"

#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using memory::WebView;
using platform::URL;
using platform::Value;
using Policy = platform::WKNavigationActionPolicy;

URL url(std::string const& path)
{
    return *URL::parse("https://example.com/" + path);
}

class Delegate final : public platform::WKNavigationDelegate {
public:
    void decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler) override
    {
        asked.push_back(action.url);
        if (decidesLater)
            pending.emplace(std::move(decisionHandler));
        else
            decisionHandler(policy);
    }

    Policy policy = Policy::Allow;
    bool decidesLater = false;
    std::vector<std::optional<URL>> asked;
    std::optional<DecisionHandler> pending;
};

class Handler final : public platform::WKScriptMessageHandler {
public:
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override { heard.push_back(message); }

    std::vector<platform::WKScriptMessage> heard;
};

class WebViewTest : public InstalledPlatform {
protected:
    WebViewTest()
    {
        (void)platform.makeWebView({ 1, 2, 3, 4 }, { platform.makeUserContentController() });
        view = std::static_pointer_cast<WebView>(
            platform.makeWebView({ 1, 2, 3, 4 }, { platform.makeUserContentController() }));
        view->setNavigationDelegate(&delegate);
        observation = view->observeURL(
            [this](auto& changed) { urls.push_back(changed.url() ? changed.url()->absoluteString() : "none"); });
    }

    Delegate delegate;
    Handler handler;
    std::shared_ptr<WebView> view;
    std::unique_ptr<platform::NSKeyValueObservation> observation;
    std::vector<std::string> urls;
};

}

TEST_F(WebViewTest, ThePlatformListsTheWebViewsThatExist)
{
    EXPECT_EQ(platform.webViews(), std::vector { view });
    EXPECT_EQ(view->initialFrame(), (platform::CGRect { 1, 2, 3, 4 }));
    view.reset();
    EXPECT_TRUE(platform.webViews().empty());
}

TEST_F(WebViewTest, ALoadShowsItsURLAtOnceAndAsksTheDelegateLater)
{
    view->load({ .url = url("a") });
    EXPECT_EQ(view->url(), url("a"));
    EXPECT_EQ(urls, std::vector<std::string> { "https://example.com/a" });
    EXPECT_TRUE(delegate.asked.empty());
    platform.mainQueue().runAll();
    EXPECT_EQ(delegate.asked, std::vector { std::optional(url("a")) });
    EXPECT_EQ(urls.size(), 1u);
    EXPECT_FALSE(view->canGoBack());
    EXPECT_EQ(view->loadedRequests().size(), 1u);
}

TEST_F(WebViewTest, ARefusedLoadRestoresTheURL)
{
    delegate.policy = Policy::Cancel;
    view->load({ .url = url("a") });
    platform.mainQueue().runAll();
    EXPECT_EQ(view->url(), std::nullopt);
    EXPECT_EQ(urls, (std::vector<std::string> { "https://example.com/a", "none" }));
    EXPECT_EQ(view->decisions(), (std::vector<WebView::Decision> { { { url("a") }, Policy::Cancel } }));
}

TEST_F(WebViewTest, NavigationsMakeAHistoryToGoBackIn)
{
    view->load({ .url = url("a") });
    view->navigate(url("b"));
    view->navigate(url("c"));
    EXPECT_TRUE(view->canGoBack());
    view->goBack();
    EXPECT_EQ(view->url(), url("b"));
    view->navigate(url("d"));
    view->goBack();
    view->goBack();
    EXPECT_EQ(view->url(), url("a"));
    EXPECT_FALSE(view->canGoBack());
    view->goBack();
    EXPECT_EQ(view->url(), url("a"));
    platform.mainQueue().runAll();
    EXPECT_EQ(view->url(), url("a"));
}

TEST_F(WebViewTest, ARefusedNavigationAndOneOfAFrameKeepTheURL)
{
    view->navigate(url("a"));
    delegate.policy = Policy::Cancel;
    view->navigate(url("b"));
    view->navigateFrame(std::nullopt);
    delegate.policy = Policy::Allow;
    view->navigateFrame(url("frame"));
    EXPECT_EQ(view->url(), url("a"));
    EXPECT_FALSE(view->canGoBack());
    EXPECT_EQ(delegate.asked.size(), 4u);
    EXPECT_EQ(view->decisions().back(), (WebView::Decision { { url("frame") }, Policy::Allow }));
}

TEST_F(WebViewTest, ADecisionMayComeLateOrAfterTheViewIsGone)
{
    delegate.decidesLater = true;
    view->navigate(url("a"));
    EXPECT_EQ(view->url(), std::nullopt);
    (*delegate.pending)(Policy::Allow);
    EXPECT_EQ(view->url(), url("a"));

    delegate.pending.reset();
    view->navigate(url("b"));
    view.reset();
    (*delegate.pending)(Policy::Allow);
    EXPECT_EQ(urls.size(), 1u);
}

TEST_F(WebViewTest, OnlyAChangeOfTheURLIsObservedUntilTheObservationEnds)
{
    view->setURL(url("a"));
    view->setURL(url("a"));
    view->setURL(std::nullopt);
    EXPECT_EQ(urls, (std::vector<std::string> { "https://example.com/a", "none" }));
    EXPECT_EQ(view->observerCount(), 1u);
    observation->invalidate();
    view->setURL(url("b"));
    EXPECT_EQ(urls.size(), 2u);
    EXPECT_EQ(view->observerCount(), 0u);
}

TEST_F(WebViewTest, AnObservationMayEndInItsHandlerAndOutliveTheView)
{
    std::unique_ptr<platform::NSKeyValueObservation> other;
    other = view->observeURL([&](auto&) { other.reset(); });
    view->setURL(url("a"));
    EXPECT_EQ(other, nullptr);
    view.reset();
    observation->invalidate();
}

TEST_F(WebViewTest, AMessageReachesTheHandlerOfItsNameWhileThereIsOne)
{
    auto& controller = view->userContentController();
    controller.addScriptMessageHandler(handler, "zelvora");
    EXPECT_TRUE(view->postMessage("zelvora", "body"));
    EXPECT_FALSE(view->postMessage("other", "body"));
    EXPECT_DEATH(controller.addScriptMessageHandler(handler, "zelvora"), "under a name that has one");
    controller.removeScriptMessageHandler("zelvora");
    EXPECT_FALSE(view->postMessage("zelvora", "body"));
    EXPECT_EQ(handler.heard, (std::vector<platform::WKScriptMessage> { { "zelvora", "body" } }));
}

TEST_F(WebViewTest, AllCallsAreRecordedInOneOrder)
{
    auto const controller = platform.makeUserContentController();
    controller->addScriptMessageHandler(handler, "zelvora");
    controller->addUserScript({ .source = "script" });
    auto const made = std::static_pointer_cast<WebView>(platform.makeWebView({}, { controller }));
    made->setInspectable(true);
    made->setTranslatesAutoresizingMaskIntoConstraints(false);
    made->load({ .url = url("a") });
    made->evaluateJavaScript("1 + 1");
    EXPECT_EQ(made->calls(),
        (std::vector<std::string> { "addScriptMessageHandler zelvora", "addUserScript", "makeWebView",
            "setInspectable true", "setTranslatesAutoresizingMaskIntoConstraints false", "load https://example.com/a",
            "evaluateJavaScript" }));
    EXPECT_EQ(made->evaluated(), std::vector<std::string> { "1 + 1" });
    EXPECT_EQ(made->userContentController().userScripts().front().source, "script");
}

}
