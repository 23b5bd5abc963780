#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "examples/host/Conformance.h"
#include "examples/host/Gallery.h"
#include "examples/host/MovablePlatform.h"
#include "examples/host/Opening.h"
#include "examples/host/Options.h"
#include "examples/host/ShopHost.h"
#include "examples/host/Soak.h"
#include "examples/host/Walk.h"
#include "examples/host/WatchedPlatform.h"

#include <gtk/gtk.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace {

using zelvora::examples::Conformance;
using zelvora::examples::Gallery;
using zelvora::examples::MovablePlatform;
using zelvora::examples::Opening;
using zelvora::examples::Options;
using zelvora::examples::ShopHost;
using zelvora::examples::Soak;
using zelvora::examples::Walk;
using zelvora::examples::WatchedPlatform;

struct Program {
    Options options;
    std::shared_ptr<ShopHost> host;
    // Set for a soak, which watches the platform, or for the conformance suite, which moves its clock; never destroyed
    // once it is installed.
    WatchedPlatform* watched = nullptr;
    MovablePlatform* movable = nullptr;
    int status = EXIT_SUCCESS;
};

bool drive(Program& program)
{
    if (program.options.walk == "gallery")
        return Gallery(*program.host, program.options).run();
    if (program.options.walk == "opening")
        return Opening(*program.host, program.options).run();
    if (program.watched)
        return Soak(*program.host, *program.watched, program.options).run();
    if (program.movable)
        return Conformance(*program.host, *program.movable, program.options).run();
    return Walk(*program.host, program.options).run();
}

void walk(GApplication* application, Program& program)
{
    program.status = drive(program) ? EXIT_SUCCESS : EXIT_FAILURE;
    g_application_quit(application);
}

template<typename Made>
ShopHost::MakePlatform making(Made*& made)
{
    return [&made](zelvora::gtk::HostOptions options) {
        auto platform = std::make_unique<Made>(std::move(options));
        made = platform.get();
        return platform;
    };
}

ShopHost::MakePlatform platformFor(Program& program)
{
    if (program.options.walk == "soak")
        return making(program.watched);
    if (program.options.walk == "conformance")
        return making(program.movable);
    return nullptr;
}

void activate(GApplication* application, gpointer data)
{
    auto& program = *static_cast<Program*>(data);
    program.host = ShopHost::create(GTK_APPLICATION(application), program.options, platformFor(program));
    if (program.options.walk.empty()) {
        program.host->initializeSDK();
        return;
    }
    zelvora::gtk::runLater(g_idle_source_new(), [application, &program] { walk(application, program); });
}

}

int main(int count, char** arguments)
{
    auto const options = zelvora::examples::readOptions(count, arguments);
    if (!options)
        return EXIT_FAILURE;
    Program program { .options = *options, .host = nullptr, .watched = nullptr, .movable = nullptr };
    // Non-unique: several instances, each with its own data, may run at the same time.
    auto const application =
        zelvora::gtk::adopt(gtk_application_new("com.zelvora.example.host", G_APPLICATION_NON_UNIQUE));
    g_signal_connect(application.get(), "activate", G_CALLBACK(&activate), &program);
    auto const status = g_application_run(G_APPLICATION(application.get()), 0, nullptr);
    return status == EXIT_SUCCESS ? program.status : status;
}
