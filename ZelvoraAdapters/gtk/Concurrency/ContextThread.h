#pragma once

#include "ZelvoraAdapters/gtk/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <thread>

namespace zelvora::gtk {

/// A thread that runs its own GLib main context, which is the thread's default context.
class ContextThread final {
public:
    ContextThread();
    ContextThread(ContextThread const&) = delete;
    ContextThread& operator=(ContextThread const&) = delete;
    ~ContextThread();

    /// Runs blocks on this thread. Blocks that have not run when the thread ends are destroyed with this object.
    [[nodiscard]] platform::DispatchQueue& queue() { return m_queue; }

    /// Ends the thread after the running block. Call on this thread.
    void quit();
    /// Waits for the thread to end; something must make it quit. Call on another thread.
    void join();

private:
    void run();

    GMainContextPointer m_context;
    GMainLoopPointer m_loop;
    DispatchQueue m_queue;
    std::thread m_thread;
};

}
