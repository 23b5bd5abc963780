#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "ZelvoraContract/TrackingContract.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/TrackingDialog.h"

#include <gtk/gtk.h>

#include <optional>

namespace zelvora::tests {

namespace {

/// The real dialog on a real display, answered by its buttons.
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
    bool isAsking() { return findTrackingDialog() != nullptr; }
    void answer(bool allow) { clickButton(findTrackingDialog(), allow ? GTK_RESPONSE_ACCEPT : GTK_RESPONSE_REJECT); }
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

    TemporaryDirectory m_directory;
    std::optional<gtk::TrackingStore> m_store;
    std::optional<gtk::ATTrackingManager> m_manager;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, TrackingContract, GtkTracking);

}
