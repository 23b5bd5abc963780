#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/shared/Concurrency/WorkSchedule.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <mutex>

namespace zelvora::gtk {

/// A serial queue on the thread that runs a GLib main context: one block per iteration of the loop, at the priority of
/// events. As on the phone's main queue, a block that runs a nested loop delays the blocks after it.
///
/// Destroy it on that thread outside its blocks, or once no thread runs the context.
class DispatchQueue final : public platform::DispatchQueue {
public:
    /// nullptr means the default context, which the application runs.
    explicit DispatchQueue(GMainContext* context = nullptr);
    DispatchQueue(DispatchQueue const&) = delete;
    DispatchQueue& operator=(DispatchQueue const&) = delete;
    ~DispatchQueue() override;

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    void runNext();
    void wakeWhenNextIsDue();

    GSourcePointer m_source;
    std::mutex m_mutex;
    shared::WorkSchedule m_schedule;
};

}
