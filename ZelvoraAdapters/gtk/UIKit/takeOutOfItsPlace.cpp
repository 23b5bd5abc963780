#include "ZelvoraAdapters/gtk/UIKit/takeOutOfItsPlace.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <memory>
#include <span>

namespace zelvora::gtk {

namespace {

bool hasAsProperty(GtkWidget* container, GParamSpec const& property, GtkWidget* widget)
{
    constexpr int both = G_PARAM_READWRITE;
    auto const mayBeWidget = g_type_is_a(property.value_type, GTK_TYPE_WIDGET) && (property.flags & both) == both;
    if (!mayBeWidget)
        return false;
    GtkWidget* held = nullptr;
    g_object_get(container, property.name, &held, nullptr);
    auto const owner = adopt(held);
    return held == widget;
}

void clearPropertiesWith(GtkWidget* widget, GtkWidget* container)
{
    guint count = 0;
    auto** const properties = g_object_class_list_properties(G_OBJECT_GET_CLASS(container), &count);
    std::unique_ptr<void, Releasing<g_free>> const owner(static_cast<void*>(properties));
    for (auto const* property : std::span(properties, count)) {
        if (hasAsProperty(container, *property, widget))
            g_object_set(container, property->name, nullptr, nullptr);
    }
}

void removeFromNotebook(GtkWidget* widget)
{
    auto* const notebook = reinterpret_cast<GtkNotebook*>(gtk_widget_get_ancestor(widget, GTK_TYPE_NOTEBOOK));
    auto const page = notebook ? gtk_notebook_page_num(notebook, widget) : -1;
    if (page >= 0)
        gtk_notebook_remove_page(notebook, page);
}

void removeFromStack(GtkWidget* widget)
{
    if (auto* const parent = gtk_widget_get_parent(widget); GTK_IS_STACK(parent))
        gtk_stack_remove(GTK_STACK(parent), widget);
}

// The container need not be the parent: some put widgets of their own between.
void clearProperties(GtkWidget* widget)
{
    auto* container = gtk_widget_get_parent(widget);
    while (container && gtk_widget_get_parent(widget)) {
        auto* const next = gtk_widget_get_parent(container);
        clearPropertiesWith(widget, container);
        container = next;
    }
}

}

// A container keeps its child in a property or a list too, and would keep using it if it were only unparented.
void takeOutOfItsPlace(GtkWidget* widget)
{
    // The container may have the last reference.
    auto const held = retain(widget);
    // A notebook's pages are in a stack of its own.
    removeFromNotebook(widget);
    removeFromStack(widget);
    clearProperties(widget);
    if (gtk_widget_get_parent(widget))
        gtk_widget_unparent(widget);
}

}
