#include "examples/host/bars.h"

#include "examples/host/texts.h"

#include <adwaita.h>

namespace zelvora::examples {

GtkWidget* makeHeader(std::function<void()> const& leave)
{
    auto* const button = gtk_button_new_from_icon_name("window-close-symbolic");
    gtk_widget_set_name(button, "leave");
    gtk_widget_add_css_class(button, "flat");
    gtk_widget_add_css_class(button, "circular");
    gtk_widget_set_tooltip_text(button, texts().leave);
    // An icon says nothing to who cannot see it.
    gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, texts().leave, -1);
    onClick(button, leave);

    auto* const bar = gtk_center_box_new();
    gtk_widget_add_css_class(bar, "bar");
    gtk_center_box_set_start_widget(GTK_CENTER_BOX(bar), button);
    gtk_center_box_set_center_widget(GTK_CENTER_BOX(bar), adw_window_title_new(texts().appName, texts().headerNote));
    return bar;
}

GtkWidget* makeFooter()
{
    auto* const label = gtk_label_new(texts().footerNote);
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_widget_add_css_class(label, "footer");
    return label;
}

void onClick(GtkWidget* button, std::function<void()> const& work)
{
    auto const didClick = [](GtkButton*, gpointer held) { (*static_cast<std::function<void()>*>(held))(); };
    auto const release = [](gpointer held, GClosure*) { delete static_cast<std::function<void()>*>(held); };
    g_signal_connect_data(
        button, "clicked", G_CALLBACK(+didClick), new std::function(work), +release, G_CONNECT_DEFAULT);
}

}
