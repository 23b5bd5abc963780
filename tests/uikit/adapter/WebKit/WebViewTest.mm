#include "ZelvoraAdapters/uikit/WebKit/WebView.h"

#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Platform.h"
#include "tests/uikit/doubles/WebKit.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

class Handler final : public platform::WKScriptMessageHandler {
public:
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override { messages.push_back(message); }

    std::vector<platform::WKScriptMessage> messages;
};

/// Keeps its decisions for later.
class Delegate final : public platform::WKNavigationDelegate {
public:
    void decidePolicyFor(platform::WKNavigationAction const&, DecisionHandler decisionHandler) override
    {
        pending.push_back(std::move(decisionHandler));
    }
    void didStartProvisionalNavigation() override { ++started; }

    std::vector<DecisionHandler> pending;
    int started = 0;
};

class WebViewTest : public testing::Test {
protected:
    WebViewTest()
    {
        uikit::install();
        m_content = platform::Platform::current().makeUserContentController();
        m_view = platform::Platform::current().makeWebView({ 0, 0, 10, 20 }, { m_content });
        m_native = static_cast<::WKWebView*>(uikit::nativeOf(*m_view));
    }

    void navigateTo(NSString* url) { [m_native doubleNavigateTo:[NSURL URLWithString:url]]; }

    std::shared_ptr<platform::WKUserContentController> m_content;
    std::shared_ptr<platform::WKWebView> m_view;
    ::WKWebView* m_native;
};

}

TEST_F(WebViewTest, AURLThatTheSystemDoesNotTakeLeavesTheViewBlank)
{
    m_view->load({ .url = *platform::URL::verbatim("https://\xff") });
    EXPECT_TRUE(doubles::loadedRequests(m_native).empty());
    EXPECT_EQ(m_view->url(), std::nullopt);
}

TEST_F(WebViewTest, ScriptsAreGivenToTheSystem)
{
    m_content->addUserScript({ "window.a = 1;", platform::WKUserScriptInjectionTime::AtDocumentEnd, true });
    m_content->addUserScript({ .source = "\xff" });
    NSArray* scripts = m_native.configuration.userContentController.userScripts;
    ASSERT_EQ(scripts.count, 1U);
    ::WKUserScript* script = [scripts objectAtIndex:0];
    EXPECT_TRUE([script.source isEqualToString:@"window.a = 1;"]);
    EXPECT_EQ(script.injectionTime, WKUserScriptInjectionTimeAtDocumentEnd);
    EXPECT_TRUE(script.forMainFrameOnly);
    m_view->evaluateJavaScript("\xff");
    EXPECT_TRUE(doubles::evaluatedScripts(m_native).empty());
}

TEST_F(WebViewTest, AMessageOfAnotherClassIsDropped)
{
    Handler handler;
    m_content->addScriptMessageHandler(handler, "name");
    [m_native doublePost:[[NSObject alloc] init] toHandler:@"name"];
    [m_native doublePost:@[ @1, [[NSObject alloc] init] ] toHandler:@"name"];
    EXPECT_TRUE(handler.messages.empty());
    [m_native doublePost:@[ @1 ] toHandler:@"name"];
    ASSERT_EQ(handler.messages.size(), 1U);
    EXPECT_EQ(handler.messages.front(), (platform::WKScriptMessage { "name", platform::Array { 1 } }));
    m_content->removeScriptMessageHandler("name");
    m_content->removeScriptMessageHandler("name");
    EXPECT_FALSE([m_native doublePost:@1 toHandler:@"name"]);
}

TEST_F(WebViewTest, AContentControllerThatEndsTakesItsHandlersBack)
{
    Handler handler;
    ::WKUserContentController* native = m_native.configuration.userContentController;
    m_content->addScriptMessageHandler(handler, "name");
    EXPECT_EQ(native.doubleHandlerCount, 1U);
    m_view.reset();
    m_content.reset();
    EXPECT_EQ(native.doubleHandlerCount, 0U);
}

TEST_F(WebViewTest, AHandlerNameThatIsTakenStopsTheProcess)
{
    Handler handler;
    m_content->addScriptMessageHandler(handler, "name");
    EXPECT_DEATH(m_content->addScriptMessageHandler(handler, "name"), "was added already");
    m_content->removeScriptMessageHandler("name");
}

TEST_F(WebViewTest, WithoutADelegateEveryNavigationIsAllowed)
{
    navigateTo(@"tel:1");
    EXPECT_EQ(doubles::decisions(m_native), (std::vector<std::string> { "allow tel:1" }));
}

TEST_F(WebViewTest, ADecisionMayComeAfterTheViewIsGone)
{
    Delegate delegate;
    m_view->setNavigationDelegate(&delegate);
    navigateTo(@"https://shop.example/");
    ASSERT_EQ(delegate.pending.size(), 1U);
    m_view->setNavigationDelegate(nullptr);
    m_view.reset();
    delegate.pending.front()(platform::WKNavigationActionPolicy::Allow);
    EXPECT_EQ(doubles::decisions(m_native), (std::vector<std::string> { "allow https://shop.example/" }));
    EXPECT_EQ(delegate.started, 0);
}

TEST_F(WebViewTest, TheDelegateIsToldOfANavigationThatStarts)
{
    Delegate delegate;
    m_view->setNavigationDelegate(&delegate);
    navigateTo(@"https://shop.example/");
    delegate.pending.front()(platform::WKNavigationActionPolicy::Allow);
    EXPECT_EQ(delegate.started, 1);
    m_view->setNavigationDelegate(nullptr);
}

TEST_F(WebViewTest, APageWhoseProcessDiesIsReloadedUnlessThatKeepsHappening)
{
    for (int death = 1; death <= 3; ++death) {
        [m_native doubleTerminateProcess];
        EXPECT_EQ(doubles::reloadCount(m_native), death);
    }
    [m_native doubleTerminateProcess];
    EXPECT_EQ(doubles::reloadCount(m_native), 3);
}

TEST_F(WebViewTest, ARequestWhoseProcessDiesBeforeThereIsAPageIsMadeAgain)
{
    m_view->load(
        { .url = *platform::URL::parse("https://shop.example/"), .httpHeaderFields = { { "X-Zelvora", "1" } } });
    // The one that this one replaces.
    [m_native doubleFailLoad:NSURLErrorCancelled];
    [m_native doubleTerminateProcess];
    ASSERT_EQ(doubles::loadedRequests(m_native).size(), 2U);
    EXPECT_TRUE([[doubles::loadedRequests(m_native).back() valueForHTTPHeaderField:@"X-Zelvora"] isEqual:@"1"]);
    EXPECT_EQ(doubles::reloadCount(m_native), 0);
    navigateTo(@"https://shop.example/cart");
    [m_native doubleTerminateProcess];
    EXPECT_EQ(doubles::loadedRequests(m_native).size(), 2U);
    EXPECT_EQ(doubles::reloadCount(m_native), 1);
}

TEST_F(WebViewTest, ARequestThatFailedIsNotMadeAgain)
{
    m_view->load({ .url = *platform::URL::parse("https://shop.example/") });
    [m_native doubleFailLoad:NSURLErrorUnsupportedURL];
    [m_native doubleTerminateProcess];
    EXPECT_EQ(doubles::loadedRequests(m_native).size(), 1U);
    EXPECT_EQ(doubles::reloadCount(m_native), 1);
}

TEST_F(WebViewTest, AURLThatIsSetAgainIsNoChange)
{
    navigateTo(@"https://shop.example/");
    int changes = 0;
    auto const observation = m_view->observeURL([&changes](platform::WKWebView&) { ++changes; });
    [m_native doubleTellURLAgain];
    EXPECT_EQ(changes, 0);
    navigateTo(@"https://shop.example/cart");
    [m_native doubleTellURLAgain];
    EXPECT_EQ(changes, 1);
}

TEST_F(WebViewTest, AHandlerMayEndOtherObservationsAndTheView)
{
    int calls = 0;
    std::unique_ptr<platform::NSKeyValueObservation> second;
    auto const first = m_view->observeURL([&](platform::WKWebView&) {
        ++calls;
        second.reset();
        m_view.reset();
    });
    second = m_view->observeURL([&calls](platform::WKWebView&) { calls += 10; });
    auto const third = m_view->observeURL([&calls](platform::WKWebView&) { calls += 100; });
    navigateTo(@"https://shop.example/");
    EXPECT_EQ(calls, 1);
    navigateTo(@"https://shop.example/cart");
    EXPECT_EQ(calls, 1);
}

TEST_F(WebViewTest, AWebViewOfTheHostsIsWrappedWithItsDelegateLeftAlone)
{
    @autoreleasepool {
        WKWebViewConfiguration* configuration = [[WKWebViewConfiguration alloc] init];
        ::WKWebView* native = [[::WKWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1) configuration:configuration];
        auto const wrapped = uikit::wrap(native);
        ASSERT_NE(wrapped, nullptr);
        EXPECT_EQ(uikit::wrap(native), wrapped);
        EXPECT_TRUE(native.navigationDelegate == nil);
        wrapped->evaluateJavaScript("1");
        EXPECT_EQ(doubles::evaluatedScripts(native), (std::vector<std::string> { "1" }));
        Handler handler;
        wrapped->configuration().userContentController->addScriptMessageHandler(handler, "name");
        EXPECT_EQ(configuration.userContentController.doubleHandlerCount, 1U);
        wrapped->configuration().userContentController->removeScriptMessageHandler("name");
    }
    EXPECT_EQ(uikit::wrap(m_native), m_view);
}

}
