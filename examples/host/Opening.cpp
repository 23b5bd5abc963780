#include "examples/host/Opening.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"

#include <iostream>

namespace zelvora::examples {

void Opening::makeSteps()
{
    constexpr double moment = 2;
    host().initializeSDK();
    (void)gtk::runMainLoopUntil([] { return false; }, moment);
    host().presentShop();
    if (stepUntil("the page speaks", [this] { return host().openingTime().has_value(); }))
        std::cerr << "opening " << *host().openingTime() << '\n';
}

}
