#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <chrono>
#include <mutex>

namespace zelvora::memory {

/// A clock that moves by hand only. Any thread.
class ZELVORA_API Clock final : public platform::Clock {
public:
    /// Where every clock starts: 1 January 2026, midnight UTC.
    static constexpr platform::Date start { 1'767'225'600 };

    /// Lets time pass, never backwards: the wall clock moves, and delayed blocks become due (they run when their queue
    /// runs).
    void advance(platform::TimeInterval seconds);
    /// Sets the wall clock to any time, as a user does; no time passes.
    void set(platform::Date now);
    /// Moves only as time passes, not when the wall clock is set.
    [[nodiscard]] std::chrono::steady_clock::time_point steadyNow() const;

    // platform::Clock
    [[nodiscard]] platform::Date now() const override;

private:
    std::mutex mutable m_mutex;
    platform::Date m_now = start;
    // Whole nanoseconds, so that ten times 0.1 seconds are one second.
    std::chrono::steady_clock::time_point m_steadyNow {};
};

}
