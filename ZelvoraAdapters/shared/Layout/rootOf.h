#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"

namespace zelvora::shared {

/// The outermost view around this one, or itself: the root of the tree that is laid out together. Main thread.
[[nodiscard]] inline platform::UIView& rootOf(platform::UIView& view)
{
    auto* root = &view;
    while (root->superview())
        root = root->superview();
    return *root;
}

}
