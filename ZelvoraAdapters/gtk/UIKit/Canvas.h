#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gtk/gtk.h>

#include <memory>
#include <vector>

namespace zelvora::gtk {

struct EdgePanTarget;

/// What a canvas shows and how it places its children. Main thread.
class CanvasClient {
public:
    virtual ~CanvasClient() = default;

    struct Size {
        int minimum = 0;
        int natural = 0;
    };

    [[nodiscard]] virtual Size measureCanvas(GtkOrientation, int) { return {}; }
    /// Allocates every child.
    virtual void allocateCanvas(int width, int height) = 0;
    /// Draws what lies under the children.
    virtual void drawCanvas(GtkSnapshot*) { }
    virtual void canvasDidEnterWindow() { }
    /// The canvas is still in its window.
    virtual void canvasWillLeaveWindow() { }
    virtual void canvasWasUnmapped() { }
    /// Adds the targets of a drag that starts at the canvas's left edge.
    virtual void collectEdgePanTargets(std::vector<EdgePanTarget>&) { }
};

/// A widget that draws nothing itself and leaves everything to its client.
[[nodiscard]] GObjectPointer<GtkWidget> makeCanvas(CanvasClient& client);

/// The client of a canvas that still has one, or nullptr for any other widget.
[[nodiscard]] CanvasClient* canvasClient(GtkWidget* widget);

/// Removes the canvas from its parent, and its children from it. No further client calls.
void retireCanvas(GtkWidget* canvas);

/// Measures and allocates a child of a canvas.
void allocateChild(GtkWidget* child, double x, double y, double width, double height);

}
