#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/skeleton/ScreenHarness.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

using namespace zelvora;
using tests::SkeletonScreen;

namespace {

bool isPlaced(SkeletonScreen& screen, platform::UIView& view)
{
    auto const frame = screen.seenFrame(view);
    return screen.isSeen(view) && frame.width > 0 && frame.height > 0
        && std::ranges::all_of(view.subviews(), [&](auto const& subview) { return isPlaced(screen, *subview); });
}

// A line for each view: its frame in its superview, below which its subviews are.
void print(SkeletonScreen& screen, platform::UIView& view, std::string const& indentation = "  ")
{
    auto const frame = screen.seenFrame(view);
    std::cout << indentation << frame.x << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height
              << (screen.isSeen(view) ? "\n" : " not seen\n");
    for (auto const& subview : view.subviews())
        print(screen, *subview, indentation + "  ");
}

}

// A shop on this adapter, on the screen of the contract suites: it stops with the name of the method that has to be
// written next, or prints what is on the screen.
int main()
{
    SkeletonScreen screen;
    auto const stack = screen.makeNavigationController(std::make_shared<platform::UIViewController>());
    screen.show(stack);
    screen.activate();
    // As if it had been looked up, so that no service is needed.
    ZelvoraStorage::saveShopId("first");
    auto& sdk = ZelvoraSDK::shared();
    auto const header = [&screen](platform::UIViewController&) { return screen.makeContentView(50); };
    if (!sdk.initialize("user-key", "api-key", true, false, true, header) || !sdk.start(stack))
        return 1;
    bool const isOpen = screen.runUntil([&stack] { return stack->viewControllers().size() == 2; });
    // The next program looks it up.
    ZelvoraStorage::remove("shop_id");
    if (!isOpen) {
        std::cout << "The shop did not open: initialize may be waiting for the user's answer about tracking.\n";
        return 1;
    }
    auto& shop = stack->viewControllers().back()->view();
    bool const isWhole = screen.runUntil([&] { return isPlaced(screen, shop); });
    std::cout << (isWhole ? "The shop is open" : "Not all of the shop is on the screen") << ", at "
              << sdk.getCurrentUrl().value_or("no address") << std::endl;
    print(screen, shop);
    return isWhole ? 0 : 1;
}
