#include "ZelvoraPlatform/Concurrency/Task.h"

#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "ZelvoraPlatform/Concurrency/completion.h"
#include "ZelvoraPlatform/Concurrency/resumeOn.h"
#include "ZelvoraPlatform/Concurrency/spawn.h"
#include "ZelvoraPlatform/Concurrency/whenAll.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::platform {

namespace {

using Record = std::vector<std::string>;
using Handler = CompletionHandler<void(int)>;

Task<void> note(Record* record, std::string text)
{
    record->push_back(std::move(text));
    co_return;
}

Task<int> makeNumber(int number)
{
    co_return number;
}

Task<std::unique_ptr<int>> makeOwned(int number)
{
    co_return std::make_unique<int>(number);
}

Task<void> add(int* sum, int first, int second)
{
    auto one = makeNumber(first);
    *sum += co_await one;
    auto other = makeNumber(second);
    *sum += co_await other;
}

Task<void> hold(std::shared_ptr<int>)
{
    co_return;
}

Task<void> takeOwned(int* result)
{
    auto task = makeOwned(7);
    auto const owned = co_await task;
    *result = *owned;
}

Task<void> hop(Record* record, DispatchQueue* queue)
{
    record->emplace_back("before");
    co_await resumeOn(*queue);
    record->emplace_back("after");
}

// Records its beginning, continues on the queue and records its end.
Task<void> child(Record* record, std::string name, DispatchQueue* queue)
{
    record->push_back(name + " begins");
    co_await resumeOn(*queue);
    record->push_back(name + " ends");
}

Task<void> both(Record* record, Task<void> first, Task<void> second)
{
    auto children = whenAll(std::move(first), std::move(second));
    co_await children;
    record->emplace_back("both");
}

class TaskTest : public ::testing::Test {
protected:
    memory::Clock m_clock;
    memory::DispatchQueue m_queue { m_clock };
    memory::DispatchQueue m_other { m_clock };
    Record m_record;
};

TEST_F(TaskTest, ATaskThatIsNotAwaitedDoesNothing)
{
    {
        auto const task = note(&m_record, "ran");
    }
    EXPECT_TRUE(m_record.empty());
}

TEST_F(TaskTest, ADroppedTaskReleasesItsParameters)
{
    auto const watched = std::make_shared<int>();
    {
        auto const task = hold(watched);
        EXPECT_EQ(watched.use_count(), 2);
    }
    EXPECT_EQ(watched.use_count(), 1);
}

TEST_F(TaskTest, ASpawnedTaskStartsLaterOnItsQueue)
{
    spawn(m_queue, note(&m_record, "ran"));
    EXPECT_TRUE(m_record.empty());
    (void)m_queue.runAll();
    EXPECT_EQ(m_record, (Record { "ran" }));
    EXPECT_TRUE(m_queue.isEmpty());
}

TEST_F(TaskTest, ASpawnedTaskIsDestroyedWhenItHasFinished)
{
    auto const watched = std::make_shared<int>();
    spawn(m_queue, hold(watched));
    EXPECT_EQ(watched.use_count(), 2);
    (void)m_queue.runAll();
    EXPECT_EQ(watched.use_count(), 1);
}

TEST_F(TaskTest, AnAwaitedTaskGivesItsResult)
{
    int sum = 0;
    spawn(m_queue, add(&sum, 3, 4));
    (void)m_queue.runAll();
    EXPECT_EQ(sum, 7);
}

TEST_F(TaskTest, AResultMayBeAnObjectThatCannotBeCopied)
{
    int result = 0;
    spawn(m_queue, takeOwned(&result));
    (void)m_queue.runAll();
    EXPECT_EQ(result, 7);
}

Task<void> countDown(int depth)
{
    if (depth == 0)
        co_return;
    auto rest = countDown(depth - 1);
    co_await rest;
}

Task<void> awaitMany(int count, int* finished)
{
    for (int i = 0; i < count; ++i) {
        auto task = makeNumber(1);
        *finished += co_await task;
    }
}

TEST_F(TaskTest, TasksMayAwaitOneAnotherDeeply)
{
    spawn(m_queue, countDown(500));
    EXPECT_EQ(m_queue.runAll(), 1U);
}

TEST_F(TaskTest, OneTaskMayAwaitManyOthersInSequence)
{
    int finished = 0;
    spawn(m_queue, awaitMany(1000, &finished));
    (void)m_queue.runAll();
    EXPECT_EQ(finished, 1000);
}

TEST_F(TaskTest, ResumingOnAQueueIsAlwaysLater)
{
    spawn(m_queue, hop(&m_record, &m_queue));
    EXPECT_TRUE(m_queue.runOne());
    EXPECT_EQ(m_record, (Record { "before" }));
    EXPECT_TRUE(m_queue.runOne());
    EXPECT_EQ(m_record, (Record { "before", "after" }));
}

TEST_F(TaskTest, ResumingOnAQueueComesAfterTheBlocksThatWaitThere)
{
    m_other.async([this] { m_record.emplace_back("waiting"); });
    spawn(m_queue, hop(&m_record, &m_other));
    (void)m_queue.runAll();
    (void)m_other.runAll();
    EXPECT_EQ(m_record, (Record { "before", "waiting", "after" }));
}

TEST_F(TaskTest, WhenAllStartsBothAndWaitsForBoth)
{
    spawn(m_queue, both(&m_record, child(&m_record, "first", &m_queue), child(&m_record, "second", &m_other)));
    (void)m_queue.runAll();
    EXPECT_EQ(m_record, (Record { "first begins", "second begins", "first ends" }));
    (void)m_other.runAll();
    EXPECT_EQ(m_record, (Record { "first begins", "second begins", "first ends", "second ends", "both" }));
}

TEST_F(TaskTest, WhenAllContinuesWhicheverTaskEndsLast)
{
    spawn(m_queue, both(&m_record, child(&m_record, "first", &m_other), child(&m_record, "second", &m_queue)));
    (void)m_queue.runAll();
    EXPECT_EQ(m_record, (Record { "first begins", "second begins", "second ends" }));
    (void)m_other.runAll();
    EXPECT_EQ(m_record.back(), "both");
}

TEST_F(TaskTest, WhenAllContinuesAtOnceIfBothEndAtOnce)
{
    spawn(m_queue, both(&m_record, note(&m_record, "first"), note(&m_record, "second")));
    EXPECT_EQ(m_queue.runAll(), 1U);
    EXPECT_EQ(m_record, (Record { "first", "second", "both" }));
}

Task<void> awaitCompletion(Record* record, std::optional<Handler>* handler)
{
    auto start = [handler](Handler given) { handler->emplace(std::move(given)); };
    auto answer = completion<int>(start);
    auto const number = co_await answer;
    record->push_back(std::to_string(number));
}

Task<void> awaitImmediateCompletion(Record* record)
{
    auto start = [record](Handler given) {
        given(7);
        record->emplace_back("started");
    };
    auto answer = completion<int>(start);
    auto const number = co_await answer;
    record->push_back(std::to_string(number));
}

TEST_F(TaskTest, ACallbackIsAwaited)
{
    std::optional<Handler> handler;
    spawn(m_queue, awaitCompletion(&m_record, &handler));
    (void)m_queue.runAll();
    ASSERT_TRUE(handler);
    EXPECT_TRUE(m_record.empty());
    (*handler)(7);
    EXPECT_EQ(m_record, (Record { "7" })) << "on the caller's thread, before the call returns";
}

TEST_F(TaskTest, ACallbackInsideStartIsAwaitedToo)
{
    spawn(m_queue, awaitImmediateCompletion(&m_record));
    (void)m_queue.runAll();
    EXPECT_EQ(m_record, (Record { "started", "7" }));
}

Task<void> throwException()
{
    throw std::runtime_error("nothing throws across a layer");
    co_return;
}

using TaskDeathTest = TaskTest;

TEST_F(TaskDeathTest, AnExceptionThatLeavesATaskStopsTheProcess)
{
    EXPECT_DEATH(
        {
            spawn(m_queue, throwException());
            (void)m_queue.runAll();
        },
        "Fatal error: an exception left a task");
}

// For tests on real threads: a counter whose end can be waited for.
class Countdown final {
public:
    explicit Countdown(int count) : m_count(count) { }

    void arrive()
    {
        // Notified under the lock, because the waiting thread may destroy this object as soon as it has the lock.
        std::scoped_lock const lock(m_mutex);
        if (--m_count == 0)
            m_changed.notify_all();
    }
    [[nodiscard]] bool wait()
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(30), [this] { return m_count == 0; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count;
};

Task<void> hopOften(DispatchQueue* queue, std::atomic<int>* hops)
{
    for (int i = 0; i < 40; ++i) {
        co_await resumeOn(*queue);
        ++*hops;
    }
}

Task<void> hopInPairs(DispatchQueue* queue, std::atomic<int>* hops, Countdown* countdown)
{
    auto children = whenAll(hopOften(queue, hops), hopOften(queue, hops));
    co_await children;
    countdown->arrive();
}

TEST(TaskThreadsTest, TasksOnManyThreadsAllEnd)
{
    constexpr int count = 100;
    std::atomic<int> hops = 0;
    Countdown countdown(count);
    shared::ThreadPoolQueue queue(4);
    for (int i = 0; i < count; ++i)
        spawn(queue, hopInPairs(&queue, &hops, &countdown));
    EXPECT_TRUE(countdown.wait());
    EXPECT_EQ(hops, count * 80);
}

Task<void> awaitFromThread(DispatchQueue* queue, int* sum, Countdown* countdown)
{
    for (int i = 0; i < 50; ++i) {
        auto start = [queue, i](Handler handler) {
            queue->async([handler = std::move(handler), i]() mutable { handler(i); });
        };
        auto answer = completion<int>(start);
        *sum += co_await answer;
    }
    countdown->arrive();
}

TEST(TaskThreadsTest, ACallbackMayComeOnAnotherThreadBeforeStartReturns)
{
    for (int round = 0; round < 20; ++round) {
        int sum = 0;
        Countdown countdown(1);
        shared::ThreadPoolQueue queue(2);
        spawn(queue, awaitFromThread(&queue, &sum, &countdown));
        ASSERT_TRUE(countdown.wait());
        EXPECT_EQ(sum, 49 * 50 / 2);
    }
}

}

}
