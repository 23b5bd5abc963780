#include "examples/host/Options.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <random>

namespace zelvora::examples {

namespace {

constexpr int fewestRounds = 10;

struct Arguments {
    int port = 0;
    char* certificates = nullptr;
    char* data = nullptr;
    char* appearance = nullptr;
    gboolean prewarms = FALSE;
    char* walk = nullptr;
    char* pictures = nullptr;
    char* report = nullptr;
    char* trees = nullptr;
    int rounds = 500;
    gint64 seed = -1;
};

bool isKnownWalk(std::string const& walk)
{
    static constexpr std::array walks { "", "first", "second", "gallery", "opening", "soak", "conformance" };
    return std::ranges::find(walks, walk) != walks.end();
}

std::string take(char* text)
{
    gtk::GTextPointer const taken(text);
    return taken ? taken.get() : "";
}

bool parse(Arguments& into, int& count, char**& arguments)
{
    GOptionEntry const entries[] = { // NOLINT(modernize-avoid-c-arrays): GLib's way
        { "service", 's', 0, G_OPTION_ARG_INT, &into.port, "The port of the local service", "PORT" },
        { "certificates", 'c', 0, G_OPTION_ARG_FILENAME, &into.certificates, "The service's data folder", "FOLDER" },
        { "data", 'd', 0, G_OPTION_ARG_FILENAME, &into.data, "Where the app keeps its data", "FOLDER" },
        { "appearance", 'a', 0, G_OPTION_ARG_STRING, &into.appearance, "As the system says if absent", "light|dark" },
        { "prewarm", 0, 0, G_OPTION_ARG_NONE, &into.prewarms, "Make the next opening of the shop faster", nullptr },
        { "walk", 'w', 0, G_OPTION_ARG_STRING, &into.walk, "Let the program drive itself",
            "first|second|gallery|opening|soak|conformance" },
        { "rounds", 'r', 0, G_OPTION_ARG_INT, &into.rounds, "How often a soak opens the shop", "COUNT" },
        { "seed", 0, 0, G_OPTION_ARG_INT64, &into.seed, "What a soak does; a new one if absent", "NUMBER" },
        { "pictures", 'p', 0, G_OPTION_ARG_FILENAME, &into.pictures, "Where a walk saves pictures", "FOLDER" },
        { "trees", 0, 0, G_OPTION_ARG_FILENAME, &into.trees, "Prints the accessibility trees to save with pictures",
            "PROGRAM" },
        { "report", 0, 0, G_OPTION_ARG_FILENAME, &into.report, "Where the page's answers are saved", "FILE" }, {}
    };
    std::unique_ptr<GOptionContext, gtk::Releasing<g_option_context_free>> const context(
        g_option_context_new("- a host app that opens the shop"));
    g_option_context_add_main_entries(context.get(), static_cast<GOptionEntry const*>(entries), nullptr);
    gtk::GErrorPlace error;
    if (g_option_context_parse(context.get(), &count, &arguments, error.out()))
        return true;
    std::cerr << error->message << '\n';
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
        .appearance = take(read.appearance),
        .prewarms = read.prewarms == TRUE,
        .walk = take(read.walk),
        .rounds = read.rounds,
        .seed = static_cast<std::uint32_t>(read.seed >= 0 ? read.seed : std::random_device()()) };
    if (auto const pictures = take(read.pictures); !pictures.empty())
        options.pictures = pictures;
    if (auto const report = take(read.report); !report.empty())
        options.report = report;
    options.trees = take(read.trees);
    if (read.port <= 0 || read.port > UINT16_MAX || options.certificates.empty()) {
        std::cerr << "Say where the local service is: --service PORT --certificates FOLDER\n";
        return std::nullopt;
    }
    if (!isKnownWalk(options.walk)) {
        std::cerr << "A walk is \"first\", \"second\", \"gallery\", \"opening\", \"soak\" or \"conformance\".\n";
        return std::nullopt;
    }
    if (!options.appearance.empty() && options.appearance != "light" && options.appearance != "dark") {
        std::cerr << "An appearance is \"light\" or \"dark\".\n";
        return std::nullopt;
    }
    if (options.rounds <= fewestRounds) {
        std::cerr << "A soak is compared with its first " << fewestRounds << " rounds: it needs more of them.\n";
        return std::nullopt;
    }
    return options;
}

}
