#include "LocalService.h"
#include "Shop.h"
#include "ZelvoraAdapters/gtk/Host.h"

#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace gtk = zelvora::gtk;

namespace {

constexpr char const* applicationId = "com.example.shopapp";

GtkWidget* makeButton(char const* text, std::function<void()> action)
{
    using Action = std::function<void()>;
    auto* const button = gtk_button_new_with_label(text);
    auto const didClick = [](GtkButton*, gpointer held) { (*static_cast<Action*>(held))(); };
    auto const release = [](gpointer held, GClosure*) { delete static_cast<Action*>(held); };
    g_signal_connect_data(
        button, "clicked", G_CALLBACK(+didClick), new Action(std::move(action)), +release, G_CONNECT_DEFAULT);
    return button;
}

// The container is white whatever the theme is: a dark theme's white text needs the theme's own background.
Shop::View wrapBar(GtkWidget* bar)
{
    gtk_widget_add_css_class(bar, "background");
    return gtk::wrapWidget(bar);
}

Shop::View makeHeader(std::function<void()> goBack)
{
    auto* const bar = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    gtk_box_append(GTK_BOX(bar), makeButton("Back", std::move(goBack)));
    gtk_box_append(GTK_BOX(bar), gtk_label_new("Shop"));
    return wrapBar(bar);
}

Shop::View makeFooter()
{
    return wrapBar(gtk_label_new("Returns are free for 30 days"));
}

/// The home screen and the shop that it opens.
class App final {
public:
    explicit App(GtkApplication* application) : m_window(GTK_WINDOW(gtk_application_window_new(application)))
    {
        auto* const page = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
        gtk_box_append(GTK_BOX(page), makeButton("Open the shop", [this] { m_shop->open(m_home); }));
        gtk_box_append(GTK_BOX(page), m_message);
        gtk_box_append(GTK_BOX(page), m_shared);
        m_home = gtk::wrapScreen(page);
        gtk_window_set_default_size(m_window, 390, 844);
        gtk::setRootViewController(m_window, gtk::makeNavigationController(m_home));
    }

    void show() { gtk_window_present(m_window); }
    void openShop() { m_shop->open(m_home); }

private:
    static void tell(GtkWidget* label, std::string const& text)
    {
        gtk_label_set_text(GTK_LABEL(label), text.c_str());
        std::cout << text << std::endl;
    }

    GtkWindow* m_window;
    GtkWidget* m_message = gtk_label_new("");
    // A label of its own: leaving the shop, which comes next, has a message, too.
    GtkWidget* m_shared = gtk_label_new("");
    std::shared_ptr<zelvora::platform::UIViewController> m_home;
    std::shared_ptr<Shop> m_shop = Shop::create({
        .makeHeader = makeHeader,
        .makeFooter = makeFooter,
        .share = [this](std::string const& text) { tell(m_shared, "Shared: " + text); },
        .showError = [this](std::string const& code) { tell(m_message, "The shop cannot be opened: " + code); },
        .didLeave = [this] { tell(m_message, "Welcome back"); },
    });
};

// What the command line says.
int s_port = 0;
char* s_certificates = nullptr;

std::unique_ptr<App> s_app;

void addAction(GtkApplication* application, char const* name, void (*activate)(GSimpleAction*, GVariant*, gpointer))
{
    auto* const action = g_simple_action_new(name, nullptr);
    g_signal_connect(action, "activate", G_CALLBACK(activate), application);
    g_action_map_add_action(G_ACTION_MAP(application), G_ACTION(action));
    g_object_unref(action);
}

void startup(GtkApplication* application)
{
    gtk::HostOptions options { .bundleIdentifier = applicationId, .appName = "Shop app" };
    if (s_port != 0)
        useLocalService(options, s_port, s_certificates ? s_certificates : ".");
    gtk::install(std::move(options));
    s_app = std::make_unique<App>(application);

    // What a menu, or `gapplication action`, calls.
    addAction(application, "open-shop", [](GSimpleAction*, GVariant*, gpointer) { s_app->openShop(); });
    addAction(application, "quit",
        [](GSimpleAction*, GVariant*, gpointer application) { g_application_quit(G_APPLICATION(application)); });
}

// Each time that the user starts the app, also while it runs.
void activate(GtkApplication*)
{
    s_app->show();
}

}

int main(int count, char** arguments)
{
    static GOptionEntry const options[] = {
        { "service", 0, 0, G_OPTION_ARG_INT, &s_port, "Where a local service listens", "PORT" },
        { "certificates", 0, 0, G_OPTION_ARG_FILENAME, &s_certificates, "The data folder of that service", "FOLDER" },
        {},
    };
    auto* const application = gtk_application_new(applicationId, G_APPLICATION_DEFAULT_FLAGS);
    g_application_add_main_option_entries(G_APPLICATION(application), options);
    g_signal_connect(application, "startup", G_CALLBACK(&startup), nullptr);
    g_signal_connect(application, "activate", G_CALLBACK(&activate), nullptr);
    auto const status = g_application_run(G_APPLICATION(application), count, arguments);
    g_object_unref(application);
    return status;
}
