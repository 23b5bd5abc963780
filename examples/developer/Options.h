#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::developer {

struct Options {
    /// A folder of pages, or the address of a server that has them.
    std::string page;
    /// What the app does by itself; empty if a person uses it.
    std::filesystem::path script;
    /// Where a script saves pictures.
    std::filesystem::path pictures;
    /// The folder for the data of the app and the service; what is there already is used.
    std::filesystem::path data;
    /// The names of actions that the app has for pages to call.
    std::vector<std::string> actions;

    /// Whether the page is an address.
    [[nodiscard]] bool isAddress() const { return page.starts_with("http://") || page.starts_with("https://"); }
};

/// If the arguments are invalid, prints a message to standard error and returns nothing.
[[nodiscard]] std::optional<Options> readOptions(int count, char** arguments);

}
