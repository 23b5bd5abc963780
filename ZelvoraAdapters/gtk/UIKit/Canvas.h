#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <vector>

namespace zelvora::gtk {

struct EdgeDragTarget;

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
    /// The window is still the canvas's.
    virtual void canvasWillLeaveWindow() { }
    virtual void canvasWasUnmapped() { }
    /// Adds who wants to hear of a drag that starts at the canvas's left edge.
    virtual void collectEdgeDragTargets(std::vector<EdgeDragTarget>&) { }
};

/// A widget without a look of its own, which leaves everything to its client. The caller owns one reference.
[[nodiscard]] GtkWidget* makeCanvas(CanvasClient& client);

/// The client of a canvas that still has one, or nullptr for any other widget.
[[nodiscard]] CanvasClient* canvasClient(GtkWidget* widget);

/// Takes the canvas out of its parent and lets go of its children; the client hears nothing any more.
void retireCanvas(GtkWidget* canvas);

/// Places a child, which must be the canvas's own.
void allocateChild(GtkWidget* child, double x, double y, double width, double height);

}
