#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "tests/ZelvoraAdapters/gtk/WebKit/PageTest.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using platform::Array;
using platform::Value;
using platform::WKNavigationActionPolicy;

class WebViewTest : public PageTest { };

/// Delays its decisions until it is told to answer.
class SlowDelegate final : public platform::WKNavigationDelegate {
public:
    void decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler) override
    {
        asked.push_back(action.url ? action.url->absoluteString() : "none");
        m_open.push_back(std::move(decisionHandler));
    }
    void didStartProvisionalNavigation() override { ++starts; }

    void decide(WKNavigationActionPolicy policy)
    {
        for (auto& open : std::exchange(m_open, {}))
            open(policy);
    }

    std::vector<std::string> asked;
    int starts = 0;

private:
    std::vector<DecisionHandler> m_open;
};

guint windowCount()
{
    return g_list_model_get_n_items(gtk_window_get_toplevels());
}

}

TEST_F(WebViewTest, UserScriptsRunBeforeAndAfterThePagesOwnInTheFramesThatTheyAreFor)
{
    addScript("webkit.messageHandlers.zelvora.postMessage('start ' + location.pathname);");
    addScript("webkit.messageHandlers.zelvora.postMessage('main ' + location.pathname);",
        platform::WKUserScriptInjectionTime::AtDocumentStart, true);
    addScript("webkit.messageHandlers.zelvora.postMessage('end ' + location.pathname);",
        platform::WKUserScriptInjectionTime::AtDocumentEnd);
    auto const own =
        std::string("<script>webkit.messageHandlers.zelvora.postMessage('own ' + location.pathname)</script>");
    // Another host is another origin.
    auto frame = m_harness.page("frame", own).absoluteString();
    frame.replace(frame.find("localhost"), 9, "127.0.0.1");
    load(m_harness.page("page", own + "<iframe src='" + frame + "'></iframe>"));

    std::vector<std::string> page;
    std::vector<std::string> inFrame;
    for (int count = 0; count < 7; ++count) {
        auto const body = next();
        ASSERT_TRUE(body.text()) << debugDescription(body);
        auto const text = *body.text();
        auto const blank = text.find(' ');
        (text.substr(blank + 1) == "/frame" ? inFrame : page).push_back(text.substr(0, blank));
    }
    EXPECT_EQ(page, (std::vector<std::string> { "start", "main", "own", "end" }));
    EXPECT_EQ(inFrame, (std::vector<std::string> { "start", "own", "end" }));
}

TEST_F(WebViewTest, URLsAreReportedAsTheEngineHasThem)
{
    loadAndWait("address");
    view().evaluateJavaScript("history.pushState({}, '', '?a[]=1|{2}#b#c')");
    EXPECT_TRUE(m_harness.runUntil([&] { return view().url()->absoluteString().ends_with("?a[]=1|{2}#b#c"); }));

    SlowDelegate delegate;
    view().setNavigationDelegate(&delegate);
    view().evaluateJavaScript("location.href = 'myapp:a[]|100%'");
    EXPECT_TRUE(m_harness.runUntil([&] { return !delegate.asked.empty(); }));
    EXPECT_EQ(delegate.asked, (std::vector<std::string> { "myapp:a[]|100%" }));
    delegate.decide(WKNavigationActionPolicy::Cancel);
    view().setNavigationDelegate(nullptr);
}

TEST_F(WebViewTest, ScriptDialogsAreAnsweredWithNoPanel)
{
    loadAndWait("dialogs");
    auto const windows = windowCount();
    post("[alert('x'), confirm('y'), prompt('z', 'default')]");
    EXPECT_EQ(next(), (Value(Array { platform::Null {}, false, platform::Null {} })));
    EXPECT_EQ(windowCount(), windows);
    // A page that asks before it is left is left anyway.
    view().evaluateJavaScript("onbeforeunload = event => { event.preventDefault(); return 'stay'; }");
    auto const other = m_harness.page("other");
    load(other);
    EXPECT_TRUE(m_harness.runUntil([&] { return m_view->url() == other; }));
}

TEST_F(WebViewTest, NoWindowOpensThoughTheDelegateIsAsked)
{
    SlowDelegate delegate;
    auto const target = m_harness.page("target").absoluteString();
    loadAndWait("<a id=link target=_blank href='" + target + "'>link</a>");
    auto const shown = m_view->url();
    view().setNavigationDelegate(&delegate);
    auto const windows = windowCount();
    view().evaluateJavaScript("link.click()");
    EXPECT_TRUE(m_harness.runUntil([&] { return delegate.asked.size() == 1; }));
    EXPECT_EQ(delegate.asked.front(), target);
    delegate.decide(WKNavigationActionPolicy::Allow);
    post("'alive'");
    EXPECT_EQ(next(), Value("alive"));
    EXPECT_EQ(windowCount(), windows);
    EXPECT_EQ(m_view->url(), shown);
    view().setNavigationDelegate(nullptr);
}

TEST_F(WebViewTest, APageThatPrintsShowsNoPanel)
{
    loadAndWait("printing");
    auto const windows = windowCount();
    std::size_t most = windows;
    auto const watch = gtk::attach(
        g_timeout_source_new(10), [&most] { most = std::max(most, static_cast<std::size_t>(windowCount())); });
    post("print() || 'printed'");
    EXPECT_EQ(next(), Value("printed"));
    EXPECT_EQ(most, windows);
}

TEST_F(WebViewTest, NothingIsDownloaded)
{
    auto const file = m_harness.page("file.bin").absoluteString();
    loadAndWait("<a id=link download href='" + file + "'>link</a>");
    struct {
        bool hasFile = false;
        bool hasFinished = false;
    } download;
    g_signal_connect(webkit_web_view_get_network_session(gtk::webKitWebViewOf(*m_view)), "download-started",
        G_CALLBACK(+[](WebKitNetworkSession*, WebKitDownload* started, decltype(download)* told) {
            g_signal_connect_swapped(
                started, "created-destination", G_CALLBACK(+[](bool* hasFile) { *hasFile = true; }), &told->hasFile);
            g_signal_connect_swapped(
                started, "finished", G_CALLBACK(+[](bool* hasFinished) { *hasFinished = true; }), &told->hasFinished);
        }),
        &download);
    view().evaluateJavaScript("link.click()");
    EXPECT_TRUE(m_harness.runUntil([&] { return download.hasFinished; }));
    EXPECT_FALSE(download.hasFile);
    post("'alive'");
    EXPECT_EQ(next(), Value("alive"));
}

TEST_F(WebViewTest, ADelegateMayAnswerLater)
{
    SlowDelegate delegate;
    view().setNavigationDelegate(&delegate);
    auto const url = m_harness.page("page");
    load(url);
    EXPECT_TRUE(m_harness.runUntil([&] { return delegate.asked.size() == 1; }));
    EXPECT_EQ(delegate.starts, 0);
    delegate.decide(WKNavigationActionPolicy::Allow);
    EXPECT_TRUE(m_harness.runUntil([&] { return delegate.starts == 1; }));
    m_harness.waitForPage(*m_view);
    // It may even answer after the view is destroyed.
    load(m_harness.page("never"));
    EXPECT_TRUE(m_harness.runUntil([&] { return delegate.asked.size() == 2; }));
    view().setNavigationDelegate(nullptr);
    std::weak_ptr<platform::UIView> const watched = m_view;
    m_view->removeFromSuperview();
    m_view.reset();
    EXPECT_TRUE(watched.expired());
    delegate.decide(WKNavigationActionPolicy::Cancel);
}

TEST_F(WebViewTest, ReportsURLChangesThatPagesMakeInPlace)
{
    std::vector<std::string> urls;
    loadAndWait("place");
    auto const observation =
        view().observeURL([&](platform::WKWebView& told) { urls.push_back(told.url()->absoluteString()); });
    auto const base = m_view->url()->absoluteString();
    view().evaluateJavaScript("history.pushState({}, '', '?pushed'); location.hash = 'part';"
                              "history.replaceState({}, '', location.href);");
    EXPECT_TRUE(m_harness.runUntil([&] { return urls.size() == 2; }));
    post("'done'");
    EXPECT_EQ(next(), Value("done"));
    EXPECT_EQ(urls, (std::vector { base + "?pushed", base + "?pushed#part" }));
    EXPECT_TRUE(m_view->canGoBack());
}

TEST_F(WebViewTest, APageWhoseProcessDiedIsReloadedWithItsHandlers)
{
    addScript("webkit.messageHandlers.zelvora.postMessage('loaded');");
    loadAndWait("mortal");
    EXPECT_EQ(next(), Value("loaded"));
    auto* engine = gtk::webKitWebViewOf(*m_view);
    constexpr int deaths = 3;
    for (int death = 0; death < deaths; ++death) {
        webkit_web_view_terminate_web_process(engine);
        EXPECT_EQ(next(), Value("loaded"));
        m_harness.waitForPage(*m_view);
    }
    // A page that keeps killing its process is not reloaded forever.
    bool hasDied = false;
    g_signal_connect_swapped(engine, "web-process-terminated", G_CALLBACK(+[](bool* died) { *died = true; }), &hasDied);
    webkit_web_view_terminate_web_process(engine);
    EXPECT_TRUE(m_harness.runUntil([&] { return hasDied; }));
    EXPECT_FALSE(webkit_web_view_is_loading(engine));
}

TEST_F(WebViewTest, ARequestWhoseProcessDiesBeforeThereIsAPageIsMadeAgainWithItsHeaders)
{
    LoopbackServer server;
    auto const url = server.serve("/slow", [](SoupServerMessage* message) { soup_server_message_pause(message); });
    view().load({ .url = url, .httpHeaderFields = { { "X-Zelvora", "yes" } } });
    ASSERT_TRUE(m_harness.runUntil([&] { return server.received().size() == 1; }));
    webkit_web_view_terminate_web_process(gtk::webKitWebViewOf(*m_view));
    ASSERT_TRUE(m_harness.runUntil([&] { return server.received().size() == 2; }));
    EXPECT_EQ(server.received().back().headers.at("x-zelvora"), "yes");
}

// The engine posts it once more by itself when it loads the page again.
TEST_F(WebViewTest, AFormThatFailedIsNotPostedAThirdTimeWhenTheProcessOfItsPageDied)
{
    LoopbackServer server;
    auto const respond = [](SoupServerMessage* message) {
        std::string const page = "<form method=post><input name=order value=1></form>";
        bool const isPosted = soup_server_message_get_method(message) == std::string("POST");
        soup_server_message_set_status(message, isPosted ? 500 : 200, nullptr);
        soup_server_message_set_response(message, "text/html", SOUP_MEMORY_COPY, page.data(), page.size());
    };
    addScript("webkit.messageHandlers.zelvora.postMessage('loaded');");
    load(server.serve("/form", respond));
    EXPECT_EQ(next(), Value("loaded"));
    EXPECT_TRUE(m_harness.waitForPage(*m_view));
    m_view->evaluateJavaScript("document.forms[0].submit()");
    EXPECT_EQ(next(), Value("loaded"));
    EXPECT_TRUE(m_harness.waitForPage(*m_view));
    webkit_web_view_terminate_web_process(gtk::webKitWebViewOf(*m_view));
    EXPECT_EQ(next(), Value("loaded"));
    EXPECT_TRUE(m_harness.waitForPage(*m_view));
    auto const received = server.received();
    EXPECT_EQ(std::ranges::count(received, "POST", &ReceivedRequest::method), 2);
}

TEST_F(WebViewTest, ARequestKeepsItsHeadersAndItsSettingsReachTheEngine)
{
    addScript("webkit.messageHandlers.zelvora.postMessage('loaded');");
    auto const url = m_harness.page("page");
    view().load({ .url = url, .httpHeaderFields = { { "X-Zelvora", "yes" } } });
    EXPECT_EQ(next(), Value("loaded"));
    auto const received = m_harness.received();
    ASSERT_FALSE(received.empty());
    EXPECT_EQ(received.front().headers.at("x-zelvora"), "yes");

    auto* settings = webkit_web_view_get_settings(gtk::webKitWebViewOf(*m_view));
    view().setInspectable(true);
    view().setAllowsBackForwardNavigationGestures(true);
    EXPECT_TRUE(webkit_settings_get_enable_developer_extras(settings));
    EXPECT_TRUE(webkit_settings_get_enable_back_forward_navigation_gestures(settings));
    view().setInspectable(false);
    view().setAllowsBackForwardNavigationGestures(false);
    EXPECT_FALSE(webkit_settings_get_enable_developer_extras(settings));
    EXPECT_FALSE(webkit_settings_get_enable_back_forward_navigation_gestures(settings));
}

TEST_F(WebViewTest, AContentControllerMayBeDestroyedBeforeItsHandlers)
{
    auto content = platform::Platform::current().makeUserContentController();
    Handler handler;
    content->addScriptMessageHandler(handler, "left");
    content.reset();
    EXPECT_TRUE(handler.bodies.empty());
    // Removing an unknown name does nothing.
    m_content->removeScriptMessageHandler("left");
}

TEST_F(WebViewTest, ADestroyedViewTakesTheEnginesViewWithIt)
{
    loadAndWait("short");
    gpointer engine = gtk::webKitWebViewOf(*m_view);
    g_object_add_weak_pointer(G_OBJECT(engine), &engine);
    post("'alive'");
    EXPECT_EQ(next(), Value("alive"));
    m_view->removeFromSuperview();
    m_view.reset();
    EXPECT_TRUE(m_harness.runUntil([&] { return !engine; }));
}

TEST_F(WebViewTest, AnObserverMayDestroyTheViewThatItObserves)
{
    for (auto const* change : { "history.pushState({}, '', '?pushed')", "location.href = '/page?loaded'" }) {
        loadAndWait("watched");
        gpointer engine = gtk::webKitWebViewOf(*m_view);
        g_object_add_weak_pointer(G_OBJECT(engine), &engine);
        std::unique_ptr<platform::NSKeyValueObservation> observation = view().observeURL([&](platform::WKWebView&) {
            observation.reset();
            m_view->removeFromSuperview();
            m_view.reset();
        });
        view().evaluateJavaScript(change);
        EXPECT_TRUE(m_harness.runUntil([&] { return !m_view && !engine; }));
        m_content->removeScriptMessageHandler("mark");
    }
}

TEST_F(WebViewTest, AHandlerMayDestroyTheViewThatItServes)
{
    class Ending final : public platform::WKScriptMessageHandler {
    public:
        void didReceiveScriptMessage(platform::WKScriptMessage const&) override { std::exchange(end, nullptr)(); }

        std::function<void()> end;
    };
    auto ending = std::make_unique<Ending>();
    auto content = platform::Platform::current().makeUserContentController();
    content->addScriptMessageHandler(*ending, "end");
    auto ended = platform::Platform::current().makeWebView({}, { content });
    std::weak_ptr<platform::UIView> const watched = ended;
    m_harness.show(ended);
    ending->end = [&] {
        content->removeScriptMessageHandler("end");
        ending.reset();
        content.reset();
        ended->removeFromSuperview();
        ended.reset();
    };
    ended->load({ m_harness.page("ending",
        "<script>webkit.messageHandlers.end.postMessage(1);"
        "webkit.messageHandlers.end.postMessage(2)</script>") });
    EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired(); }));
    loadAndWait("other");
    post("'alive'");
    EXPECT_EQ(next(), Value("alive"));
}

}
