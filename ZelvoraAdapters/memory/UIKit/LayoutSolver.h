#pragma once

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraPlatform/UIKit/Geometry.h"

#include <string>
#include <vector>

namespace zelvora::memory {

struct Layout {
    struct Placed {
        platform::UIView* view = nullptr;
        /// In the superview.
        platform::CGRect frame;
    };

    /// Every view of the tree, the root first.
    std::vector<Placed> frames;
    /// See `Screen::ambiguities`.
    std::vector<std::string> ambiguities;
};

/// Places the views of a tree, hidden ones too, as their constraints say. A view whose autoresizing mask is translated
/// stays where its frame puts it; where the constraints leave a view's height or width open, its intrinsic size says
/// it. What is open then is taken to be nothing wide and high, and told.
[[nodiscard]] Layout solveLayout(platform::UIView& root, platform::CGRect frame, SafeAreaInsets insets);

}
