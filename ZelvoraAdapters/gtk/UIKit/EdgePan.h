#pragma once

#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <gtk/gtk.h>

#include <functional>
#include <memory>

namespace zelvora::gtk {

/// A candidate for a drag from the left edge.
struct EdgePanTarget {
    std::shared_ptr<platform::UIGestureRecognizer> recognizer;
    /// Called before each state with the distance to the right of the drag's start, in points, and the speed, in points
    /// per second.
    std::function<void(double distance, double speed)> moved = [](double, double) { };
};

/// Watches a window, until it is destroyed, for drags that start at the left edge of a canvas in it, and drives the
/// recognizers of that canvas and of the canvases around it, the innermost first. `shared::GestureArbitration` decides
/// which of them begin; once one has begun, nothing else in the window receives the drag.
void watchEdgePans(GtkWindow* window);

}
