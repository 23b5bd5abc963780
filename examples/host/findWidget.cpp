#include "examples/host/findWidget.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <array>

namespace zelvora::examples {

namespace {

template<typename Matches>
GtkWidget* findFirst(GtkWidget* within, Matches const& matches)
{
    if (matches(within))
        return within;
    for (auto* child = gtk_widget_get_first_child(within); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* found = findFirst(child, matches))
            return found;
    }
    return nullptr;
}

}

GtkWidget* findNamed(GtkWidget* within, std::string const& name)
{
    return findFirst(within, [&name](GtkWidget* widget) { return gtk_widget_get_name(widget) == name; });
}

GtkWidget* findButton(GtkWidget* within, std::string const& label)
{
    return findFirst(within, [&label](GtkWidget* widget) {
        auto const* own = GTK_IS_BUTTON(widget) ? gtk_button_get_label(GTK_BUTTON(widget)) : nullptr;
        return own && own == label;
    });
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
