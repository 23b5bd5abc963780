#pragma once

#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <glib.h>

#include <mutex>

namespace zelvora::gtk {

/// A serial queue on the thread that runs a GLib main context: one block a turn of its loop, at the priority of events.
/// As with the phone's main queue, a block that runs a loop of its own holds up the blocks after it.
///
/// It is destroyed on that thread and outside its blocks, or when nobody runs the context any more.
class MainContextQueue final : public platform::DispatchQueue {
public:
    /// The default context's, which the application runs, unless told otherwise.
    explicit MainContextQueue(GMainContext* context = nullptr);
    MainContextQueue(MainContextQueue const&) = delete;
    MainContextQueue& operator=(MainContextQueue const&) = delete;
    ~MainContextQueue() override;

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    void runNext();
    void wakeWhenNextIsDue();

    GSource* m_source;
    std::mutex m_mutex;
    shared::WorkSchedule m_schedule;
};

}
