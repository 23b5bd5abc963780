#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"

#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace zelvora::tests {

/// What this program's wall clock shows, relative to the machine's clock, which only root may set.
inline std::atomic<std::int64_t> s_secondsAhead = 0;

}

// Exported, these replace the C library's functions for the whole program and its libraries. Both, because libraries
// may use either.
extern "C" {

[[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    auto const result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && clock == CLOCK_REALTIME)
        time->tv_sec += zelvora::tests::s_secondsAhead;
    return result;
}

[[gnu::visibility("default")]] int gettimeofday(timeval* time, void* zone) noexcept
{
    auto const result = static_cast<int>(syscall(SYS_gettimeofday, time, zone));
    if (result == 0)
        time->tv_sec += zelvora::tests::s_secondsAhead;
    return result;
}
}

namespace zelvora::tests {

/// An adapter's clock, and the system's under it. Included by one source of a program.
template<typename SystemClock>
class MovedWallClock final {
public:
    MovedWallClock() = default;
    MovedWallClock(MovedWallClock const&) = delete;
    MovedWallClock& operator=(MovedWallClock const&) = delete;
    ~MovedWallClock() { s_secondsAhead = 0; }

    platform::Clock& clock() { return m_clock; }
    void setSystemClock(platform::Date now)
    {
        timespec machine {};
        syscall(SYS_clock_gettime, CLOCK_REALTIME, &machine);
        s_secondsAhead = static_cast<std::int64_t>(now.timeIntervalSince1970) - machine.tv_sec;
    }

private:
    SystemClock m_clock;
};

}
