#pragma once

#include "ZelvoraContract/support/Record.h"
#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace zelvora::tests {

/// What every queue promises. A harness makes one and lets it run:
///
///     platform::DispatchQueue& queue();
///     // Absent if the queue is the system's and never ends: the tests of a queue's end are then left out.
///     void destroyQueue();
///     // Runs blocks and lets time pass until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
///     // The time by which delays are measured.
///     platform::TimeInterval elapsed();
///
/// The harness of a queue with threads of its own is in "ThreadedQueueHarness.h". That of a main queue is the one that
/// runs it: `runUntil` is called on the main thread, and where a run loop runs the queue, it is the loop that turns
/// until `done` returns true, even if blocks never cease to submit others.
template<typename Harness>
class DispatchQueueContract : public testing::Test {
protected:
    static constexpr bool queueEnds = requires(Harness& harness) { harness.destroyQueue(); };

    void destroyQueue()
    {
        if constexpr (queueEnds)
            m_harness.destroyQueue();
    }

    Harness m_harness;
};

/// What a serial queue promises in addition.
template<typename Harness>
class SerialQueueContract : public DispatchQueueContract<Harness> { };

TYPED_TEST_SUITE_P(DispatchQueueContract);
TYPED_TEST_SUITE_P(SerialQueueContract);

TYPED_TEST_P(DispatchQueueContract, RunsABlockThatOwnsWhatItCaptured)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().async([&record, owned = std::make_unique<int>(7)] { record.add(*owned); });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == 1; }));
    EXPECT_EQ(record.all(), std::vector { 7 });
}

TYPED_TEST_P(DispatchQueueContract, RunsEachBlockOnceWhicheverThreadSubmitsIt)
{
    auto& harness = this->m_harness;
    constexpr int threadCount = 4;
    constexpr int perThread = 250;
    std::vector<std::atomic<int>> runs(threadCount * perThread);
    std::atomic<std::size_t> total = 0;
    runOnThreads(threadCount, [&](int thread) {
        for (int i = thread * perThread; i < (thread + 1) * perThread; ++i) {
            harness.queue().async([&, i] {
                ++runs[static_cast<std::size_t>(i)];
                ++total;
            });
        }
    });
    ASSERT_TRUE(harness.runUntil([&] { return total >= runs.size(); }));
    for (auto const& count : runs)
        EXPECT_EQ(count, 1);
}

TYPED_TEST_P(DispatchQueueContract, RunsABlockThatABlockSubmits)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().async([&] { harness.queue().async([&] { record.add(1); }); });
    EXPECT_TRUE(harness.runUntil([&] { return record.size() == 1; }));
}

TYPED_TEST_P(DispatchQueueContract, NeverRunsABlockInsideTheCall)
{
    auto& harness = this->m_harness;
    // Of the thread that the block runs on: on another one it may begin before the call returns.
    thread_local bool isSubmitting = false;
    Record<bool> insides;
    auto const submit = [&] {
        isSubmitting = true;
        harness.queue().async([&] { insides.add(isSubmitting); });
        harness.queue().asyncAfter(0, [&] { insides.add(isSubmitting); });
        isSubmitting = false;
    };
    submit();
    harness.queue().async(submit);
    ASSERT_TRUE(harness.runUntil([&] { return insides.size() == 4; }));
    EXPECT_EQ(insides.all(), std::vector(4, false)) << "true is a block that ran inside the call";
}

TYPED_TEST_P(DispatchQueueContract, RunsADelayedBlockNotBeforeItsDelay)
{
    auto& harness = this->m_harness;
    constexpr platform::TimeInterval delay = 0.1;
    auto const start = harness.elapsed();
    Record<platform::TimeInterval> moments;
    harness.queue().asyncAfter(delay, [&] { moments.add(harness.elapsed()); });
    ASSERT_TRUE(harness.runUntil([&] { return moments.size() == 1; }));
    EXPECT_GE(moments.all().front() - start, delay - 1e-6);
}

TYPED_TEST_P(DispatchQueueContract, ADelayDoesNotHoldUpOtherBlocks)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().asyncAfter(3600, [&] { record.add(1); });
    harness.queue().asyncAfter(0.01, [&] { record.add(2); });
    harness.queue().async([&] { record.add(3); });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == 2; }));
    EXPECT_TRUE(record.contains(2));
    EXPECT_TRUE(record.contains(3));
}

TYPED_TEST_P(DispatchQueueContract, ANegativeDelayIsNoDelay)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().asyncAfter(-5, [&] { record.add(1); });
    EXPECT_TRUE(harness.runUntil([&] { return record.size() == 1; }));
}

TYPED_TEST_P(DispatchQueueContract, ADelayThatIsNoNumberIsNoDelay)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().asyncAfter(std::numeric_limits<double>::quiet_NaN(), [&] { record.add(1); });
    EXPECT_TRUE(harness.runUntil([&] { return record.size() == 1; }));
}

TYPED_TEST_P(DispatchQueueContract, ABlockWithAnEndlessDelayNeverRunsAndHoldsUpNoOther)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().asyncAfter(std::numeric_limits<double>::infinity(), [&] { record.add(1); });
    harness.queue().asyncAfter(1e18, [&] { record.add(2); });
    harness.queue().asyncAfter(0.01, [&] { record.add(3); });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() > 0; }));
    EXPECT_EQ(record.all(), std::vector { 3 });
}

TYPED_TEST_P(DispatchQueueContract, DestroysABlockAfterItRan)
{
    auto& harness = this->m_harness;
    auto captured = std::make_shared<int>(1);
    std::weak_ptr<int> const watched = captured;
    harness.queue().async([captured = std::move(captured)] { });
    EXPECT_TRUE(harness.runUntil([&] { return watched.expired(); }));
}

TYPED_TEST_P(DispatchQueueContract, DestroysPendingBlocksWithItself)
{
    if (!TestFixture::queueEnds)
        GTEST_SKIP() << "The system's queues never end.";
    auto& harness = this->m_harness;
    auto captured = std::make_shared<int>(1);
    std::weak_ptr<int> const watched = captured;
    std::atomic<bool> ran = false;
    harness.queue().asyncAfter(3600, [&ran, captured = std::move(captured)] { ran = true; });
    EXPECT_FALSE(watched.expired());
    this->destroyQueue();
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(ran);
}

TYPED_TEST_P(DispatchQueueContract, ABlockThatItDestroysMaySubmitAnother)
{
    if (!TestFixture::queueEnds)
        GTEST_SKIP() << "The system's queues never end.";
    struct Resubmitting {
        explicit Resubmitting(platform::DispatchQueue& destroyed, std::shared_ptr<int> held)
            : queue(destroyed)
            , captured(std::move(held))
        {
        }
        Resubmitting(Resubmitting const&) = delete;
        Resubmitting& operator=(Resubmitting const&) = delete;
        ~Resubmitting()
        {
            queue.asyncAfter(3600, [held = std::move(captured)] { });
        }
        platform::DispatchQueue& queue;
        std::shared_ptr<int> captured;
    };
    auto& harness = this->m_harness;
    auto captured = std::make_shared<int>(1);
    std::weak_ptr<int> const watched = captured;
    auto resubmitting = std::make_unique<Resubmitting>(harness.queue(), std::move(captured));
    harness.queue().asyncAfter(3600, [held = std::move(resubmitting)] { });
    this->destroyQueue();
    EXPECT_TRUE(watched.expired());
}

TYPED_TEST_P(SerialQueueContract, KeepsTheOrderOfSubmission)
{
    auto& harness = this->m_harness;
    Record<int> record;
    std::vector<int> expected;
    for (int i = 0; i < 1000; ++i) {
        harness.queue().async([&record, i] { record.add(i); });
        expected.push_back(i);
    }
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == expected.size(); }));
    EXPECT_EQ(record.all(), expected);
}

TYPED_TEST_P(SerialQueueContract, KeepsTheOrderOfBlocksThatAreDueTogether)
{
    auto& harness = this->m_harness;
    Record<int> record;
    std::vector<int> expected;
    for (int i = 0; i < 50; ++i) {
        harness.queue().asyncAfter(0.05, [&record, i] { record.add(i); });
        expected.push_back(i);
    }
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == expected.size(); }));
    EXPECT_EQ(record.all(), expected);
}

TYPED_TEST_P(SerialQueueContract, RunsTheShorterDelayFirst)
{
    auto& harness = this->m_harness;
    Record<int> record;
    harness.queue().asyncAfter(0.5, [&] { record.add(3); });
    harness.queue().asyncAfter(0.1, [&] { record.add(2); });
    harness.queue().async([&] { record.add(1); });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == 3; }));
    EXPECT_EQ(record.all(), (std::vector { 1, 2, 3 }));
}

TYPED_TEST_P(SerialQueueContract, ABlockSubmittedFromTheQueueRunsAfterTheOthers)
{
    auto& harness = this->m_harness;
    Record<int> record;
    // Submitted from the queue itself, which cannot run the first block before the second is there.
    harness.queue().async([&] {
        harness.queue().async([&] {
            record.add(1);
            harness.queue().async([&] { record.add(4); });
            harness.queue().asyncAfter(0, [&] { record.add(5); });
            record.add(2);
        });
        harness.queue().async([&] { record.add(3); });
    });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == 5; }));
    EXPECT_EQ(record.all(), (std::vector { 1, 2, 3, 4, 5 }));
}

// A loop that turns until no block is due would not let go of the thread again.
TYPED_TEST_P(SerialQueueContract, ABlockThatSubmitsItselfAgainDoesNotKeepTheLoopTurning)
{
    using Clock = std::chrono::steady_clock;
    auto& harness = this->m_harness;
    auto const patience = Clock::now() + std::chrono::seconds(2);
    std::atomic<int> runs = 0;
    std::atomic<bool> isOver = false;
    std::atomic<bool> hasCeased = false;
    std::function<void()> const block = [&] {
        ++runs;
        if (isOver || Clock::now() > patience)
            hasCeased = true;
        else
            harness.queue().async(block);
    };
    harness.queue().async(block);
    EXPECT_TRUE(harness.runUntil([&] { return runs > 0; }));
    EXPECT_FALSE(hasCeased) << "the loop turned for as long as the block submitted itself";
    isOver = true;
    EXPECT_TRUE(harness.runUntil([&] { return hasCeased.load(); }));
}

TYPED_TEST_P(SerialQueueContract, NeverRunsTwoBlocksAtOnce)
{
    auto& harness = this->m_harness;
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::atomic<int> finished = 0;
    auto const block = [&] {
        most = std::max<int>(most, ++running);
        --running;
        ++finished;
    };
    runOnThreads(4, [&](int) {
        for (int i = 0; i < 100; ++i)
            harness.queue().async(block);
    });
    ASSERT_TRUE(harness.runUntil([&] { return finished == 400; }));
    EXPECT_EQ(most, 1);
}

TYPED_TEST_P(SerialQueueContract, IsAlwaysOnTheSameThread)
{
    auto& harness = this->m_harness;
    Record<std::thread::id> threads;
    harness.queue().async([&] { threads.add(std::this_thread::get_id()); });
    runOnThreads(1, [&](int) { harness.queue().async([&] { threads.add(std::this_thread::get_id()); }); });
    ASSERT_TRUE(harness.runUntil([&] { return threads.size() == 2; }));
    EXPECT_EQ(threads.all().front(), threads.all().back());
}

REGISTER_TYPED_TEST_SUITE_P(DispatchQueueContract, RunsABlockThatOwnsWhatItCaptured,
    RunsEachBlockOnceWhicheverThreadSubmitsIt, RunsABlockThatABlockSubmits, NeverRunsABlockInsideTheCall,
    RunsADelayedBlockNotBeforeItsDelay, ADelayDoesNotHoldUpOtherBlocks, ANegativeDelayIsNoDelay,
    ADelayThatIsNoNumberIsNoDelay, ABlockWithAnEndlessDelayNeverRunsAndHoldsUpNoOther, DestroysABlockAfterItRan,
    DestroysPendingBlocksWithItself, ABlockThatItDestroysMaySubmitAnother);
REGISTER_TYPED_TEST_SUITE_P(SerialQueueContract, KeepsTheOrderOfSubmission, KeepsTheOrderOfBlocksThatAreDueTogether,
    RunsTheShorterDelayFirst, ABlockSubmittedFromTheQueueRunsAfterTheOthers,
    ABlockThatSubmitsItselfAgainDoesNotKeepTheLoopTurning, NeverRunsTwoBlocksAtOnce, IsAlwaysOnTheSameThread);

}
