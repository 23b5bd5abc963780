#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

namespace zelvora::shared {

/// Whether a controller has a place on the screen of which only its adapter knows: it is presented, it presents
/// another, or it is a window's content. A controller that has left its place, and is only still seen to leave, has
/// none.
using IsShown = bool (*)(platform::UIViewController const&);

/// Both stop the process with a sentence if the host shows nothing, or a controller that has a place on the screen
/// already: it is on a stack, `isShown` says so, or it would be shown over or on itself. For adapters whose system
/// does not stop the process by itself. Main thread.
/// @{
ZELVORA_API void expectFreeToPresent(
    platform::UIViewController const* presented, platform::UIViewController& presenter, IsShown isShown);
ZELVORA_API void expectFreeToPush(
    platform::UIViewController const* pushed, platform::UINavigationController& stack, IsShown isShown);
/// @}

}
