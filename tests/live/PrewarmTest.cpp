#include "ZelvoraPlatform/Platform.h"
#include "examples/driving/ChildProcesses.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace zelvora::tests {

namespace {

using examples::webProcesses;
using gtk::runMainLoopUntil;
using platform::Platform;

// The engine stops the host if a process dies before that.
bool isConnected(pid_t process)
{
    std::error_code failure;
    std::filesystem::directory_iterator thread("/proc/" + std::to_string(process) + "/task", failure);
    for (; !failure && thread != std::filesystem::directory_iterator(); thread.increment(failure)) {
        std::string name;
        std::ifstream(thread->path() / "comm") >> name;
        if (name == "ReceiveQueue")
            return true;
    }
    return false;
}

class PrewarmTest : public testing::Test {
protected:
    [[nodiscard]] static bool waitForProcesses(std::size_t count)
    {
        return runMainLoopUntil([count] { return webProcesses().size() == count; });
    }

    void prewarm()
    {
        gtk::prewarm();
        ASSERT_TRUE(waitForProcesses(1));
    }

    void open()
    {
        shop.initialize();
        ASSERT_TRUE(shop.open());
    }

    LiveShop shop;
};

}

TEST_F(PrewarmTest, TheNextPageIsShownByTheProcessThatWasStartedAhead)
{
    prewarm();
    auto const ahead = webProcesses();
    open();
    EXPECT_EQ(webProcesses(), ahead);
}

TEST_F(PrewarmTest, ThePageCannotTellThatItsProcessIsOlder)
{
    prewarm();
    open();
    auto& page = shop.page();
    EXPECT_EQ(page.evaluate("history.length"), "1");
    EXPECT_EQ(page.evaluate("document.referrer"), "\"\"");
    EXPECT_EQ(
        page.evaluate("performance.getEntriesByType('navigation').map(entry => entry.type).join()"), "\"navigate\"");
    EXPECT_EQ(page.evaluate("typeof ZelvoraSDKBridge.getItem"), "\"function\"");
    EXPECT_FALSE(ZelvoraSDK::shared().activeWebView()->canGoBack());
    // As of any container: it was there before anybody observed it.
    EXPECT_TRUE(shop.urls().empty());
}

TEST_F(PrewarmTest, WhileAViewIsReadyAnotherCallMakesNone)
{
    prewarm();
    gtk::prewarm();
    auto const ahead = webProcesses();
    open();
    EXPECT_EQ(webProcesses(), ahead);
}

TEST_F(PrewarmTest, AContainerThatOpensBesideItGetsAProcessOfItsOwn)
{
    prewarm();
    auto const ahead = webProcesses();
    open();
    auto const second = ZelvoraSDK::shared().createWebView();
    ASSERT_TRUE(waitForProcesses(2));
}

TEST_F(PrewarmTest, TheMemoryIsGivenBackWhenTheAppGoesInactiveAndThePageOpensAllTheSame)
{
    auto& application = Platform::current().application();
    ASSERT_TRUE(
        runMainLoopUntil([&] { return application.applicationState() == platform::UIApplicationState::Active; }));
    prewarm();
    gtk_widget_set_visible(GTK_WIDGET(shop.window()), FALSE);
    EXPECT_TRUE(waitForProcesses(0));
    gtk_window_present(shop.window());
    open();
}

TEST_F(PrewarmTest, TheMemoryIsGivenBackWhenTheSystemWarns)
{
    prewarm();
    auto const monitor = gtk::adopt(g_memory_monitor_dup_default());
    g_signal_emit_by_name(monitor.get(), "low-memory-warning", G_MEMORY_MONITOR_WARNING_LEVEL_LOW);
    EXPECT_TRUE(waitForProcesses(0));
    // It comes back with the next call only.
    prewarm();
}

TEST_F(PrewarmTest, AContentControllerThatNoWebViewUsesTakesTheViewWithIt)
{
    prewarm();
    Platform::current().makeUserContentController().reset();
    EXPECT_TRUE(waitForProcesses(0));
}

TEST_F(PrewarmTest, TheEnginesViewEndsWithTheWebViewThatTookIt)
{
    prewarm();
    auto view = Platform::current().makeWebView({}, { Platform::current().makeUserContentController() });
    gpointer engine = gtk::webKitWebViewOf(*view);
    g_object_add_weak_pointer(G_OBJECT(engine), &engine);
    view.reset();
    EXPECT_TRUE(runMainLoopUntil([&engine] { return engine == nullptr; }));
}

TEST_F(PrewarmTest, WebViewsOfOneContentControllerAreDifferentViews)
{
    prewarm();
    auto const content = Platform::current().makeUserContentController();
    auto const first = Platform::current().makeWebView({}, { content });
    auto const second = Platform::current().makeWebView({}, { content });
    EXPECT_NE(gtk::webKitWebViewOf(*first), gtk::webKitWebViewOf(*second));
}

TEST_F(PrewarmTest, APageOpensThoughTheProcessThatWasStartedAheadHasDied)
{
    prewarm();
    auto const process = webProcesses().front();
    ASSERT_TRUE(runMainLoopUntil([process] { return isConnected(process); }));
    kill(process, SIGKILL);
    ASSERT_TRUE(waitForProcesses(0));
    open();
}

}
