#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

namespace zelvora::tests {

using platform::Array;
using platform::Value;

class JournalCompactionTest : public JournalTest {
protected:
    static constexpr auto compacting = "preferences.compacting";
    static constexpr auto renamed = "rename preferences.compacting";

    JournalCompactionTest() { m_options.minimumCompactionSize = 4'096; }

    // Enough to exceed the minimum size for a compaction.
    void makeGarbage()
    {
        for (int i = 0; i < 60; ++i)
            set("garbage", std::string(100, static_cast<char>('0' + i)));
    }
    // After an attempt that failed, the next one waits for more garbage than there was when it failed, which another
    // thread decides. False if there is none within half a minute.
    bool makeGarbageUntilRenamed()
    {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (m_operations.count(renamed) == 0 && std::chrono::steady_clock::now() < deadline)
            makeGarbage();
        return m_operations.count(renamed) > 0;
    }
};

TEST_F(JournalCompactionTest, ShrinksAFileThatIsMostlyGarbage)
{
    open();
    set("kept", "value");
    set("queue", Array { 1, 2, 3 });
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    EXPECT_EQ(get("kept"), Value { "value" });
    close();
    EXPECT_LT(fileSize(), 4'096U);
    open();
    EXPECT_EQ(get("kept"), Value { "value" });
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3 }));
    EXPECT_EQ(get("garbage"), Value(std::string(100, static_cast<char>('0' + 59))));
    EXPECT_TRUE(log().empty());
    EXPECT_FALSE(std::filesystem::exists(m_path + ".compacting"));
}

TEST_F(JournalCompactionTest, LeavesAFileAloneThatIsMostlyLive)
{
    open();
    for (int i = 0; i < 200; ++i)
        set("key" + std::to_string(i), std::string(100, 'v'));
    makeGarbage();
    close();
    EXPECT_EQ(m_operations.count(renamed), 0);
}

TEST_F(JournalCompactionTest, LeavesASmallFileAlone)
{
    m_options.minimumCompactionSize = 10'000;
    open();
    makeGarbage();
    close();
    EXPECT_EQ(m_operations.count(renamed), 0);
}

TEST_F(JournalCompactionTest, ShrinksAFileWhoseQueueWasDropped)
{
    open();
    for (int i = 0; i < 200; ++i)
        append("queue", std::string(100, 'e'));
    EXPECT_EQ(m_operations.count(renamed), 0);
    set("queue", array("queue").droppingFirst(180));
    ASSERT_TRUE(m_operations.waitFor(renamed));
    restart();
    EXPECT_EQ(array("queue").size(), 20U);
    EXPECT_LT(fileSize(), 4'096U);
}

TEST_F(JournalCompactionTest, RunsOnAnotherThreadThanTheCallers)
{
    std::atomic<bool> isElsewhere = false;
    m_operations.atSyncOf(
        compacting, [&, caller = std::this_thread::get_id()] { isElsewhere = std::this_thread::get_id() != caller; });
    open();
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    EXPECT_TRUE(isElsewhere);
}

TEST_F(JournalCompactionTest, SyncsTheNewFileBeforeTheRenameAndTheDirectoryAfterIt)
{
    m_options.syncDelay = std::chrono::milliseconds(1);
    auto const directory = "sync " + m_directory.path().filename().string();
    open();
    set("key", 1);
    ASSERT_TRUE(m_operations.waitFor(directory));
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    ASSERT_TRUE(m_operations.waitFor(directory, 2));
    auto const calls = m_operations.calls();
    auto const rename = std::ranges::find(calls, renamed);
    auto const lastWrite = std::find(std::reverse_iterator(rename), calls.rend(), "write preferences.compacting");
    auto const sync = std::find(std::reverse_iterator(rename), calls.rend(), "sync preferences.compacting");
    ASSERT_NE(sync, calls.rend());
    EXPECT_LT(sync, lastWrite);
    EXPECT_NE(std::find(rename, calls.end(), directory), calls.end());
}

TEST_F(JournalCompactionTest, KeepsChangesMadeDuringCompaction)
{
    std::atomic<bool> isFirst = true;
    m_operations.atSyncOf(compacting, [&] {
        if (!isFirst.exchange(false))
            return;
        // The snapshot has been taken. None of these changes may block.
        set("kept", "new");
        set("added", 1);
        remove("removed");
        append("queue", 4);
        set("queue", array("queue").droppingFirst(2));
    });
    open();
    set("kept", "old");
    set("removed", 1);
    set("queue", Array { 1, 2, 3 });
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    // The changes copied after the snapshot are synced as well before the rename.
    EXPECT_EQ(m_operations.count("sync preferences.compacting"), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(isFirst);
        EXPECT_EQ(get("kept"), Value { "new" });
        EXPECT_EQ(get("added"), Value { 1 });
        EXPECT_EQ(get("removed"), std::nullopt);
        EXPECT_EQ(get("queue"), Value(Array { 3, 4 }));
        restart();
    }
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalCompactionTest, ContinuesToWriteArraysAsDifferences)
{
    open();
    for (int i = 0; i < 100; ++i)
        append("queue", std::string(20, 'e'));
    // All at once, so that there is nothing left for a second compaction.
    set("garbage", std::string(5'000, 'g'));
    remove("garbage");
    ASSERT_TRUE(m_operations.waitFor(renamed));
    set("key", 1);
    auto const size = fileSize();
    append("queue", 1);
    EXPECT_LT(fileSize() - size, 40U);
    restart();
    EXPECT_EQ(array("queue").size(), 101U);
}

TEST_F(JournalCompactionTest, RunsAgainWhenThereIsGarbageAgain)
{
    open();
    for (int round = 0; round < 5; ++round) {
        auto const times = m_operations.count(renamed);
        makeGarbage();
        ASSERT_TRUE(m_operations.waitFor(renamed, times + 1));
    }
    // Closing may cancel the last one.
    close();
    EXPECT_LT(fileSize(), 20'000U);
}

TEST_F(JournalCompactionTest, CompactsAnEmptyStore)
{
    open();
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    auto const times = m_operations.count(renamed);
    set("garbage", std::string(5'000, 'g'));
    remove("garbage");
    ASSERT_TRUE(m_operations.waitFor(renamed, times + 1));
    restart();
    EXPECT_EQ(get("garbage"), std::nullopt);
    set("key", 1);
    restart();
    EXPECT_EQ(get("key"), Value { 1 });
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalCompactionTest, KeepsTheOldFileIfThereIsNoSpaceForTheNewOne)
{
    m_operations.failWriting(compacting, ENOSPC);
    open();
    set("kept", "value");
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor("remove preferences.compacting"));
    set("after", 1);
    makeGarbage();
    close();
    ASSERT_EQ(log().size(), 1U);
    EXPECT_NE(log()[0].find("cannot write " + m_path + ".compacting: No space left on device"), std::string::npos);
    open();
    EXPECT_EQ(get("kept"), Value { "value" });
    EXPECT_EQ(get("after"), Value { 1 });
    m_operations.failWriting(compacting, 0);
    EXPECT_TRUE(makeGarbageUntilRenamed());
}

TEST_F(JournalCompactionTest, KeepsTheOldFileIfTheNewOneCannotBeRenamed)
{
    m_operations.failRenaming(compacting, EACCES);
    open();
    set("kept", "value");
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor("remove preferences.compacting"));
    set("after", 1);
    close();
    EXPECT_EQ(log().size(), 1U);
    m_operations.failRenaming(compacting, 0);
    open();
    EXPECT_EQ(get("kept"), Value { "value" });
    EXPECT_EQ(get("after"), Value { 1 });
}

TEST_F(JournalCompactionTest, RemovesTheFileThatAKilledCompactionLeft)
{
    putBytes(m_path + ".compacting", "half a file");
    open();
    EXPECT_FALSE(std::filesystem::exists(m_path + ".compacting"));
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalCompactionTest, NeverWritesThroughALink)
{
    auto const target = m_directory.write("target", "kept");
    std::filesystem::create_symlink(target, m_path + ".compacting");
    auto const header = shared::JournalHeader::make(shared::JournalHeader::FirstRecord::Change);
    EXPECT_FALSE(shared::JournalFile::make(m_operations, m_path + ".compacting", header));
    open();
    makeGarbage();
    EXPECT_TRUE(m_operations.waitFor(renamed));
    close();
    EXPECT_EQ(bytesOf(target), "kept");
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(m_path)));
}

TEST_F(JournalCompactionTest, IsCancelledWhenTheStoreCloses)
{
    std::atomic<bool> isReached = false;
    std::atomic<bool> mayGoOn = false;
    m_operations.atSyncOf(compacting, [&] {
        isReached = true;
        isReached.notify_all();
        mayGoOn.wait(false);
    });
    open();
    set("kept", "value");
    makeGarbage();
    isReached.wait(false);
    std::thread closing { [&] { close(); } };
    mayGoOn = true;
    mayGoOn.notify_all();
    closing.join();
    EXPECT_FALSE(std::filesystem::exists(m_path + ".compacting"));
    open();
    EXPECT_EQ(get("kept"), Value { "value" });
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalCompactionTest, LetsAnotherUserOfTheFileContinue)
{
    open();
    auto const other = make();
    other->setObject(Value { "theirs" }, "theirs");
    other->setObject(Value(Array { 1, 2 }), "queue");
    makeGarbage();
    ASSERT_TRUE(m_operations.waitFor(renamed));
    set("ours", "after");
    EXPECT_EQ(other->object("ours"), Value { "after" });
    EXPECT_EQ(other->object("queue"), Value(Array { 1, 2 }));
    other->setObject(Value(other->object("queue")->array()->appending(3)), "queue");
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3 }));
    restart();
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3 }));
    EXPECT_EQ(get("theirs"), Value { "theirs" });
    EXPECT_TRUE(log().empty());
}

}
