#include "ZelvoraAdapters/gtk/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraContract/NotificationCenterContract.h"

namespace zelvora::tests {

namespace {

class GtkNotificationCenter final {
public:
    platform::NotificationCenter& center() { return m_center; }
    platform::DispatchQueue& queue() { return m_queue; }
    void runQueue()
    {
        bool hasRun = false;
        m_queue.async([&] { hasRun = true; });
        EXPECT_TRUE(gtk::runMainLoopUntil([&] { return hasRun; }));
    }

private:
    gtk::DispatchQueue m_queue;
    shared::NotificationCenter m_center;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, NotificationCenterContract, GtkNotificationCenter);

}
