#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "tests/contract/TrackingContract.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtk/gtk.h>

#include <optional>

namespace zelvora::tests {

namespace {

/// The real question on a real display, answered at its buttons.
class GtkTracking final {
public:
    using Status = platform::ATTrackingAuthorizationStatus;

    GtkTracking()
    {
        gtk_init();
        start();
    }

    platform::ATTrackingManager& manager() { return *m_manager; }
    void setStatus(Status status) { m_store->setStatus(status); }
    bool isAsking() { return dialog() && gtk_widget_get_mapped(GTK_WIDGET(dialog())); }
    void answer(bool allow)
    {
        auto* const button =
            gtk_dialog_get_widget_for_response(dialog(), allow ? GTK_RESPONSE_ACCEPT : GTK_RESPONSE_REJECT);
        g_signal_emit_by_name(button, "clicked");
    }
    bool runUntil(std::function<bool()> const& done) { return gtk::runMainLoopUntil(done); }
    void restart()
    {
        m_manager.reset();
        start();
    }

private:
    void start()
    {
        m_store.emplace(m_directory.path());
        m_manager.emplace(*m_store, "Example");
    }

    static GtkDialog* dialog()
    {
        auto* const windows = gtk_window_get_toplevels();
        for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
            auto const window = gtk::adopt(static_cast<GObject*>(g_list_model_get_item(windows, i)));
            if (GTK_IS_DIALOG(window.get()))
                return GTK_DIALOG(window.get());
        }
        return nullptr;
    }

    TemporaryDirectory m_directory;
    std::optional<gtk::TrackingStore> m_store;
    std::optional<gtk::ATTrackingManager> m_manager;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, TrackingContract, GtkTracking);

}
