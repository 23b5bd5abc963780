#pragma once

#include <gtk/gtk.h>

namespace zelvora::gtk {

/// Removes a widget from the container that it is in, if there is one, so that the container no longer uses it.
void takeOutOfItsPlace(GtkWidget* widget);

}
