#pragma once

#include "ZelvoraAdapters/gtk/Concurrency/MainContextQueue.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <thread>

namespace zelvora::gtk {

/// A thread that runs a GLib main context of its own, which is the default context of what is made on it.
class ContextThread final {
public:
    ContextThread();
    ContextThread(ContextThread const&) = delete;
    ContextThread& operator=(ContextThread const&) = delete;
    ~ContextThread();

    /// Runs blocks on this thread. Those that are left when the thread ends are destroyed with this object.
    [[nodiscard]] platform::DispatchQueue& queue() { return m_queue; }

    /// On this thread: lets it end after the block that is running.
    void quit();
    /// On another thread: waits until the thread has ended. Somebody must see to it that it quits.
    void join();

private:
    void run();

    GMainContextPointer m_context;
    GMainLoopPointer m_loop;
    MainContextQueue m_queue;
    std::thread m_thread;
};

}
