#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace zelvora::examples {

/// The bar above the shop: the app's name and a button, named "leave", that calls `leave`.
[[nodiscard]] GtkWidget* makeHeader(std::function<void()> const& leave);

/// The bar below the shop, which the page can hide.
[[nodiscard]] GtkWidget* makeFooter();

/// Calls `work` at each click. The button owns `work`.
void onClick(GtkWidget* button, std::function<void()> const& work);

}
