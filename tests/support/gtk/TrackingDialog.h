#pragma once

#include <gtk/gtk.h>

namespace zelvora::tests {

/// The dialog on the screen that asks for permission to track, or nullptr.
[[nodiscard]] GtkDialog* findTrackingDialog();

/// Clicks the dialog's button for a response, such as GTK_RESPONSE_ACCEPT.
void clickButton(GtkDialog* dialog, int response);

}
