#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"
#include "tests/support/ChildProcess.h"

#include <signal.h> // NOLINT(*-deprecated-headers): SIGCONT
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h> // NOLINT(*-deprecated-headers): clock_gettime
#include <unistd.h>

#include <atomic>
#include <chrono>

namespace {

std::atomic<::time_t> s_wallClockOffset = 0;

}

// In place of the C library's, so that a test can set the wall clock, which the system allows nobody but root.
extern "C" int clock_gettime(::clockid_t clock, struct ::timespec* time) noexcept
{
    auto const result = static_cast<int>(::syscall(SYS_clock_gettime, clock, time)); // NOLINT(*-vararg)
    if (result == 0 && clock == CLOCK_REALTIME)
        time->tv_sec += s_wallClockOffset;
    return result;
}

namespace zelvora::tests {

using platform::Value;

class JournalPatienceTest : public JournalTest { };

TEST_F(JournalPatienceTest, DoesNotFollowTheWallClock)
{
    using Clock = std::chrono::steady_clock;
    m_options.lockTimeout = std::chrono::milliseconds(50);
    open();
    ChildProcess other { { ZELVORA_JOURNAL_PROCESS, "serve", m_path } };
    EXPECT_EQ(other.ask("stop-in-next-write"), "done");
    other.send("set theirs value");
    ASSERT_TRUE(WIFSTOPPED(other.waitForChange()));

    auto const before = Clock::now();
    s_wallClockOffset = 20;
    set("ours", 1);
    s_wallClockOffset = 0;
    EXPECT_GE(Clock::now() - before, m_options.lockTimeout);
    EXPECT_LT(Clock::now() - before, std::chrono::seconds(10));
    EXPECT_EQ(get("ours"), Value { 1 });
}

}
