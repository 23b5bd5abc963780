#include "examples/host/findWidget.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <array>

namespace zelvora::examples {

GtkWidget* findButton(GtkWidget* within, std::string const& label)
{
    if (GTK_IS_BUTTON(within)) {
        auto const* own = gtk_button_get_label(GTK_BUTTON(within));
        if (own && own == label)
            return within;
    }
    for (auto* child = gtk_widget_get_first_child(within); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* found = findButton(child, label))
            return found;
    }
    return nullptr;
}

GtkWindow* findDialog(GtkWindow* own)
{
    auto* const windows = gtk_window_get_toplevels();
    for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
        // GTK keeps its windows alive, so the item's reference may be dropped.
        auto const item = gtk::adopt(static_cast<GObject*>(g_list_model_get_item(windows, i)));
        auto* const window = GTK_WINDOW(item.get());
        if (window != own && gtk_widget_is_visible(GTK_WIDGET(window)))
            return window;
    }
    return nullptr;
}

GtkWidget* findAllowButton(GtkWindow* dialog)
{
    static constexpr std::array labels { "허용", "Allow" };
    for (auto const* label : labels) {
        if (auto* button = findButton(GTK_WIDGET(dialog), label))
            return button;
    }
    return nullptr;
}

}
