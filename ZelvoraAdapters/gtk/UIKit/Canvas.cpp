#include "ZelvoraAdapters/gtk/UIKit/Canvas.h"

#include "ZelvoraAdapters/gtk/UIKit/takeOutOfItsPlace.h"

#include <algorithm>
#include <cmath>

namespace zelvora::gtk {

namespace {

struct Canvas {
    GtkWidget parent;
    // Reset by `retireCanvas`.
    CanvasClient* client;
};

GtkWidgetClass* s_parentClass = nullptr;

CanvasClient* clientOf(GtkWidget* widget)
{
    return reinterpret_cast<Canvas*>(widget)->client;
}

void unparentChildren(GtkWidget* widget)
{
    while (auto* child = gtk_widget_get_first_child(widget))
        gtk_widget_unparent(child);
}

void dispose(GObject* object)
{
    unparentChildren(GTK_WIDGET(object));
    G_OBJECT_CLASS(s_parentClass)->dispose(object);
}

void measure(GtkWidget* widget, GtkOrientation orientation, int forSize, int* minimum, int* natural,
    int* minimumBaseline, int* naturalBaseline)
{
    auto* client = clientOf(widget);
    auto const size = client ? client->measureCanvas(orientation, forSize) : CanvasClient::Size {};
    *minimum = size.minimum;
    *natural = std::max(size.minimum, size.natural);
    *minimumBaseline = -1;
    *naturalBaseline = -1;
}

void allocate(GtkWidget* widget, int width, int height, int)
{
    if (auto* client = clientOf(widget))
        client->allocateCanvas(width, height);
}

void snapshot(GtkWidget* widget, GtkSnapshot* snapshot)
{
    if (auto* client = clientOf(widget))
        client->drawCanvas(snapshot);
    s_parentClass->snapshot(widget, snapshot);
}

void root(GtkWidget* widget)
{
    s_parentClass->root(widget);
    if (auto* client = clientOf(widget))
        client->canvasDidEnterWindow();
}

void unroot(GtkWidget* widget)
{
    if (auto* client = clientOf(widget))
        client->canvasWillLeaveWindow();
    s_parentClass->unroot(widget);
}

void unmap(GtkWidget* widget)
{
    s_parentClass->unmap(widget);
    if (auto* client = clientOf(widget))
        client->canvasWasUnmapped();
}

void initializeClass(gpointer held, gpointer)
{
    s_parentClass = static_cast<GtkWidgetClass*>(g_type_class_peek_parent(held));
    G_OBJECT_CLASS(held)->dispose = dispose;
    auto* widgetClass = static_cast<GtkWidgetClass*>(held);
    widgetClass->measure = measure;
    widgetClass->size_allocate = allocate;
    widgetClass->snapshot = snapshot;
    widgetClass->root = root;
    widgetClass->unroot = unroot;
    widgetClass->unmap = unmap;
}

GType canvasType()
{
    static GType const s_type = g_type_register_static_simple(GTK_TYPE_WIDGET, "ZelvoraCanvas", sizeof(GtkWidgetClass),
        initializeClass, sizeof(Canvas), nullptr, G_TYPE_FLAG_FINAL);
    return s_type;
}

}

GObjectPointer<GtkWidget> makeCanvas(CanvasClient& client)
{
    auto canvas = sink(GTK_WIDGET(g_object_new(canvasType(), nullptr)));
    reinterpret_cast<Canvas*>(canvas.get())->client = &client;
    return canvas;
}

CanvasClient* canvasClient(GtkWidget* widget)
{
    return G_TYPE_CHECK_INSTANCE_TYPE(widget, canvasType()) ? clientOf(widget) : nullptr;
}

void retireCanvas(GtkWidget* canvas)
{
    reinterpret_cast<Canvas*>(canvas)->client = nullptr;
    unparentChildren(canvas);
    takeOutOfItsPlace(canvas);
}

void allocateChild(GtkWidget* child, double x, double y, double width, double height)
{
    // The toolkit requires that a widget is measured before it is allocated.
    int minimumWidth = 0;
    gtk_widget_measure(child, GTK_ORIENTATION_HORIZONTAL, -1, &minimumWidth, nullptr, nullptr, nullptr);
    int const allocatedWidth = std::max(minimumWidth, static_cast<int>(std::lround(width)));
    int minimumHeight = 0;
    gtk_widget_measure(child, GTK_ORIENTATION_VERTICAL, allocatedWidth, &minimumHeight, nullptr, nullptr, nullptr);
    GtkAllocation const allocation { static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)), allocatedWidth,
        std::max(minimumHeight, static_cast<int>(std::lround(height))) };
    gtk_widget_size_allocate(child, &allocation, -1);
}

}
