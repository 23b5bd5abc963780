#include "ZelvoraAdapters/gtk/Concurrency/ContextThread.h"
#include "ZelvoraAdapters/gtk/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraContract/DispatchQueueContract.h"
#include "ZelvoraContract/ThreadedQueueHarness.h"

#include <chrono>
#include <optional>

namespace zelvora::tests {

namespace {

class GtkMainQueue final {
public:
    platform::DispatchQueue& queue() { return *m_queue; }
    void destroyQueue() { m_queue.reset(); }
    bool runUntil(std::function<bool()> const& done) { return gtk::runMainLoopUntil(done); }
    platform::TimeInterval elapsed() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point const m_start = std::chrono::steady_clock::now();
    std::optional<gtk::DispatchQueue> m_queue { std::in_place };
};

using GtkLoaderQueue = ThreadedQueueHarness<gtk::ContextThread,
    +[](gtk::ContextThread& thread) -> platform::DispatchQueue& { return thread.queue(); }>;

}

INSTANTIATE_TYPED_TEST_SUITE_P(GtkMain, DispatchQueueContract, GtkMainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(GtkMain, SerialQueueContract, GtkMainQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(GtkLoader, DispatchQueueContract, GtkLoaderQueue);
INSTANTIATE_TYPED_TEST_SUITE_P(GtkLoader, SerialQueueContract, GtkLoaderQueue);

}
