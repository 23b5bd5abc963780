#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "tests/support/gtk/GtkHarness.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace zelvora::tests {

namespace {

/// A place in a window that a host may give to a view's widget.
struct Place {
    std::string name;
    /// Returns the container.
    GtkWidget* (*put)(GtkWindow* window, GtkWidget* widget);
    /// The property in which the container has its child; absent if it has a list of them.
    char const* property = nullptr;
};

void PrintTo(Place const& place, std::ostream* stream)
{
    *stream << place.name;
}

std::string nameOf(testing::TestParamInfo<Place> const& info)
{
    return info.param.name;
}

GtkWidget* putInWindow(GtkWindow* window, GtkWidget* widget)
{
    gtk_window_set_child(window, widget);
    return GTK_WIDGET(window);
}

GtkWidget* putInPopover(GtkWindow* window, GtkWidget* widget)
{
    auto* const button = gtk_menu_button_new();
    auto* const popover = gtk_popover_new();
    gtk_popover_set_child(GTK_POPOVER(popover), widget);
    gtk_menu_button_set_popover(GTK_MENU_BUTTON(button), popover);
    gtk_window_set_child(window, button);
    gtk_menu_button_popup(GTK_MENU_BUTTON(button));
    return popover;
}

GtkWidget* putInNotebook(GtkWindow* window, GtkWidget* widget)
{
    auto* const notebook = gtk_notebook_new();
    gtk_notebook_append_page(GTK_NOTEBOOK(notebook), widget, nullptr);
    gtk_notebook_append_page(GTK_NOTEBOOK(notebook), gtk_label_new("other"), nullptr);
    gtk_window_set_child(window, notebook);
    return notebook;
}

GtkWidget* putInStack(GtkWindow* window, GtkWidget* widget)
{
    auto* const stack = gtk_stack_new();
    gtk_stack_add_child(GTK_STACK(stack), widget);
    gtk_stack_add_child(GTK_STACK(stack), gtk_label_new("other"));
    gtk_window_set_child(window, stack);
    return stack;
}

GtkWidget* putInExpander(GtkWindow* window, GtkWidget* widget)
{
    auto* const expander = gtk_expander_new("expander");
    gtk_expander_set_child(GTK_EXPANDER(expander), widget);
    gtk_expander_set_expanded(GTK_EXPANDER(expander), TRUE);
    gtk_window_set_child(window, expander);
    return expander;
}

GtkWidget* putInPaned(GtkWindow* window, GtkWidget* widget)
{
    auto* const paned = gtk_paned_new(GTK_ORIENTATION_HORIZONTAL);
    gtk_paned_set_end_child(GTK_PANED(paned), widget);
    gtk_window_set_child(window, paned);
    return paned;
}

GtkWidget* putInScroller(GtkWindow* window, GtkWidget* widget)
{
    auto* const scroller = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), widget);
    gtk_window_set_child(window, scroller);
    // The window puts a viewport around a widget that cannot scroll.
    return gtk_widget_get_parent(widget);
}

GtkWidget* putInBox(GtkWindow* window, GtkWidget* widget)
{
    auto* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_box_append(GTK_BOX(box), gtk_label_new("other"));
    gtk_box_append(GTK_BOX(box), widget);
    gtk_window_set_child(window, box);
    return box;
}

gpointer childIn(GtkWidget* container, char const* property)
{
    gpointer child = nullptr;
    g_object_get(container, property, &child, nullptr);
    // The widget is kept elsewhere.
    if (child)
        g_object_unref(child);
    return child;
}

class PlacementTest : public testing::TestWithParam<Place> {
protected:
    void drawAgain()
    {
        auto* const window = GTK_WIDGET(m_harness.window());
        bool isDrawn = false;
        gtk_widget_queue_resize(window);
        auto const draw = g_signal_connect_swapped(gtk_widget_get_frame_clock(window), "after-paint",
            G_CALLBACK(+[](bool* drawn) { *drawn = true; }), &isDrawn);
        EXPECT_TRUE(m_harness.runUntil([&] { return isDrawn; }));
        g_signal_handler_disconnect(gtk_widget_get_frame_clock(window), draw);
    }

    GtkHarness m_harness;
};

}

TEST_P(PlacementTest, AViewMayBeDestroyedWhereverTheHostHasPutItsWidget)
{
    auto view = std::make_shared<platform::UIView>();
    // Kept, so that a container that forgets to let it go can be told from one that does.
    auto const widget = gtk::retain(gtk::widgetOf(*view));
    gtk_widget_set_size_request(widget.get(), 100, 100);
    auto* const container = GetParam().put(m_harness.window(), widget.get());
    gtk_window_present(m_harness.window());
    EXPECT_TRUE(m_harness.runUntil([&] { return gtk_widget_get_mapped(widget.get()); }));
    view.reset();
    EXPECT_FALSE(gtk_widget_get_parent(widget.get()));
    if (GetParam().property) {
        EXPECT_FALSE(childIn(container, GetParam().property));
    }
    drawAgain();
    EXPECT_EQ(G_OBJECT(widget.get())->ref_count, 1U);
    // The place is empty and can be given to another.
    GetParam().put(m_harness.window(), gtk_label_new("another"));
    drawAgain();
}

INSTANTIATE_TEST_SUITE_P(Places, PlacementTest,
    testing::Values(Place { "Window", putInWindow, "child" }, Place { "Box", putInBox },
        Place { "Paned", putInPaned, "end-child" }, Place { "Scroller", putInScroller, "child" },
        Place { "Stack", putInStack }, Place { "Notebook", putInNotebook },
        Place { "Expander", putInExpander, "child" }, Place { "Popover", putInPopover, "child" }),
    nameOf);

}
