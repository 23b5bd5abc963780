#include "examples/service/Service.h"

#include <glib-unix.h>

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace {

using zelvora::examples::Service;
using zelvora::examples::ServiceOptions;

constexpr std::string_view s_usage = "usage: zelvora-service --data DIRECTORY [--site DIRECTORY] [--port NUMBER]\n";

bool readPort(std::string_view text, std::uint16_t& port)
{
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), port);
    return failure == std::errc() && end == text.data() + text.size();
}

bool readOption(ServiceOptions& options, std::string_view name, std::string_view value)
{
    if (name == "--data")
        options.dataDirectory = value;
    else if (name == "--site")
        options.siteDirectory = value;
    else if (name == "--port")
        return readPort(value, options.port);
    else
        return false;
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

/// Runs until the process is told to end. Listens to that from its construction on, so that whoever has seen
/// the port may tell it at once.
class Loop {
public:
    Loop()
    {
        g_unix_signal_add(SIGINT, &Loop::quit, m_loop.get());
        g_unix_signal_add(SIGTERM, &Loop::quit, m_loop.get());
    }

    void run() { g_main_loop_run(m_loop.get()); }

private:
    struct Unref {
        void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
    };

    static gboolean quit(gpointer loop)
    {
        g_main_loop_quit(static_cast<GMainLoop*>(loop));
        return G_SOURCE_CONTINUE;
    }

    std::unique_ptr<GMainLoop, Unref> m_loop { g_main_loop_new(nullptr, FALSE) };
};

} // namespace

int main(int count, char** arguments)
{
    auto const options = readArguments({ arguments, static_cast<std::size_t>(count) });
    if (!options) {
        std::cerr << s_usage;
        return EXIT_FAILURE;
    }
    Loop loop;
    auto const service = Service::start(*options);
    if (!service) {
        std::cerr << "zelvora-service: " << service.error() << '\n';
        return EXIT_FAILURE;
    }

    std::cerr << "trust " << (*service)->authority().string()
              << "\ncollected events: " << (*service)->address("collector") << "/\n";
    std::cout << "listening " << (*service)->port() << '\n' << std::flush;
    loop.run();
    return EXIT_SUCCESS;
}
