#include "examples/developer/panel/DeveloperScreen.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

namespace zelvora::developer {

namespace {

constexpr int panelWidth = 560;
constexpr int narrowestPanel = 300;

}

DeveloperScreen::DeveloperScreen(GtkWindow* window, Panel const& panel)
    : m_window(window)
    , m_screen(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0))
    , m_scroller(gtk_scrolled_window_new())
{
    // What the app presents goes on covering it, and not the panel.
    auto const content = gtk::retain(gtk_window_get_child(window));
    gtk_window_set_child(window, nullptr);
    gtk_widget_set_vexpand(content.get(), TRUE);
    gtk_box_append(GTK_BOX(m_screen), content.get());
    gtk_widget_set_halign(m_screen, GTK_ALIGN_START);
    gtk_widget_set_valign(m_screen, GTK_ALIGN_START);

    // A tablet is higher than many a desk's screen.
    gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(m_scroller), TRUE);
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(m_scroller), m_screen);

    gtk_widget_set_size_request(panel.widget(), narrowestPanel, -1);
    auto* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_box_append(GTK_BOX(box), m_scroller);
    gtk_box_append(GTK_BOX(box), gtk_separator_new(GTK_ORIENTATION_VERTICAL));
    gtk_box_append(GTK_BOX(box), panel.widget());
    gtk_window_set_child(window, box);
}

void DeveloperScreen::setSize(ScreenSize size)
{
    gtk_widget_set_size_request(m_screen, size.width, size.height);
    gtk_scrolled_window_set_min_content_width(GTK_SCROLLED_WINDOW(m_scroller), size.width);
    gtk_window_set_default_size(m_window, size.width + panelWidth, size.height);
}

}
