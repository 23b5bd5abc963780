#pragma once

#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

namespace zelvora::shared {

/// The controller that presents for this one, and is presented with it: the outermost of the navigation stacks that it
/// is on, or itself if it is on none. Main thread.
[[nodiscard]] inline platform::UIViewController& outermost(platform::UIViewController& controller)
{
    auto* outermost = &controller;
    while (auto const navigation = outermost->navigationController())
        outermost = navigation.get();
    return *outermost;
}

}
