#pragma once

#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "tests/support/Record.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace zelvora::tests {

/// What every tracking permission promises. A harness plays the user:
///
///     platform::ATTrackingManager& manager();
///     // As the system's settings or an earlier launch left it; before the first request.
///     void setStatus(platform::ATTrackingAuthorizationStatus status);
///     // Whether the question is on the screen.
///     bool isAsking();
///     // The user says yes or no to it.
///     void answer(bool allow);
///     // Lets time pass until `done` holds; false where it does not come to that in half a minute.
///     bool runUntil(std::function<bool()> const& done);
///     // The app starts anew, with what the last one left behind.
///     void restart();
template<typename Harness>
class TrackingContract : public testing::Test {
protected:
    void request()
    {
        m_harness.manager().requestTrackingAuthorization(
            [this](platform::ATTrackingAuthorizationStatus status) { m_answers.add(status); });
    }
    bool waitForAnswers(std::size_t count)
    {
        return m_harness.runUntil([&] { return m_answers.size() >= count; });
    }

    Record<platform::ATTrackingAuthorizationStatus> m_answers;
    Harness m_harness;
};

TYPED_TEST_SUITE_P(TrackingContract);

TYPED_TEST_P(TrackingContract, AtFirstNothingIsDeterminedOrAsked)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    EXPECT_EQ(this->m_harness.manager().trackingAuthorizationStatus(), Status::NotDetermined);
    EXPECT_FALSE(this->m_harness.isAsking());
}

TYPED_TEST_P(TrackingContract, AsksAndTellsWhatTheUserChose)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    for (bool const allow : { true, false }) {
        this->m_harness.setStatus(Status::NotDetermined);
        auto const before = this->m_answers.size();
        this->request();
        ASSERT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.isAsking(); }));
        EXPECT_EQ(this->m_answers.size(), before);
        EXPECT_EQ(this->m_harness.manager().trackingAuthorizationStatus(), Status::NotDetermined);
        this->m_harness.answer(allow);
        ASSERT_TRUE(this->waitForAnswers(before + 1));
        auto const chosen = allow ? Status::Authorized : Status::Denied;
        EXPECT_EQ(this->m_answers.all().back(), chosen);
        EXPECT_EQ(this->m_harness.manager().trackingAuthorizationStatus(), chosen);
        EXPECT_FALSE(this->m_harness.isAsking());
    }
}

TYPED_TEST_P(TrackingContract, AsksNobodyWhoHasAnswered)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    for (auto const status : { Status::Restricted, Status::Denied, Status::Authorized }) {
        this->m_harness.setStatus(status);
        auto const before = this->m_answers.size();
        this->request();
        ASSERT_TRUE(this->waitForAnswers(before + 1));
        EXPECT_EQ(this->m_answers.all().back(), status);
        EXPECT_FALSE(this->m_harness.isAsking());
    }
}

TYPED_TEST_P(TrackingContract, AsksOnceForRequestsThatComeTogether)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    this->request();
    this->request();
    ASSERT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.isAsking(); }));
    this->m_harness.answer(true);
    ASSERT_TRUE(this->waitForAnswers(2));
    EXPECT_EQ(this->m_answers.all(), (std::vector { Status::Authorized, Status::Authorized }));
    EXPECT_FALSE(this->m_harness.isAsking());
}

TYPED_TEST_P(TrackingContract, TheAnswerIsKept)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    this->request();
    ASSERT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.isAsking(); }));
    this->m_harness.answer(false);
    ASSERT_TRUE(this->waitForAnswers(1));
    this->m_harness.restart();
    EXPECT_EQ(this->m_harness.manager().trackingAuthorizationStatus(), Status::Denied);
    this->request();
    ASSERT_TRUE(this->waitForAnswers(2));
    EXPECT_EQ(this->m_answers.all().back(), Status::Denied);
}

TYPED_TEST_P(TrackingContract, ItsEndAnswersARequestThatIsOpen)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    this->request();
    ASSERT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.isAsking(); }));
    this->m_harness.restart();
    EXPECT_EQ(this->m_answers.all(), std::vector { Status::NotDetermined });
}

REGISTER_TYPED_TEST_SUITE_P(TrackingContract, AtFirstNothingIsDeterminedOrAsked, AsksAndTellsWhatTheUserChose,
    AsksNobodyWhoHasAnswered, AsksOnceForRequestsThatComeTogether, TheAnswerIsKept, ItsEndAnswersARequestThatIsOpen);

}
