#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace zelvora::examples {

/// The bar above the shop: a title and a button that calls `leave`.
[[nodiscard]] GtkWidget* makeHeader(std::function<void()> const& leave);

/// The bar below the shop, which the page can hide.
[[nodiscard]] GtkWidget* makeFooter();

/// A button that calls `work` when clicked. The button owns `work`.
[[nodiscard]] GtkWidget* makeButton(char const* label, std::function<void()> const& work);

/// Installs the style sheet of the app's widgets.
void installStyle();

}
