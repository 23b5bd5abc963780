#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace zelvora::examples {

/// The bar above the shop: a title, and a button to leave.
[[nodiscard]] GtkWidget* makeHeader(std::function<void()> const& leave);

/// The bar below the shop, which the page can hide.
[[nodiscard]] GtkWidget* makeFooter();

/// A button that does something; the widget owns the work.
[[nodiscard]] GtkWidget* makeButton(char const* label, std::function<void()> const& work);

/// The look of the app's own widgets.
void installStyle();

}
