#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "examples/developer/DeveloperApp.h"
#include "examples/developer/Options.h"
#include "examples/developer/script/ScriptRunner.h"

#include <gtk/gtk.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <utility>

namespace {

using namespace zelvora::developer;
using zelvora::examples::Service;
using zelvora::examples::ServiceOptions;

struct Program {
    Options options;
    Script script;
    std::unique_ptr<Service> service;
    std::unique_ptr<DeveloperApp> app;
    int status = EXIT_SUCCESS;

    [[nodiscard]] bool isScripted() const { return !options.script.empty(); }
};

std::optional<Script> readScriptFile(std::filesystem::path const& file)
{
    std::ifstream stream(file);
    if (!stream) {
        std::cerr << file.string() << " cannot be read.\n";
        return std::nullopt;
    }
    auto const script = readScript(std::string(std::istreambuf_iterator<char>(stream), {}));
    if (script)
        return *script;
    std::cerr << file.string() << ':' << script.error().line << ": " << script.error().sentence << '\n';
    return std::nullopt;
}

std::unique_ptr<Service> startService(Options const& options)
{
    ServiceOptions service { .dataDirectory = options.data / "service" };
    if (options.isAddress())
        service.shopAddress = options.page;
    else
        service.shopDirectory = options.page;
    auto started = Service::start(service);
    if (started)
        return *std::move(started);
    std::cerr << "The local service does not start: " << started.error() << '\n';
    return nullptr;
}

bool runScript(Program& program)
{
    auto& app = *program.app;
    auto const file = program.options.script.string();
    if (auto const ready = app.waitUntilReady(); !ready) {
        std::cerr << file << ": " << ready.error() << '\n';
        return false;
    }
    return ScriptRunner(app).run(program.script, [&](Step const& step, std::optional<std::string> const& failure) {
        if (!failure) {
            std::cerr << "  ok      " << step.source << '\n';
            return;
        }
        std::cerr << "  FAILED  " << step.source << '\n'
                  << file << ':' << step.line << ": " << step.source << ": " << *failure << '\n';
        (void)app.takePicture("failed-line-" + std::to_string(step.line));
    });
}

void activate(GApplication* application, gpointer data)
{
    auto& program = *static_cast<Program*>(data);
    program.app =
        std::make_unique<DeveloperApp>(GTK_APPLICATION(application), program.options, std::move(program.service));
    if (!program.isScripted())
        return;
    zelvora::gtk::runLater(g_idle_source_new(), [application, &program] {
        program.status = runScript(program) ? EXIT_SUCCESS : EXIT_FAILURE;
        g_application_quit(application);
    });
}

}

int main(int count, char** arguments)
{
    auto const options = readOptions(count, arguments);
    if (!options)
        return EXIT_FAILURE;
    Program program { .options = *options, .script = {}, .service = nullptr, .app = nullptr };
    if (program.isScripted()) {
        auto script = readScriptFile(options->script);
        if (!script)
            return EXIT_FAILURE;
        program.script = *std::move(script);
    }
    program.service = startService(*options);
    if (!program.service)
        return EXIT_FAILURE;
    // Non-unique: several instances, each with its own data, may run at the same time.
    auto const application =
        zelvora::gtk::adopt(gtk_application_new("com.zelvora.example.developer", G_APPLICATION_NON_UNIQUE));
    g_signal_connect(application.get(), "activate", G_CALLBACK(&activate), &program);
    auto const status = g_application_run(G_APPLICATION(application.get()), 0, nullptr);
    return status == EXIT_SUCCESS ? program.status : status;
}
