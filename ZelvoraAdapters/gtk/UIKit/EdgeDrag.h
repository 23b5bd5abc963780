#pragma once

#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <gtk/gtk.h>

#include <functional>
#include <memory>

namespace zelvora::gtk {

/// Someone who may recognise a drag from the left edge.
struct EdgeDragTarget {
    std::shared_ptr<platform::UIGestureRecognizer> recognizer;
    /// Told where the drag stands before each state: points from its start to the right, and points a second.
    std::function<void(double distance, double speed)> moved = [](double, double) { };
};

/// Watches a window, from now until it is destroyed, for drags that start at the left edge of a canvas in it, and
/// drives the recognisers of that canvas and of the canvases around it, the innermost first. The first whose delegate
/// lets it begin does; a further one does where its delegate or that of one that has begun allows both. Nothing else in
/// the window sees the drag from then on.
void watchEdgeDrags(GtkWindow* window);

}
