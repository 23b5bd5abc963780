#include "examples/developer/Options.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <iostream>
#include <memory>

namespace zelvora::developer {

namespace {

using Strings = std::unique_ptr<char*, gtk::Releasing<g_strfreev>>;

struct Arguments {
    char** pages = nullptr;
    char** actions = nullptr;
    char* script = nullptr;
    char* pictures = nullptr;
    char* data = nullptr;
};

std::string take(char* text)
{
    gtk::GTextPointer const taken(text);
    return taken ? taken.get() : "";
}

std::vector<std::string> take(char** texts)
{
    Strings const taken(texts);
    std::vector<std::string> list;
    for (auto* const* text = texts; text && *text; ++text)
        list.emplace_back(*text);
    return list;
}

bool parse(Arguments& into, int& count, char**& arguments)
{
    GOptionEntry const entries[] = { // NOLINT(modernize-avoid-c-arrays): GLib's way
        { "script", 's', 0, G_OPTION_ARG_FILENAME, &into.script, "What the app does by itself", "FILE" },
        { "pictures", 'p', 0, G_OPTION_ARG_FILENAME, &into.pictures, "Where a script saves pictures", "FOLDER" },
        { "action", 'a', 0, G_OPTION_ARG_STRING_ARRAY, &into.actions, "An action of the app, for pages", "NAME" },
        { "data", 'd', 0, G_OPTION_ARG_FILENAME, &into.data, "Where the app keeps its data", "FOLDER" },
        { G_OPTION_REMAINING, 0, 0, G_OPTION_ARG_FILENAME_ARRAY, &into.pages, nullptr, "FOLDER|URL" }, {}
    };
    std::unique_ptr<GOptionContext, gtk::Releasing<g_option_context_free>> const context(
        g_option_context_new("- shows pages in the app, with what becomes of their messages beside them"));
    g_option_context_add_main_entries(context.get(), static_cast<GOptionEntry const*>(entries), nullptr);
    gtk::GErrorPlace error;
    if (g_option_context_parse(context.get(), &count, &arguments, error.out()))
        return true;
    std::cerr << error->message << '\n';
    return false;
}

std::optional<std::string> complaintAbout(Options const& options, std::size_t pages)
{
    if (pages != 1)
        return "Say which pages to show: a folder, or the address of a server.";
    if (!options.isAddress() && !std::filesystem::is_directory(options.page))
        return options.page + " is neither a folder nor an address that begins with http:// or https://.";
    if (!options.isAddress() && !std::filesystem::exists(std::filesystem::path(options.page) / "index.html"))
        return options.page + " has no index.html, which the app opens first.";
    std::error_code ignored;
    if (!options.isAddress() && std::filesystem::equivalent(options.page, options.pictures, ignored))
        return "The pictures need a folder of their own: in that of the pages they would be changes of the pages.";
    if (options.data.empty())
        return "Say where the app keeps its data: --data FOLDER.";
    return std::nullopt;
}

}

std::optional<Options> readOptions(int count, char** arguments)
{
    Arguments read;
    if (!parse(read, count, arguments))
        return std::nullopt;
    auto const pages = take(read.pages);
    Options options { .page = pages.empty() ? "" : pages.front(),
        .script = take(read.script),
        .pictures = take(read.pictures),
        .data = take(read.data),
        .actions = take(read.actions) };
    if (options.pictures.empty())
        options.pictures = options.data / "pictures";
    if (auto const complaint = complaintAbout(options, pages.size())) {
        std::cerr << *complaint << '\n';
        return std::nullopt;
    }
    return options;
}

}
