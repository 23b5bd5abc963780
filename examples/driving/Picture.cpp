#include "examples/driving/Picture.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"

#include <memory>

namespace zelvora::examples {

namespace {

using NodePointer = std::unique_ptr<GskRenderNode, gtk::Releasing<gsk_render_node_unref>>;

// A change in the page reaches the window a few frames later.
void drawFrames(GtkWidget* widget)
{
    constexpr int frames = 12;
    auto drawn = 0;
    auto const tick = gtk_widget_add_tick_callback(
        widget,
        [](GtkWidget* ticking, GdkFrameClock*, gpointer counter) -> gboolean {
            ++*static_cast<int*>(counter);
            gtk_widget_queue_draw(ticking);
            return G_SOURCE_CONTINUE;
        },
        &drawn, nullptr);
    (void)gtk::runMainLoopUntil([&drawn] { return drawn >= frames; }, 2);
    gtk_widget_remove_tick_callback(widget, tick);
}

}

bool takePicture(GtkWindow* window, std::filesystem::path const& file)
{
    auto* const widget = GTK_WIDGET(window);
    drawFrames(widget);
    auto const width = gtk_widget_get_width(widget);
    auto const height = gtk_widget_get_height(widget);
    auto const paintable = gtk::adopt(gtk_widget_paintable_new(widget));
    auto* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(paintable.get(), snapshot, width, height);
    NodePointer const node(gtk_snapshot_free_to_node(snapshot));
    auto* const renderer = gtk_native_get_renderer(GTK_NATIVE(window));
    if (!node || !renderer)
        return false;
    graphene_rect_t area;
    graphene_rect_init(&area, 0, 0, static_cast<float>(width), static_cast<float>(height));
    auto const texture = gtk::adopt(gsk_renderer_render_texture(renderer, node.get(), &area));
    return gdk_texture_save_to_png(texture.get(), file.c_str());
}

}
