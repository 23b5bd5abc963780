#pragma once

#include <gtk/gtk.h>

#include <string>

namespace zelvora::examples {

/// The first widget with this name inside the widget; nullptr if there is none.
[[nodiscard]] GtkWidget* findNamed(GtkWidget* within, std::string const& name);

/// The first button with this label inside the widget; nullptr if there is none.
[[nodiscard]] GtkWidget* findButton(GtkWidget* within, std::string const& label);

/// A visible window other than the app's own, such as the system's question about tracking; nullptr if there is none.
[[nodiscard]] GtkWindow* findDialog(GtkWindow* own);

/// The button that allows tracking; nullptr if the dialog has none.
[[nodiscard]] GtkWidget* findAllowButton(GtkWindow* dialog);

}
