#pragma once

#include "ZelvoraPlatform/Concurrency/Block.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <glib.h>

namespace zelvora::gtk {

/// Calls a block when it was set and then left alone for so long; setting it again starts the time anew. It lives on
/// the thread that made it and fires in that thread's default main context. The block may destroy the timer.
class Timer final {
public:
    explicit Timer(platform::Block<void()> fire);
    Timer(Timer const&) = delete;
    Timer& operator=(Timer const&) = delete;
    ~Timer();

    void set(platform::TimeInterval interval);
    void stop();

private:
    GSource* m_source;
    platform::Block<void()> m_fire;
};

}
