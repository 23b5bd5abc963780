#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "ZelvoraPlatform/Platform.h"
#include "tests/uikit/live/LiveHarness.h"
#include "tests/uikit/live/WebKit.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

using platform::Value;
using platform::WKNavigationActionPolicy;
using platform::WKUserScriptInjectionTime;

namespace {

/// Keeps what pages post.
class Handler final : public platform::WKScriptMessageHandler {
public:
    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override { bodies.push_back(message.body); }

    std::vector<Value> bodies;
};

/// Keeps its decisions for later.
class Delegate final : public platform::WKNavigationDelegate {
public:
    void decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler) override
    {
        asked.push_back(action.url ? action.url->absoluteString() : "none");
        pending.push_back(std::move(decisionHandler));
    }
    void didStartProvisionalNavigation() override { ++started; }

    std::vector<std::string> asked;
    std::vector<DecisionHandler> pending;
    int started = 0;
};

/// What the phone's web view promises and no double without an engine can show.
class LiveWebViewTest : public testing::Test {
protected:
    LiveWebViewTest()
    {
        m_content->addScriptMessageHandler(m_handler, "zelvora");
        m_view = platform::Platform::current().makeWebView({ 0, 0, 390, 844 }, { m_content });
        m_native = static_cast<::WKWebView*>(uikit::nativeOf(*m_view));
        m_harness.show(m_view);
    }
    ~LiveWebViewTest() override
    {
        m_view->setNavigationDelegate(nullptr);
        m_content->removeScriptMessageHandler("zelvora");
    }

    bool receives(std::vector<Value> const& expected)
    {
        return m_harness.runUntil([&] { return m_handler.bodies.size() >= expected.size(); })
            && m_handler.bodies == expected;
    }

    LiveHarness m_harness;
    Handler m_handler;
    Delegate m_delegate;
    std::shared_ptr<platform::WKUserContentController> m_content =
        platform::Platform::current().makeUserContentController();
    std::shared_ptr<platform::WKWebView> m_view;
    ::WKWebView* m_native = nil;
};

}

TEST_F(LiveWebViewTest, APageWhoseProcessDiesIsLoadedAgainWithItsHandlersUnlessThatKeepsHappening)
{
    auto const url = m_harness.page("mortal", "<script>webkit.messageHandlers.zelvora.postMessage('loaded')</script>");
    m_view->load({ .url = url });
    std::vector<Value> expected { "loaded" };
    ASSERT_TRUE(receives(expected));
    for (int death = 1; death <= 3; ++death) {
        live::killProcess(m_native);
        EXPECT_TRUE(live::isLoading(m_native));
        expected.emplace_back("loaded");
        ASSERT_TRUE(receives(expected)) << death;
        ASSERT_TRUE(m_harness.waitForPage(*m_view));
    }
    live::killProcess(m_native);
    EXPECT_FALSE(live::isLoading(m_native));
}

TEST_F(LiveWebViewTest, ARequestWhoseProcessDiesBeforeThereIsAPageIsMadeAgainWithItsHeaders)
{
    auto const url = *platform::URL::parse(m_harness.server().serveNothing("/slow"));
    m_view->load({ .url = url, .httpHeaderFields = { { "X-Zelvora", "yes" } } });
    ASSERT_TRUE(m_harness.runUntil([&] { return m_harness.server().received().size() == 1; }));
    EXPECT_EQ(m_harness.server().received().back().headers.at("x-zelvora"), "yes");
    live::killProcess(m_native);
    ASSERT_TRUE(m_harness.runUntil([&] { return m_harness.server().received().size() == 2; }));
    EXPECT_EQ(m_harness.server().received().back().headers.at("x-zelvora"), "yes");
}

TEST_F(LiveWebViewTest, ANavigationWaitsForADecisionThatIsMadeLater)
{
    auto const url = m_harness.page("late", "<script>webkit.messageHandlers.zelvora.postMessage('loaded')</script>");
    m_view->setNavigationDelegate(&m_delegate);
    m_view->load({ .url = url });
    ASSERT_TRUE(m_harness.runUntil([&] { return m_delegate.pending.size() == 1; }));
    // The engine has nothing left to do.
    live::evaluate(m_native, @"1");
    EXPECT_EQ(m_delegate.started, 0);
    EXPECT_TRUE(m_harness.server().received().empty());
    m_delegate.pending.front()(WKNavigationActionPolicy::Allow);
    EXPECT_TRUE(receives({ "loaded" }));
    EXPECT_EQ(m_delegate.started, 1);
}

TEST_F(LiveWebViewTest, APageThatIsRefusedIsNotAskedForAndTheOneBeforeItStays)
{
    auto const url = m_harness.page("first", "<a id=link href='/refused'>there</a>");
    m_view->load({ .url = url });
    ASSERT_TRUE(m_harness.waitForPage(*m_view));
    m_view->setNavigationDelegate(&m_delegate);
    m_view->evaluateJavaScript("document.getElementById('link').click()");
    ASSERT_TRUE(m_harness.runUntil([&] { return m_delegate.pending.size() == 1; }));
    EXPECT_EQ(m_delegate.asked, (std::vector { m_harness.page("refused").absoluteString() }));
    m_delegate.pending.front()(WKNavigationActionPolicy::Cancel);
    // A load that is behind it shows that nothing came of it.
    m_view->load({ .url = m_harness.page("second") });
    ASSERT_TRUE(m_harness.runUntil([&] { return m_delegate.pending.size() == 2; }));
    EXPECT_EQ(m_delegate.started, 0);
    EXPECT_EQ(m_harness.server().received().size(), 1U);
    m_delegate.pending.back()(WKNavigationActionPolicy::Cancel);
    m_harness.post(*m_view, "zelvora", "location.href", {});
    EXPECT_TRUE(receives({ url.absoluteString() }));
}

TEST_F(LiveWebViewTest, ADecisionMayBeMadeWhenTheViewIsGone)
{
    m_view->setNavigationDelegate(&m_delegate);
    m_view->load({ .url = m_harness.page("late") });
    ASSERT_TRUE(m_harness.runUntil([&] { return m_delegate.pending.size() == 1; }));
    m_view->setNavigationDelegate(nullptr);
    m_view->removeFromSuperview();
    __weak ::WKWebView* const watched = std::exchange(m_native, nil);
    m_view = platform::Platform::current().makeWebView({ 0, 0, 390, 844 }, { m_content });
    ASSERT_TRUE(m_harness.runUntil([&] { return watched == nil; }));
    m_delegate.pending.front()(WKNavigationActionPolicy::Allow);
    live::evaluate(static_cast<::WKWebView*>(uikit::nativeOf(*m_view)), @"1");
    EXPECT_TRUE(m_harness.server().received().empty());
}

TEST_F(LiveWebViewTest, AWindowThatAPageOpensIsAskedAboutAndNeverOpens)
{
    auto const url = m_harness.page("opener", "<a id=link target=_blank href='/elsewhere'>there</a>");
    m_view->load({ .url = url });
    ASSERT_TRUE(m_harness.waitForPage(*m_view));
    m_view->setNavigationDelegate(&m_delegate);
    m_view->evaluateJavaScript("document.getElementById('link').click()");
    ASSERT_TRUE(m_harness.runUntil([&] { return m_delegate.pending.size() == 1; }));
    EXPECT_EQ(m_delegate.asked, (std::vector { m_harness.page("elsewhere").absoluteString() }));
    m_delegate.pending.front()(WKNavigationActionPolicy::Allow);
    m_harness.post(*m_view, "zelvora", "location.href", {});
    EXPECT_TRUE(receives({ url.absoluteString() }));
    EXPECT_EQ(m_harness.server().received().size(), 1U);
}

TEST_F(LiveWebViewTest, ScriptsRunInTheirOrderTimesAndFrames)
{
    auto const add = [this](std::string const& mark, WKUserScriptInjectionTime time, bool forMainFrameOnly) {
        auto const place = "(top === window ? ' top ' : ' frame ')";
        auto const page = "(document.querySelector('b') ? 'whole' : 'empty')";
        m_content->addUserScript(
            { "webkit.messageHandlers.zelvora.postMessage('" + mark + "' + " + place + " + " + page + ")", time,
                forMainFrameOnly });
    };
    add("first", WKUserScriptInjectionTime::AtDocumentStart, true);
    add("second", WKUserScriptInjectionTime::AtDocumentStart, false);
    add("last", WKUserScriptInjectionTime::AtDocumentEnd, true);
    m_view->load({ .url = m_harness.page("plain", "<b></b>") });
    ASSERT_TRUE(receives({ "first top empty", "second top empty", "last top whole" }));
    m_harness.navigateFrame(*m_view, m_harness.page("framed", "<b></b>"));
    EXPECT_TRUE(receives({ "first top empty", "second top empty", "last top whole", "second frame empty" }));
}

TEST_F(LiveWebViewTest, ViewsThatShareAContentControllerShareItsHandlers)
{
    auto const other = platform::Platform::current().makeWebView({ 0, 0, 390, 844 }, { m_content });
    auto const post = [](std::string const& text) {
        return "<script>webkit.messageHandlers.zelvora.postMessage('" + text + "')</script>";
    };
    m_view->load({ .url = m_harness.page("first", post("first")) });
    ASSERT_TRUE(receives({ "first" }));
    other->load({ .url = m_harness.page("second", post("second")) });
    ASSERT_TRUE(receives({ "first", "second" }));
    m_content->removeScriptMessageHandler("zelvora");
    Handler late;
    m_content->addScriptMessageHandler(late, "late");
    for (auto const& view : { m_view, other })
        view->evaluateJavaScript("webkit.messageHandlers.late.postMessage(typeof webkit.messageHandlers.zelvora)");
    EXPECT_TRUE(m_harness.runUntil([&] { return late.bodies.size() == 2; }));
    EXPECT_EQ(late.bodies, (std::vector<Value> { "undefined", "undefined" }));
    m_content->removeScriptMessageHandler("late");
}

}
