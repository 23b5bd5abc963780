#include "tests/ZelvoraAdapters/gtk/WebKit/PageTest.h"

#include <fstream>
#include <vector>

namespace {

// The libraries that GTK's file chooser loads keep what they allocate, through GLib, where the stacks of leaks end: no
// line of scripts/leaks.supp could name them alone.
bool hasShownFileChooser = false;

}

// Asked by the leak sanitizer before it looks for leaks.
extern "C" int __lsan_is_turned_off()
{
    return hasShownFileChooser ? 1 : 0;
}

namespace zelvora::tests {

namespace {

using platform::Array;
using platform::Value;

class PanelsTest : public PageTest {
protected:
    /// A page that answers 401 and posts its own path when it is shown nevertheless.
    platform::URL serveRefusal(LoopbackServer& server)
    {
        return server.serve("/refused", [](SoupServerMessage* message) {
            auto* const headers = soup_server_message_get_response_headers(message);
            soup_message_headers_replace(headers, "WWW-Authenticate", "Basic realm=\"members\"");
            soup_message_headers_replace(headers, "Content-Type", "text/html");
            answer(message, 401, "<script>webkit.messageHandlers.zelvora.postMessage(location.hostname)</script>");
        });
    }

    /// Has the page do something while the view is destroyed, and waits until the engine's view is gone too.
    void expectEndAfter(std::string const& script)
    {
        loadAndWait("closing");
        gpointer engine = gtk::webKitWebViewOf(*m_view);
        g_object_add_weak_pointer(G_OBJECT(engine), &engine);
        view().evaluateJavaScript("for (const end = Date.now() + 300; Date.now() < end;);");
        view().evaluateJavaScript(script);
        m_view->removeFromSuperview();
        m_view.reset();
        EXPECT_TRUE(m_harness.runUntil([&] { return !engine; })) << script;
        m_content->removeScriptMessageHandler("mark");
    }

    static std::vector<GtkWindow*> windows()
    {
        std::vector<GtkWindow*> windows;
        auto* const all = gtk_window_get_toplevels();
        for (guint index = 0; index < g_list_model_get_n_items(all); ++index) {
            auto const window = gtk::adopt(GTK_WINDOW(g_list_model_get_item(all, index)));
            if (gtk_widget_get_visible(GTK_WIDGET(window.get())))
                windows.push_back(window.get());
        }
        return windows;
    }

    bool comesToHaveWindows(std::size_t count)
    {
        return m_harness.runUntil([count] { return windows().size() == count; });
    }

    void openFileChooser()
    {
        hasShownFileChooser = true;
        loadAndWait("<input type=file id=file "
                    "onchange=\"webkit.messageHandlers.zelvora.postMessage(file.files[0].name)\" "
                    "oncancel=\"webkit.messageHandlers.zelvora.postMessage('cancelled')\">");
        ASSERT_EQ(windows().size(), 1U);
        view().evaluateJavaScript("file.click()");
        ASSERT_TRUE(comesToHaveWindows(2));
    }

    static GtkDialog* fileChooser()
    {
        for (auto* const window : windows()) {
            if (GTK_IS_FILE_CHOOSER_DIALOG(window))
                return GTK_DIALOG(window);
        }
        return nullptr;
    }
};

}

TEST_F(PanelsTest, APanelThatAPageOpensAfterItsViewIsGoneKeepsNothingAlive)
{
    expectEndAfter("alert('late')");
    expectEndAfter("confirm('late')");
    expectEndAfter("print()");
    expectEndAfter(
        "document.body.appendChild(Object.assign(document.createElement('input'), { type: 'file' })).click()");
}

TEST_F(PanelsTest, AScriptThatNeverEndsDoesNotKeepTheEnginesView)
{
    expectEndAfter("for (;;);");
}

TEST_F(PanelsTest, APageDoesNotFillTheScreen)
{
    loadAndWait("<video id=video></video>");
    bool hasEntered = false;
    g_signal_connect_swapped(gtk::webKitWebViewOf(*m_view), "enter-fullscreen",
        G_CALLBACK(+[](bool* entered) -> gboolean { return *entered = true; }), &hasEntered);
    view().evaluateJavaScript("const fill = name => { try { document.body[name](); } catch (error) { } };"
                              "fill('requestFullscreen'); fill('webkitRequestFullscreen');"
                              "try { video.webkitEnterFullscreen(); } catch (error) { }");
    post("Boolean(document.fullscreenEnabled || document.webkitFullscreenEnabled)");
    EXPECT_EQ(next(), Value(false));
    EXPECT_FALSE(hasEntered);
}

TEST_F(PanelsTest, APageThatAsksForALoginIsShownAsItIs)
{
    LoopbackServer server;
    load(serveRefusal(server));
    EXPECT_EQ(next(), Value("localhost"));
}

TEST_F(PanelsTest, AFrameThatAsksForALoginIsShownAsItIs)
{
    LoopbackServer server;
    auto frame = serveRefusal(server).absoluteString();
    frame.replace(frame.find("localhost"), 9, "127.0.0.1");
    loadAndWait("<iframe src='" + frame + "'></iframe>");
    EXPECT_EQ(next(), Value("127.0.0.1"));
    post("'alive'");
    EXPECT_EQ(next(), Value("alive"));
}

TEST_F(PanelsTest, AFileChooserGivesThePageWhatTheUserChose)
{
    auto const path = m_harness.directory() / "picture.png";
    std::ofstream(path) << "picture";
    openFileChooser();
    auto const file = gtk::adopt(g_file_new_for_path(path.c_str()));
    gtk_file_chooser_set_file(GTK_FILE_CHOOSER(fileChooser()), file.get(), nullptr);
    EXPECT_TRUE(m_harness.runUntil([&] {
        auto const chosen = gtk::adopt(gtk_file_chooser_get_file(GTK_FILE_CHOOSER(fileChooser())));
        return chosen && g_file_equal(chosen.get(), file.get());
    }));
    gtk_dialog_response(fileChooser(), GTK_RESPONSE_ACCEPT);
    EXPECT_EQ(next(), Value("picture.png"));
    EXPECT_TRUE(comesToHaveWindows(1));
}

TEST_F(PanelsTest, AFileChooserThatTheUserClosesGivesThePageNoFile)
{
    openFileChooser();
    gtk_dialog_response(fileChooser(), GTK_RESPONSE_CANCEL);
    EXPECT_EQ(next(), Value("cancelled"));
    EXPECT_TRUE(comesToHaveWindows(1));
}

TEST_F(PanelsTest, AFileChooserGoesWithItsPage)
{
    openFileChooser();
    load(m_harness.page("other"));
    EXPECT_TRUE(comesToHaveWindows(1));

    openFileChooser();
    webkit_web_view_terminate_web_process(gtk::webKitWebViewOf(*m_view));
    EXPECT_TRUE(comesToHaveWindows(1));
    m_harness.waitForPage(*m_view);

    openFileChooser();
    gpointer engine = gtk::webKitWebViewOf(*m_view);
    g_object_add_weak_pointer(G_OBJECT(engine), &engine);
    m_view->removeFromSuperview();
    m_view.reset();
    EXPECT_TRUE(comesToHaveWindows(1));
    EXPECT_TRUE(m_harness.runUntil([&] { return !engine; }));
}

TEST_F(PanelsTest, AColorChooserGoesWithItsView)
{
    loadAndWait("<input type=color id=color>");
    ASSERT_EQ(windows().size(), 1U);
    view().evaluateJavaScript("color.click()");
    ASSERT_TRUE(comesToHaveWindows(2));
    m_view->removeFromSuperview();
    m_view.reset();
    EXPECT_TRUE(comesToHaveWindows(1));
}

}
