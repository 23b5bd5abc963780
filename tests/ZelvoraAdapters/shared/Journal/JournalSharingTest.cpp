#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"
#include "tests/support/ChildProcess.h"

#include <signal.h> // NOLINT(*-deprecated-headers): SIGCONT
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace zelvora::tests {

using platform::Array;
using platform::Value;

class JournalSharingTest : public JournalTest {
protected:
    [[nodiscard]] ChildProcess startOther() const
    {
        return ChildProcess { { ZELVORA_JOURNAL_PROCESS, "serve", m_path } };
    }
};

TEST_F(JournalSharingTest, TwoProcessesThatAlternateSeeEachOthersWrites)
{
    open();
    auto other = startOther();
    for (int i = 0; i < 100; ++i) {
        auto const number = std::to_string(i);
        set("ours", number);
        append("queue", "ours" + number);
        EXPECT_EQ(other.ask("get ours"), debugDescription(Value { number }));
        EXPECT_EQ(other.ask("set theirs " + number), "done");
        EXPECT_EQ(other.ask("append queue theirs" + number), "done");
        EXPECT_EQ(get("theirs"), Value { number });
        if (i % 10 == 9) {
            EXPECT_EQ(other.ask("drop queue 15"), "done");
            EXPECT_EQ(other.ask("remove ours"), "done");
            EXPECT_EQ(get("ours"), std::nullopt);
        }
    }
    other.kill();
    auto const queue = array("queue");
    ASSERT_EQ(queue.size(), 50U);
    EXPECT_EQ(queue.at(0), Value { "ours75" });
    EXPECT_EQ(queue.at(49), Value { "theirs99" });
    restart();
    EXPECT_EQ(array("queue"), queue);
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalSharingTest, AnArrayThatAnotherProcessExtendedIsExtendedByADifference)
{
    open();
    for (int i = 0; i < 500; ++i)
        append("queue", i);
    auto other = startOther();
    EXPECT_EQ(other.ask("append queue theirs"), "done");
    auto const size = fileSize();
    append("queue", "ours");
    EXPECT_LT(fileSize() - size, 40U);
    EXPECT_EQ(array("queue").size(), 502U);
}

TEST_F(JournalSharingTest, AProcessKilledWithTheLockBlocksNobodyAndItsHalfRecordIsRemoved)
{
    open();
    set("ours", 1);
    auto bystander = startOther();
    EXPECT_EQ(bystander.ask("set theirs 2"), "done");
    auto victim = startOther();
    EXPECT_EQ(victim.ask("die-in-next-write"), "done");
    auto const size = fileSize();
    EXPECT_EQ(victim.ask("set lost something-long-enough-to-be-halved"), "");
    EXPECT_TRUE(WIFSIGNALED(victim.waitForChange()));
    EXPECT_GT(fileSize(), size);

    append("queue", "ours");
    EXPECT_EQ(log().size(), 1U);
    EXPECT_EQ(bystander.ask("append queue theirs"), "done");
    EXPECT_EQ(bystander.ask("get lost"), "nil");
    EXPECT_EQ(get("theirs"), Value { "2" });
    EXPECT_EQ(get("queue"), Value(Array { "ours", "theirs" }));
    bystander.kill();
    restart();
    EXPECT_EQ(get("queue"), Value(Array { "ours", "theirs" }));
    EXPECT_EQ(get("lost"), std::nullopt);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalSharingTest, WhatAProcessWroteBeforeItWasKilledWithTheLockIsKept)
{
    open();
    set("ours", 1);
    auto victim = startOther();
    EXPECT_EQ(victim.ask("die-after-next-write"), "done");
    EXPECT_EQ(victim.ask("set theirs value"), "");
    EXPECT_TRUE(WIFSIGNALED(victim.waitForChange()));
    set("ours", 2);
    EXPECT_EQ(get("theirs"), Value { "value" });
    restart();
    EXPECT_EQ(get("theirs"), Value { "value" });
    EXPECT_EQ(get("ours"), Value { 2 });
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalSharingTest, AProcessStoppedWithTheLockDelaysOneChangeAndThenHardlyAny)
{
    m_options.lockTimeout = std::chrono::milliseconds(50);
    open();
    auto other = startOther();
    EXPECT_EQ(other.ask("stop-in-next-write"), "done");
    other.send("set theirs value");
    ASSERT_TRUE(WIFSTOPPED(other.waitForChange()));

    set("ours", 1);
    append("queue", 1);
    EXPECT_EQ(get("ours"), Value { 1 });
    EXPECT_GE(log().size(), 1U);
    EXPECT_LE(log().size(), 2U);

    other.signal(SIGCONT);
    EXPECT_EQ(other.readLine(), "done");
    // After a timeout, the journal does not wait for the lock each time.
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!get("theirs") && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    EXPECT_EQ(get("theirs"), Value { "value" });
    append("queue", 2);
    EXPECT_EQ(other.ask("get ours"), debugDescription(Value { 1 }));
    EXPECT_EQ(get("queue"), Value(Array { 1, 2 }));
}

TEST_F(JournalSharingTest, AProcessThatTruncatesEverythingInTheDirectoryDoesNoHarm)
{
    open();
    set("key", 1);
    for (auto const& entry : std::filesystem::directory_iterator(m_directory.path()))
        std::filesystem::resize_file(entry.path(), 0);
    EXPECT_EQ(get("key"), Value { 1 });
    set("other", 2);
    m_store->synchronize();
    restart();
    EXPECT_EQ(get("key"), Value { 1 });
    EXPECT_EQ(get("other"), Value { 2 });
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalSharingTest, OnlyOneJournalWritesANewFileAtATime)
{
    auto const make = [&] {
        auto const header = shared::JournalHeader::make(shared::JournalHeader::FirstRecord::Change);
        return shared::JournalFile::make(m_operations, m_path + ".compacting", header);
    };
    auto one = make();
    ASSERT_TRUE(one);
    auto const two = make();
    ASSERT_FALSE(two);
    EXPECT_EQ(two.error().number, EAGAIN);
    one->reset();
    EXPECT_TRUE(make());
}

TEST_F(JournalSharingTest, SeveralStoresOfOneProcessThatCompactLoseNothing)
{
    m_options.minimumCompactionSize = 4'096;
    constexpr int perThread = 300;
    std::vector<std::thread> threads;
    for (int number = 0; number < 3; ++number) {
        threads.emplace_back([this, key = "key" + std::to_string(number)] {
            auto const store = make();
            for (int i = 0; i < perThread; ++i) {
                auto const stored = store->object(key + "queue");
                store->setObject(Value((stored ? *stored->array() : Array {}).appending(i)), key + "queue");
                store->setObject(Value(std::string(100, static_cast<char>('a' + i % 26))), key);
                EXPECT_EQ(store->object(key + "queue")->array()->size(), static_cast<std::size_t>(i + 1));
            }
            EXPECT_TRUE(m_operations.waitFor("rename preferences.compacting"));
        });
    }
    for (auto& thread : threads)
        thread.join();
    open();
    for (int number = 0; number < 3; ++number)
        EXPECT_EQ(array("key" + std::to_string(number) + "queue").size(), std::size_t { perThread });
    EXPECT_TRUE(log().empty());
}

}
