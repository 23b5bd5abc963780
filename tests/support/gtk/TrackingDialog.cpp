#include "tests/support/gtk/TrackingDialog.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

GtkDialog* findTrackingDialog()
{
    auto* const windows = gtk_window_get_toplevels();
    for (guint index = 0; index < g_list_model_get_n_items(windows); ++index) {
        // GTK keeps its windows alive, so the item's reference may be dropped.
        auto const item = gtk::adopt(static_cast<GObject*>(g_list_model_get_item(windows, index)));
        if (GTK_IS_MESSAGE_DIALOG(item.get()) && gtk_widget_get_mapped(GTK_WIDGET(item.get())))
            return GTK_DIALOG(item.get());
    }
    return nullptr;
}

void clickButton(GtkDialog* dialog, int response)
{
    auto* const button = gtk_dialog_get_widget_for_response(dialog, response);
    ASSERT_TRUE(button);
    g_signal_emit_by_name(button, "clicked");
}

}
