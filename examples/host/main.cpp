#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/host/Options.h"
#include "examples/host/ShopHost.h"
#include "examples/host/Walk.h"

#include <gtk/gtk.h>

#include <cstdlib>
#include <memory>

namespace {

using zelvora::examples::Options;
using zelvora::examples::ShopHost;
using zelvora::examples::Walk;

struct Program {
    Options options;
    std::shared_ptr<ShopHost> host;
    int status = EXIT_SUCCESS;
};

void walk(GApplication* application, Program& program)
{
    Walk aroundTheShop(*program.host, program.options);
    program.status = aroundTheShop.run() ? EXIT_SUCCESS : EXIT_FAILURE;
    g_application_quit(application);
}

struct Activation {
    GApplication* application;
    Program* program;
};

void activate(GApplication* application, gpointer data)
{
    auto& program = *static_cast<Program*>(data);
    program.host = ShopHost::create(GTK_APPLICATION(application), program.options);
    if (program.options.walk.empty()) {
        program.host->initializeSDK();
        return;
    }
    auto const begin = [](gpointer held) {
        std::unique_ptr<Activation> const activation(static_cast<Activation*>(held));
        walk(activation->application, *activation->program);
    };
    g_idle_add_once(+begin, std::make_unique<Activation>(application, &program).release());
}

}

int main(int count, char** arguments)
{
    auto const options = zelvora::examples::readOptions(count, arguments);
    if (!options)
        return EXIT_FAILURE;
    Program program { .options = *options, .host = nullptr };
    // Non-unique: several instances, each with its own data, may run at the same time.
    auto const application =
        zelvora::gtk::adopt(gtk_application_new("com.zelvora.example.host", G_APPLICATION_NON_UNIQUE));
    g_signal_connect(application.get(), "activate", G_CALLBACK(&activate), &program);
    auto const status = g_application_run(G_APPLICATION(application.get()), 0, nullptr);
    return status == EXIT_SUCCESS ? program.status : status;
}
