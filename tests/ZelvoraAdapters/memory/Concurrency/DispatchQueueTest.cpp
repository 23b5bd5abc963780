#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"

#include "ZelvoraAdapters/memory/Foundation/Clock.h"
#include "ZelvoraAdapters/memory/Platform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

class QueuesTest : public ::testing::Test {
protected:
    platform::DispatchQueue::Work note(std::string name)
    {
        return [this, name] { ran.push_back(name); };
    }

    memory::Clock clock;
    memory::DispatchQueue queue { clock };
    std::vector<std::string> ran;
};

}

TEST_F(QueuesTest, ABlockRunsOnlyWhenTheQueueRuns)
{
    queue.async(note("first"));
    queue.async(note("second"));
    EXPECT_EQ(queue.pendingCount(), 2u);
    EXPECT_TRUE(ran.empty());

    EXPECT_TRUE(queue.runOne());
    EXPECT_EQ(ran, std::vector<std::string> { "first" });
    EXPECT_EQ(queue.runAll(), 1u);
    EXPECT_FALSE(queue.runOne());
    EXPECT_EQ(ran, (std::vector<std::string> { "first", "second" }));
}

TEST_F(QueuesTest, RunAllAlsoRunsWhatBlocksSubmit)
{
    queue.async([this] {
        queue.async(note("inner"));
        EXPECT_TRUE(ran.empty());
    });
    EXPECT_EQ(queue.runAll(), 2u);
    EXPECT_EQ(ran, std::vector<std::string> { "inner" });
}

TEST_F(QueuesTest, ADelayedBlockBecomesDueWhenTheClockIsAdvanced)
{
    queue.asyncAfter(0.3, note("delayed"));
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.delayedCount(), 1u);
    clock.advance(0.1);
    clock.advance(0.1);
    EXPECT_EQ(queue.runAll(), 0u);
    clock.advance(0.1);
    EXPECT_EQ(queue.delayedCount(), 0u);
    EXPECT_EQ(queue.runAll(), 1u);
}

TEST_F(QueuesTest, DelayedBlocksRunInTheOrderInWhichTheyBecomeDue)
{
    queue.asyncAfter(2, note("2"));
    queue.asyncAfter(1, note("1"));
    queue.asyncAfter(1, note("1 again"));
    clock.advance(5);
    queue.async(note("now"));
    queue.runAll();
    EXPECT_EQ(ran, (std::vector<std::string> { "1", "1 again", "2", "now" }));
}

TEST_F(QueuesTest, SettingTheWallClockLetsNoTimePass)
{
    queue.asyncAfter(1, note("delayed"));
    clock.set({ 5'000'000'000 });
    EXPECT_EQ(clock.now(), platform::Date { 5'000'000'000 });
    EXPECT_EQ(queue.runAll(), 0u);
    clock.advance(1);
    EXPECT_EQ(clock.now(), platform::Date { 5'000'000'001 });
    EXPECT_EQ(queue.runAll(), 1u);
}

TEST_F(QueuesTest, ABlockThatIsNeverRunIsDestroyedWithTheQueue)
{
    auto const held = std::make_shared<int>();
    {
        memory::DispatchQueue passing(clock);
        passing.async([held] { });
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(QueuesTest, ARunawayLoopStopsTheProcess)
{
    std::function<void()> const submit = [&] { queue.async(submit); };
    submit();
    EXPECT_DEATH(queue.runAll(), "Fatal error: a queue does not come to rest");
}

TEST(PlatformQueuesTest, RunUntilIdleRunsEveryQueueUntilNothingIsDue)
{
    memory::Platform platform;
    std::string ran;
    platform.urlSession().loaderQueue().async([&] {
        ran += 'l';
        platform.globalQueue().async([&] {
            ran += 'g';
            platform.mainQueue().async([&] { ran += 'm'; });
        });
    });
    platform.runUntilIdle();
    EXPECT_EQ(ran, "lgm");
}

TEST(PlatformQueuesTest, TwoQueuesThatKeepEachOtherBusyStopTheProcess)
{
    memory::Platform platform;
    std::function<void()> main;
    std::function<void()> const global = [&] { platform.mainQueue().async(main); };
    main = [&] { platform.globalQueue().async(global); };
    main();
    EXPECT_DEATH(platform.runUntilIdle(), "the queues do not come to rest");
}

}
