#include "ZelvoraAdapters/uikit/Foundation/Clock.h"
#include "tests/contract/ClockContract.h"

#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace {

// What this program's wall clock shows, relative to the machine's clock, which only root may set.
std::atomic<std::int64_t> s_secondsAhead = 0;

}

// Exported, these replace the C library's functions for the whole program and its libraries. Both, because GNUstep may
// use either.
extern "C" {

[[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    auto const result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && clock == CLOCK_REALTIME)
        time->tv_sec += s_secondsAhead;
    return result;
}

[[gnu::visibility("default")]] int gettimeofday(timeval* time, void* zone) noexcept
{
    auto const result = static_cast<int>(syscall(SYS_gettimeofday, time, zone));
    if (result == 0)
        time->tv_sec += s_secondsAhead;
    return result;
}
}

namespace zelvora::tests {

namespace {

class PhoneTime final {
public:
    PhoneTime() = default;
    PhoneTime(PhoneTime const&) = delete;
    PhoneTime& operator=(PhoneTime const&) = delete;
    ~PhoneTime() { s_secondsAhead = 0; }

    platform::Clock& clock() { return m_clock; }
    void setSystemClock(platform::Date now)
    {
        timespec machine {};
        syscall(SYS_clock_gettime, CLOCK_REALTIME, &machine);
        s_secondsAhead = static_cast<std::int64_t>(now.timeIntervalSince1970) - machine.tv_sec;
    }

private:
    uikit::Clock m_clock;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ClockContract, PhoneTime);

}
