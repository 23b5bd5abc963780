#include "examples/host/Options.h"

#include <glib.h>

#include <iostream>
#include <memory>

namespace zelvora::examples {

namespace {

struct Arguments {
    int port = 0;
    char* certificates = nullptr;
    char* data = nullptr;
    char* walk = nullptr;
    char* pictures = nullptr;
};

std::string take(char* text)
{
    std::string const taken = text ? text : "";
    g_free(text);
    return taken;
}

bool parse(Arguments& into, int& count, char**& arguments)
{
    GOptionEntry const entries[] = { // NOLINT(modernize-avoid-c-arrays): GLib's way
        { "service", 's', 0, G_OPTION_ARG_INT, &into.port, "The port of the local service", "PORT" },
        { "certificates", 'c', 0, G_OPTION_ARG_FILENAME, &into.certificates, "The service's data folder", "FOLDER" },
        { "data", 'd', 0, G_OPTION_ARG_FILENAME, &into.data, "Where the app keeps its data", "FOLDER" },
        { "walk", 'w', 0, G_OPTION_ARG_STRING, &into.walk, "Let the program drive itself", "first|second" },
        { "pictures", 'p', 0, G_OPTION_ARG_FILENAME, &into.pictures, "Where a walk saves pictures", "FOLDER" }, {}
    };
    std::unique_ptr<GOptionContext, decltype(&g_option_context_free)> const context(
        g_option_context_new("- a host app that opens the shop"), &g_option_context_free);
    g_option_context_add_main_entries(context.get(), static_cast<GOptionEntry const*>(entries), nullptr);
    GError* error = nullptr;
    if (g_option_context_parse(context.get(), &count, &arguments, &error))
        return true;
    std::cerr << error->message << '\n';
    g_error_free(error);
    return false;
}

}

std::optional<Options> readOptions(int count, char** arguments)
{
    Arguments read;
    if (!parse(read, count, arguments))
        return std::nullopt;
    Options options { .servicePort = static_cast<std::uint16_t>(read.port),
        .certificates = take(read.certificates),
        .data = take(read.data),
        .walk = take(read.walk) };
    if (auto const pictures = take(read.pictures); !pictures.empty())
        options.pictures = pictures;
    if (read.port <= 0 || read.port > UINT16_MAX || options.certificates.empty()) {
        std::cerr << "Say where the local service is: --service PORT --certificates FOLDER\n";
        return std::nullopt;
    }
    if (!options.walk.empty() && options.walk != "first" && options.walk != "second") {
        std::cerr << "A walk is \"first\" or \"second\".\n";
        return std::nullopt;
    }
    return options;
}

}
