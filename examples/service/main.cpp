#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/service/Service.h"

#include <glib-unix.h>

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <span>
#include <string_view>

namespace {

using zelvora::examples::Service;
using zelvora::examples::ServiceOptions;

bool readPort(std::string_view text, std::uint16_t& port)
{
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), port);
    return failure == std::errc() && end == text.data() + text.size();
}

bool readOption(ServiceOptions& options, std::string_view name, std::string_view value)
{
    if (name == "--port")
        return readPort(value, options.port);
    if (name != "--data" && name != "--site")
        return false;
    (name == "--data" ? options.dataDirectory : options.siteDirectory) = value;
    return !value.empty();
}

std::optional<ServiceOptions> readArguments(std::span<char*> arguments)
{
    ServiceOptions options;
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        if (i + 1 == arguments.size() || !readOption(options, arguments[i], arguments[i + 1]))
            return std::nullopt;
    }
    if (options.dataDirectory.empty())
        return std::nullopt;
    return options;
}

gboolean quit(gpointer loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_CONTINUE;
}

}

int main(int count, char** arguments)
{
    auto const options = readArguments({ arguments, static_cast<std::size_t>(count) });
    if (!options) {
        std::cerr << "usage: zelvora-service --data DIRECTORY [--site DIRECTORY] [--port NUMBER]\n";
        return EXIT_FAILURE;
    }
    // Before the port is printed, because whoever reads it may send a signal at once.
    zelvora::gtk::GMainLoopPointer const loop(g_main_loop_new(nullptr, FALSE));
    g_unix_signal_add(SIGINT, &quit, loop.get());
    g_unix_signal_add(SIGTERM, &quit, loop.get());
    auto const service = Service::start(*options);
    if (!service) {
        std::cerr << "zelvora-service: " << service.error() << '\n';
        return EXIT_FAILURE;
    }
    std::cerr << "trust " << (*service)->authority().string()
              << "\ncollected events: " << (*service)->address("collector") << "/\n";
    std::cout << "listening " << (*service)->port() << '\n' << std::flush;
    g_main_loop_run(loop.get());
    return EXIT_SUCCESS;
}
