#pragma once

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

/// What every notification centre promises. A harness makes one, and a queue of this thread:
///
///     platform::NotificationCenter& center();
///     platform::DispatchQueue& queue();
///     // Runs all blocks that are on the queue.
///     void runQueue();
template<typename Harness>
class NotificationCenterContract : public testing::Test {
protected:
    using Told = std::vector<std::string>;

    platform::NotificationCenter& center() { return m_harness.center(); }

    /// Registers an observer, which is called as long as the returned pointer lives. `who` is recorded for each call.
    [[nodiscard]] std::shared_ptr<int> observe(std::string const& name, std::string const& who)
    {
        auto observer = std::make_shared<int>(0);
        center().addObserver(observer, name, [this, who](auto const&) { m_told.push_back(who); });
        return observer;
    }
    platform::NotificationCenter::Token observeOnQueue(std::string const& name, std::string const& who)
    {
        return center().addObserver(name, m_harness.queue(), [this, who](auto const&) { m_told.push_back(who); });
    }

    Told m_told;
    Harness m_harness;
};

TYPED_TEST_SUITE_P(NotificationCenterContract);

TYPED_TEST_P(NotificationCenterContract, CallsHandlersInOrderOfRegistrationBeforePostReturns)
{
    auto const first = this->observe("name", "first");
    auto const other = this->observe("another name", "other");
    auto const second = this->observe("name", "second");
    this->center().post({ "name", {} });
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "first", "second" }));
    this->center().post({ "nobody's name", {} });
    EXPECT_EQ(this->m_told.size(), 2U);
}

TYPED_TEST_P(NotificationCenterContract, PassesTheNotificationThatWasPosted)
{
    std::vector<platform::Notification> received;
    auto const observer = std::make_shared<int>(0);
    this->center().addObserver(observer, "name", [&](auto const& notification) { received.push_back(notification); });
    platform::Notification const plain { "name", std::nullopt };
    platform::Notification const laden { "name", platform::Dictionary { { "visible", true } } };
    this->center().post(plain);
    this->center().post(laden);
    EXPECT_EQ(received, (std::vector { plain, laden }));
}

TYPED_TEST_P(NotificationCenterContract, AHandlerRunsOnThePostingThread)
{
    std::thread::id teller;
    std::thread::id poster;
    auto const observer = std::make_shared<int>(0);
    this->center().addObserver(observer, "name", [&](auto const&) { teller = std::this_thread::get_id(); });
    runOnThreads(1, [&](int) {
        poster = std::this_thread::get_id();
        this->center().post({ "name", {} });
    });
    EXPECT_EQ(teller, poster);
    EXPECT_NE(teller, std::this_thread::get_id());
}

TYPED_TEST_P(NotificationCenterContract, AnObserverIsNotKeptAliveAndNotCalledOnceItIsGone)
{
    auto observer = this->observe("name", "gone");
    std::weak_ptr<int> const watched = observer;
    observer.reset();
    EXPECT_TRUE(watched.expired());
    this->center().post({ "name", {} });
    EXPECT_TRUE(this->m_told.empty());
}

TYPED_TEST_P(NotificationCenterContract, AnObserverIsKeptAliveWhileItsHandlerRuns)
{
    auto observer = std::make_shared<int>(0);
    std::weak_ptr<int> const watched = observer;
    bool wasAlive = false;
    this->center().addObserver(observer, "name", [&](auto const&) {
        observer.reset();
        wasAlive = !watched.expired();
    });
    this->center().post({ "name", {} });
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(watched.expired());
}

TYPED_TEST_P(NotificationCenterContract, ARemovedObserverIsNotCalled)
{
    auto const first = this->observe("name", "first");
    auto const second = this->observe("name", "second");
    this->center().addObserver(first, "another name", [this](auto const&) { this->m_told.push_back("again"); });
    this->center().removeObserver(first.get());
    this->center().removeObserver(this);
    this->center().post({ "name", {} });
    this->center().post({ "another name", {} });
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "second" }));
}

TYPED_TEST_P(NotificationCenterContract, AnObserverMayRemoveItselfInItsDestructor)
{
    struct Observer {
        explicit Observer(platform::NotificationCenter& observed) : center(observed) { }
        Observer(Observer const&) = delete;
        Observer& operator=(Observer const&) = delete;
        ~Observer() { center.removeObserver(this); }
        platform::NotificationCenter& center;
    };
    auto observer = std::make_shared<Observer>(this->center());
    this->center().addObserver(observer, "name", [&](auto const&) {
        this->m_told.push_back("told");
        observer.reset();
    });
    this->center().post({ "name", {} });
    this->center().post({ "name", {} });
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "told" }));
}

TYPED_TEST_P(NotificationCenterContract, AHandlerMayRemoveItselfPostAndAdd)
{
    auto const observer = std::make_shared<int>(0);
    std::shared_ptr<int> added;
    this->center().addObserver(observer, "name", [&](auto const&) {
        this->center().removeObserver(observer.get());
        added = this->observe("another name", "added");
        this->center().post({ "another name", {} });
        this->m_told.push_back("self");
    });
    this->center().post({ "name", {} });
    this->center().post({ "name", {} });
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "added", "self" }));
}

TYPED_TEST_P(NotificationCenterContract, AHandlerWithAQueueIsCalledThereAndLater)
{
    auto const token = this->observeOnQueue("name", "queued");
    auto const observer = this->observe("name", "direct");
    this->center().post({ "name", {} });
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "direct" }));
    runOnThreads(1, [&](int) { this->center().post({ "name", {} }); });
    this->m_harness.runQueue();
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "direct", "direct", "queued", "queued" }));
    this->center().removeObserver(token);
}

TYPED_TEST_P(NotificationCenterContract, AHandlerRemovedByItsTokenIsNotCalledForEarlierPosts)
{
    auto const token = this->observeOnQueue("name", "removed");
    auto const kept = this->observeOnQueue("name", "kept");
    this->center().post({ "name", {} });
    this->center().removeObserver(token);
    this->m_harness.runQueue();
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "kept" }));
    EXPECT_NE(token, kept);
}

TYPED_TEST_P(NotificationCenterContract, AHandlerWithAQueueMayRemoveItself)
{
    platform::NotificationCenter::Token token = 0;
    token = this->center().addObserver("name", this->m_harness.queue(), [&](auto const&) {
        this->m_told.push_back("once");
        this->center().removeObserver(token);
    });
    this->center().post({ "name", {} });
    this->center().post({ "name", {} });
    this->m_harness.runQueue();
    EXPECT_EQ(this->m_told, (std::vector<std::string> { "once" }));
}

TYPED_TEST_P(NotificationCenterContract, AHandlerWithAQueueIsKeptUntilItIsRemoved)
{
    auto captured = std::make_shared<int>(0);
    std::weak_ptr<int> const watched = captured;
    auto const token =
        this->center().addObserver("name", this->m_harness.queue(), [held = std::move(captured)](auto const&) { });
    this->center().post({ "name", {} });
    EXPECT_FALSE(watched.expired());
    this->center().removeObserver(token);
    this->m_harness.runQueue();
    EXPECT_TRUE(watched.expired());
}

TYPED_TEST_P(NotificationCenterContract, ManyThreadsMayPostAddAndRemoveAtOnce)
{
    std::atomic<int> told = 0;
    auto const observer = std::make_shared<int>(0);
    this->center().addObserver(observer, "name", [&](auto const&) { ++told; });
    runOnThreads(4, [&](int) {
        for (int i = 0; i < 100; ++i) {
            auto const passing = std::make_shared<int>(0);
            this->center().addObserver(passing, "name", [](auto const&) { });
            this->center().post({ "name", {} });
            if (i % 2)
                this->center().removeObserver(passing.get());
        }
    });
    EXPECT_EQ(told, 400);
}

REGISTER_TYPED_TEST_SUITE_P(NotificationCenterContract, CallsHandlersInOrderOfRegistrationBeforePostReturns,
    PassesTheNotificationThatWasPosted, AHandlerRunsOnThePostingThread,
    AnObserverIsNotKeptAliveAndNotCalledOnceItIsGone, AnObserverIsKeptAliveWhileItsHandlerRuns,
    ARemovedObserverIsNotCalled, AnObserverMayRemoveItselfInItsDestructor, AHandlerMayRemoveItselfPostAndAdd,
    AHandlerWithAQueueIsCalledThereAndLater, AHandlerRemovedByItsTokenIsNotCalledForEarlierPosts,
    AHandlerWithAQueueMayRemoveItself, AHandlerWithAQueueIsKeptUntilItIsRemoved, ManyThreadsMayPostAddAndRemoveAtOnce);

}
