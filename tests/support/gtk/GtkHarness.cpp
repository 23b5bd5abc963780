#include "tests/support/gtk/GtkHarness.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "tests/support/pageActions.h"

#include <gtest/gtest.h>
#include <webkit/webkit.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace zelvora::tests {

namespace {

constexpr int width = 390;
constexpr int height = 700;

void startToolkit(std::filesystem::path const& directory)
{
    for (auto const& [name, folder] :
        { std::pair { "XDG_DATA_HOME", "data" }, { "XDG_CONFIG_HOME", "config" }, { "XDG_CACHE_HOME", "cache" } }) {
        std::filesystem::create_directories(directory / folder);
        setenv(name, (directory / folder).c_str(), 1);
    }
    setenv("GTK_A11Y", "none", 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    // A virtual display emulates graphics hardware, which is slower than drawing without it.
    setenv("GSK_RENDERER", "cairo", 0);
    if (gtk_init_check())
        return;
    std::fputs("This test needs a display: run it under \"xvfb-run -a\".\n", stderr);
    std::_Exit(EXIT_FAILURE);
}

}

class GtkHarness::MarkHandler final : public platform::WKScriptMessageHandler {
public:
    explicit MarkHandler(std::vector<std::string>& marks) : m_marks(marks) { }

    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override
    {
        m_marks.push_back(message.body.text() ? *message.body.text() : "not a text");
    }

private:
    std::vector<std::string>& m_marks;
};

GtkHarness::GtkHarness(Configure const& configure)
{
    startToolkit(directory());
    registerHandler();
    gtk::HostOptions options { .bundleIdentifier = "com.example.contract",
        .appName = "Contract",
        .dataDirectory = m_directory / "app",
        .safeAreaInsets = { safeTop(), safeBottom() } };
    configure(options);
    gtk::install(std::move(options));
}

GtkHarness::~GtkHarness()
{
    if (m_markedContent)
        m_markedContent->removeScriptMessageHandler("mark");
    if (m_window)
        gtk_window_destroy(m_window);
}

bool GtkHarness::runUntil(std::function<bool()> const& done)
{
    return gtk::runMainLoopUntil(done);
}

GtkWindow* GtkHarness::window()
{
    if (m_window)
        return m_window;
    m_window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_decorated(m_window, FALSE);
    gtk_window_set_default_size(m_window, width, height);
    return m_window;
}

platform::CGRect GtkHarness::screenBounds()
{
    return { 0, 0, width, height };
}

void GtkHarness::show(std::shared_ptr<platform::UIViewController> controller)
{
    gtk::setRootViewController(window(), controller);
    m_shown = std::move(controller);
    gtk_window_present(m_window);
    auto* widget = gtk::widgetOf(m_shown->view());
    EXPECT_TRUE(runUntil([&] { return gtk_widget_get_mapped(widget) && gtk_widget_get_width(widget) == width; }));
}

std::shared_ptr<platform::UINavigationController> GtkHarness::makeNavigationController(
    std::shared_ptr<platform::UIViewController> root)
{
    return gtk::makeNavigationController(std::move(root));
}

std::shared_ptr<platform::UIView> GtkHarness::makeContentView(double contentHeight)
{
    auto* content = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_widget_set_size_request(content, 60, static_cast<int>(contentHeight));
    return gtk::wrapWidget(content);
}

platform::CGRect GtkHarness::seenFrame(platform::UIView& view)
{
    auto* widget = gtk::widgetOf(view);
    graphene_rect_t seen;
    if (!gtk_widget_get_parent(widget) || !gtk_widget_compute_bounds(widget, gtk_widget_get_parent(widget), &seen))
        return {};
    return { seen.origin.x, seen.origin.y, seen.size.width, seen.size.height };
}

bool GtkHarness::isSeen(platform::UIView& view)
{
    return gtk_widget_get_mapped(gtk::widgetOf(view));
}

std::vector<platform::UIView const*> GtkHarness::backToFront(platform::UIView& parent)
{
    std::vector<platform::UIView const*> views;
    auto* widget = gtk_widget_get_first_child(gtk::widgetOf(parent));
    for (; widget; widget = gtk_widget_get_next_sibling(widget)) {
        for (auto const& view : parent.subviews()) {
            if (gtk::widgetOf(*view) == widget)
                views.push_back(view.get());
        }
    }
    return views;
}

void GtkHarness::dragFromLeftEdge(platform::UIView&)
{
    drag({ { 3, 400 }, { 10, 400 }, { 30, 402 }, { 120, 404 }, { 260, 404 }, { 320, 404 } });
}

void GtkHarness::drag(std::vector<std::pair<int, int>> const& points)
{
    std::vector<std::string> arguments;
    auto const move = [&arguments](std::pair<int, int> point) {
        for (auto const& word : { std::string("mousemove"), std::to_string(point.first), std::to_string(point.second) })
            arguments.push_back(word);
    };
    move(points.front());
    arguments.insert(arguments.end(), { "mousedown", "1" });
    for (auto const& point : points)
        move(point);
    arguments.insert(arguments.end(), { "mouseup", "1" });

    // The release is the last event of the drag.
    bool isOver = false;
    auto* legacy = gtk_event_controller_legacy_new();
    gtk_event_controller_set_propagation_phase(legacy, GTK_PHASE_CAPTURE);
    g_signal_connect(legacy, "event", G_CALLBACK(+[](GtkEventController*, GdkEvent* event, bool* over) -> gboolean {
        *over = *over || gdk_event_get_event_type(event) == GDK_BUTTON_RELEASE;
        return FALSE;
    }),
        &isOver);
    gtk_widget_add_controller(GTK_WIDGET(window()), legacy);
    act(arguments);
    EXPECT_TRUE(runUntil([&] { return isOver; }));
    while (g_main_context_iteration(nullptr, FALSE)) { }
    gtk_widget_remove_controller(GTK_WIDGET(m_window), legacy);
}

void GtkHarness::act(std::vector<std::string> const& arguments)
{
    std::vector<char const*> words { "xdotool" };
    for (auto const& argument : arguments)
        words.push_back(argument.c_str());
    words.push_back(nullptr);
    gtk::GErrorPlace error;
    auto const process = gtk::adopt(g_subprocess_newv(words.data(), G_SUBPROCESS_FLAGS_NONE, error.out()));
    ASSERT_TRUE(process) << error->message;
    bool hasEnded = false;
    g_subprocess_wait_async(
        process.get(), nullptr, [](GObject*, GAsyncResult*, gpointer ended) { *static_cast<bool*>(ended) = true; },
        &hasEnded);
    EXPECT_TRUE(runUntil([&] { return hasEnded; }));
}

void GtkHarness::show(std::shared_ptr<platform::WKWebView> view)
{
    m_markHandler = std::make_unique<MarkHandler>(m_marks);
    m_markedContent = view->configuration().userContentController;
    m_markedContent->addScriptMessageHandler(*m_markHandler, "mark");
    m_markedContent->addUserScript({ "function mark(text) { webkit.messageHandlers.mark.postMessage(text); }" });

    auto const controller = std::make_shared<platform::UIViewController>();
    auto& root = controller->view();
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    root.addSubview(view);
    platform::NSLayoutConstraint::activate({ view->topAnchor().constraintEqualTo(root.topAnchor()),
        view->bottomAnchor().constraintEqualTo(root.bottomAnchor()),
        view->leadingAnchor().constraintEqualTo(root.leadingAnchor()),
        view->trailingAnchor().constraintEqualTo(root.trailingAnchor()) });
    show(controller);
}

platform::URL GtkHarness::page(std::string const& name)
{
    return page(name, "<title>" + name + "</title>");
}

platform::URL GtkHarness::page(std::string const& name, std::string const& html)
{
    if (!m_server)
        m_server = std::make_unique<LoopbackServer>();
    return m_server->serve('/' + name, [html](SoupServerMessage* message) {
        soup_message_headers_replace(
            soup_server_message_get_response_headers(message), "Content-Type", "text/html; charset=utf-8");
        answer(message, 200, "<!doctype html><meta charset=utf-8><body>" + html);
    });
}

bool GtkHarness::waitForPage(platform::WKWebView& view)
{
    auto* engine = gtk::webKitWebViewOf(view);
    return runUntil([&] { return !webkit_web_view_is_loading(engine) && webkit_web_view_get_uri(engine); });
}

void GtkHarness::navigate(platform::WKWebView& view, platform::URL const& url)
{
    view.evaluateJavaScript(clickOnLinkTo(url));
}

void GtkHarness::navigateFrame(platform::WKWebView& view, platform::URL const& url)
{
    view.evaluateJavaScript(additionOfFrame(url));
}

void GtkHarness::post(
    platform::WKWebView& view, std::string const& handler, std::string const& expression, platform::Value const&)
{
    view.evaluateJavaScript(postOf(expression, handler));
}

void GtkHarness::activate()
{
    gtk_window_present(window());
}

void GtkHarness::deactivate()
{
    gtk_widget_set_visible(GTK_WIDGET(window()), FALSE);
}

std::vector<std::string> GtkHarness::openedURLs()
{
    std::ifstream stream(m_directory / "opened");
    std::vector<std::string> urls;
    for (std::string line; std::getline(stream, line);)
        urls.push_back(line);
    return urls;
}

void GtkHarness::registerHandler()
{
    auto const opened = (m_directory / "opened").string();
    auto const script = m_directory.write("handle", "#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" + opened + "'\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    m_directory.write("data/applications/zelvora-test.desktop",
        "[Desktop Entry]\nType=Application\nName=Test\nExec=" + script.string()
            + " %u\nMimeType=x-scheme-handler/zelvora-test;\n");
    m_directory.write(
        "config/mimeapps.list", "[Default Applications]\nx-scheme-handler/zelvora-test=zelvora-test.desktop\n");
}

}
