#pragma once

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

/// What every wall clock promises. A harness acts as the system:
///
///     platform::Clock& clock();
///     // Sets the system's wall clock to a whole second. The clock may run on from there. Any thread.
///     void setSystemClock(platform::Date now);
///
/// A test does not set the machine's clock: stand between the clock and the system, with a source of the time that the
/// clock is given, or as "MovedWallClock.h" does where the C library has the time.
template<typename Harness>
class ClockContract : public testing::Test {
protected:
    static constexpr platform::Date y2001 { 1'000'000'000 };
    static constexpr platform::Date y2033 { 2'000'000'000 };

    void setAndExpect(platform::Date now)
    {
        m_harness.setSystemClock(now);
        expectAbout(now, m_harness.clock().now());
    }
    // Time passes between setting and reading, on a busy machine much of it.
    static bool isAbout(platform::Date expected, platform::Date date)
    {
        auto const passed = date.timeIntervalSince(expected);
        return passed >= 0 && passed < 30;
    }
    static void expectAbout(platform::Date expected, platform::Date date)
    {
        EXPECT_TRUE(isAbout(expected, date))
            << date.timeIntervalSince1970 << " where the system has " << expected.timeIntervalSince1970;
    }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(ClockContract);

TYPED_TEST_P(ClockContract, ShowsTheSystemsWallClockInSecondsSince1970)
{
    this->setAndExpect(this->y2001);
}

TYPED_TEST_P(ClockContract, FollowsTheSystemsClockForwardsAndBackwards)
{
    this->setAndExpect(this->y2001);
    this->setAndExpect(this->y2033);
    this->setAndExpect(this->y2001);
    // By a little, as a time server does.
    this->setAndExpect({ this->y2001.timeIntervalSince1970 + 90 });
    this->setAndExpect({ this->y2001.timeIntervalSince1970 - 90 });
}

TYPED_TEST_P(ClockContract, ManyThreadsMayReadItWhileItIsSet)
{
    this->m_harness.setSystemClock(this->y2001);
    runOnThreads(4, [&](int number) {
        for (int i = 0; i < 250; ++i) {
            if (number == 0)
                this->m_harness.setSystemClock(i % 2 == 0 ? this->y2033 : this->y2001);
            auto const now = this->m_harness.clock().now();
            EXPECT_TRUE(this->isAbout(this->y2001, now) || this->isAbout(this->y2033, now))
                << now.timeIntervalSince1970;
        }
    });
}

REGISTER_TYPED_TEST_SUITE_P(ClockContract, ShowsTheSystemsWallClockInSecondsSince1970,
    FollowsTheSystemsClockForwardsAndBackwards, ManyThreadsMayReadItWhileItIsSet);

}
