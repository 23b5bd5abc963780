#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Concurrency/Block.h"
#include "ZelvoraPlatform/Foundation/Date.h"

namespace zelvora::gtk {

/// Calls a block once an interval has passed since the timer was last set. It is used on the thread that made it and
/// fires in that thread's default main context. The block may destroy the timer.
class Timer final {
public:
    explicit Timer(platform::Block<void()> fire);
    Timer(Timer const&) = delete;
    Timer& operator=(Timer const&) = delete;
    ~Timer() = default;

    void set(platform::TimeInterval interval);
    void stop();

private:
    void run();

    platform::Block<void()> m_fire;
    GSourcePointer m_source;
};

}
