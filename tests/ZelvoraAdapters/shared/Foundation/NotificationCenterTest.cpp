#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"

#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

namespace {

class NotificationCenterTest : public ::testing::Test {
protected:
    shared::NotificationCenter::Handler note(std::string name)
    {
        return [this, name](auto const&) { told.push_back(name); };
    }

    memory::Clock clock;
    memory::DispatchQueue queue { clock };
    shared::NotificationCenter center;
    std::vector<std::string> told;
};

}

TEST_F(NotificationCenterTest, HandlersRunInOrderOfRegistrationBeforePostReturns)
{
    auto const observer = std::make_shared<int>();
    center.addObserver(observer, "name", note("first"));
    center.addObserver(observer, "name", note("second"));
    center.addObserver(observer, "other", note("other"));
    center.post({ "name", {} });
    EXPECT_EQ(told, (std::vector<std::string> { "first", "second" }));
}

TEST_F(NotificationCenterTest, TheUserInfoArrivesAsItWasPosted)
{
    auto const observer = std::make_shared<int>();
    platform::Notification const posted { "name", platform::Dictionary { { "visible", true } } };
    std::vector<platform::Notification> received;
    center.addObserver(observer, "name", [&received](auto const& notification) { received.push_back(notification); });
    center.post(posted);
    EXPECT_EQ(received, std::vector { posted });
}

TEST_F(NotificationCenterTest, AnObserverIsRetainedOnlyWhileItsHandlerRuns)
{
    auto observer = std::make_shared<int>();
    center.addObserver(observer, "name", [&](auto const&) {
        std::weak_ptr<int> const weak = observer;
        observer.reset();
        EXPECT_FALSE(weak.expired());
        told.emplace_back("told");
    });
    center.post({ "name", {} });
    center.post({ "name", {} });
    EXPECT_EQ(told.size(), 1u);
    EXPECT_EQ(center.observerCount("name"), 0u);
}

TEST_F(NotificationCenterTest, AnObserverRemovedDuringAPostIsNotNotified)
{
    auto const first = std::make_shared<int>();
    auto const second = std::make_shared<int>();
    center.addObserver(first, "name", [&](auto const&) { center.removeObserver(second.get()); });
    center.addObserver(second, "name", note("second"));
    center.addObserver(second, "other", note("other"));
    center.post({ "name", {} });
    center.post({ "other", {} });
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(center.observerCount("name"), 1u);
}

TEST_F(NotificationCenterTest, AHandlerMayPostAddAndRemove)
{
    auto const observer = std::make_shared<int>();
    center.addObserver(observer, "name", [&](auto const&) {
        center.removeObserver(observer.get());
        center.addObserver(observer, "other", note("other"));
        center.post({ "other", {} });
    });
    center.post({ "name", {} });
    EXPECT_EQ(told, std::vector<std::string> { "other" });
}

TEST_F(NotificationCenterTest, AHandlerWithAQueueRunsThereLater)
{
    (void)center.addObserver("name", queue, note("queued"));
    center.post({ "name", {} });
    EXPECT_TRUE(told.empty());
    queue.runAll();
    EXPECT_EQ(told, std::vector<std::string> { "queued" });
}

TEST_F(NotificationCenterTest, AHandlerRemovedByTokenDoesNotRunForEarlierPosts)
{
    auto const token = center.addObserver("name", queue, note("queued"));
    (void)center.addObserver("name", queue, note("other"));
    center.post({ "name", {} });
    center.removeObserver(token);
    queue.runAll();
    EXPECT_EQ(told, std::vector<std::string> { "other" });
}

TEST_F(NotificationCenterTest, AHandlerMayRemoveItselfByToken)
{
    platform::NotificationCenter::Token token = 0;
    token = center.addObserver("name", queue, [&, kept = std::make_shared<int>(1)](auto const&) {
        center.removeObserver(token);
        told.push_back(std::to_string(*kept));
    });
    center.post({ "name", {} });
    center.post({ "name", {} });
    queue.runAll();
    EXPECT_EQ(told, std::vector<std::string> { "1" });
}

TEST_F(NotificationCenterTest, ManyThreadsMayPostAddAndRemoveAtOnce)
{
    std::atomic<int> count = 0;
    auto const steady = std::make_shared<int>();
    center.addObserver(steady, "name", [&count](auto const&) { ++count; });
    constexpr int rounds = 500;
    auto const work = [&] {
        for (int round = 0; round < rounds; ++round) {
            auto const passing = std::make_shared<int>();
            center.addObserver(passing, "name", [](auto const&) { });
            auto const token = center.addObserver("name", queue, [](auto const&) { });
            center.post({ "name", {} });
            center.removeObserver(token);
            center.removeObserver(passing.get());
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 2 * rounds);
    EXPECT_EQ(center.observerCount("name"), 1u);
}

}
