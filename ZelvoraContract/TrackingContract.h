#pragma once

#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace zelvora::tests {

/// What every tracking permission promises. A harness acts as the user:
///
///     platform::ATTrackingManager& manager();
///     // Sets the status that the system's settings or an earlier launch left. Called before the first request.
///     void setStatus(platform::ATTrackingAuthorizationStatus status);
///     // Whether the question is on the screen.
///     bool isAsking();
///     // Answers the question that is on the screen.
///     void answer(bool allow);
///     // Runs the adapter until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
///     // Starts the app again with the data of the previous launch.
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

TYPED_TEST_P(TrackingContract, AsksTheUserAndReportsTheAnswer)
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

TYPED_TEST_P(TrackingContract, DoesNotAskAUserWhoHasAnswered)
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

TYPED_TEST_P(TrackingContract, AsksOnceForSimultaneousRequests)
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

TYPED_TEST_P(TrackingContract, TheAnswerIsStored)
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

TYPED_TEST_P(TrackingContract, DestroyingTheManagerAnswersAPendingRequest)
{
    using Status = platform::ATTrackingAuthorizationStatus;
    this->request();
    ASSERT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.isAsking(); }));
    this->m_harness.restart();
    EXPECT_EQ(this->m_answers.all(), std::vector { Status::NotDetermined });
}

REGISTER_TYPED_TEST_SUITE_P(TrackingContract, AtFirstNothingIsDeterminedOrAsked, AsksTheUserAndReportsTheAnswer,
    DoesNotAskAUserWhoHasAnswered, AsksOnceForSimultaneousRequests, TheAnswerIsStored,
    DestroyingTheManagerAnswersAPendingRequest);

}
