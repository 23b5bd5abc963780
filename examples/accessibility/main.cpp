// Prints the trees that a screen reader is given of the apps on the session and of their pages: what each thing is and
// how it is called, indented as they lie in each other. Things that only hold others are left out.

#include "examples/accessibility/Bus.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace {

using zelvora::examples::AccessibilityBus;
using zelvora::examples::Accessible;

constexpr int deepest = 64;

std::string nameOfRole(unsigned role)
{
    static constexpr std::array<std::pair<unsigned, char const*>, 30> names { { { 2, "alert" }, { 7, "check box" },
        { 11, "combo box" }, { 16, "dialog" }, { 23, "frame" }, { 27, "image" }, { 28, "internal frame" },
        { 29, "label" }, { 31, "list" }, { 32, "list item" }, { 33, "menu" }, { 35, "menu item" },
        { 42, "progress bar" }, { 43, "button" }, { 54, "status" }, { 61, "text" }, { 62, "toggle button" },
        { 69, "window" }, { 73, "paragraph" }, { 75, "application" }, { 79, "entry" }, { 83, "heading" },
        { 85, "section" }, { 87, "form" }, { 88, "link" }, { 95, "web page" }, { 97, "entry" }, { 110, "landmark" },
        { 116, "text" }, { 130, "switch" } } };
    auto const* const found = std::ranges::find(names, role, [](auto const& name) { return name.first; });
    return found == names.end() ? "role " + std::to_string(role) : found->second;
}

bool onlyHoldsOthers(unsigned role)
{
    static constexpr std::array<unsigned, 8> roles { 20, 21, 39, 48, 49, 68, 85, 74 };
    return std::ranges::find(roles, role) != roles.end();
}

void print(AccessibilityBus const& bus, Accessible const& accessible, int depth, int indentation)
{
    if (depth > deepest)
        return;
    auto const role = bus.role(accessible);
    auto const isPrinted = !onlyHoldsOthers(role);
    if (isPrinted)
        std::cout << std::string(static_cast<std::size_t>(indentation) * 2, ' ') << nameOfRole(role) << " “"
                  << bus.name(accessible) << "”\n";
    for (auto const& child : bus.children(accessible))
        print(bus, child, depth + 1, indentation + (isPrinted ? 1 : 0));
}

}

int main()
{
    auto const bus = AccessibilityBus::connect();
    if (!bus)
        return EXIT_FAILURE;
    for (auto const& app : bus->apps())
        print(*bus, app, 0, 0);
    for (auto const& page : bus->pages())
        print(*bus, page, 0, 0);
    return EXIT_SUCCESS;
}
