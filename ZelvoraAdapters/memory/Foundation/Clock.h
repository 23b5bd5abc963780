#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <chrono>
#include <mutex>

namespace zelvora::memory {

/// A clock that stands still until it is moved by hand. Any thread.
class ZELVORA_API Clock final : public platform::Clock {
public:
    /// The first of January 2026, midnight UTC: where every clock starts.
    static constexpr platform::Date start { 1'767'225'600 };

    /// Time passes: the wall clock moves, and delayed blocks of the queues fall due (and run when their queue is
    /// turned). Time does not pass backwards.
    void advance(platform::TimeInterval seconds);
    /// Somebody sets the wall clock, to any moment; no time passes.
    void set(platform::Date now);
    /// Moves with the time that passes alone.
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
