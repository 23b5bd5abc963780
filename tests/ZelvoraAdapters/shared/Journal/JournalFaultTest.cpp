#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <cerrno>

namespace zelvora::tests {

using platform::Array;
using platform::Value;

class JournalFaultTest : public JournalTest {
protected:
    void fillDisk() { m_operations.failWriting("preferences", ENOSPC); }
    void freeDisk() { m_operations.failWriting("preferences", 0); }
};

TEST_F(JournalFaultTest, KeepsInMemoryWhatDoesNotFitOnTheDiskAndLogsOneLine)
{
    open();
    set("before", 1);
    auto const size = fileSize();
    fillDisk();
    set("key", "value");
    remove("before");
    for (int i = 0; i < 100; ++i)
        append("queue", i);
    EXPECT_EQ(get("key"), Value { "value" });
    EXPECT_EQ(get("before"), std::nullopt);
    EXPECT_EQ(array("queue").size(), 100U);
    EXPECT_EQ(fileSize(), size);
    ASSERT_EQ(log().size(), 1U);
    EXPECT_EQ(log()[0],
        "Preferences: cannot write " + m_path
            + ": No space left on device; changes stay in memory until a write succeeds");
}

TEST_F(JournalFaultTest, WritesPendingChangesWithTheNextChange)
{
    open();
    set("removed", 1);
    append("queue", 0);
    fillDisk();
    set("key", "value");
    remove("removed");
    append("queue", 1);
    freeDisk();
    append("queue", 2);
    restart();
    EXPECT_EQ(get("key"), Value { "value" });
    EXPECT_EQ(get("removed"), std::nullopt);
    EXPECT_EQ(get("queue"), Value(Array { 0, 1, 2 }));
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalFaultTest, WritesPendingChangesAsOneRecord)
{
    open();
    fillDisk();
    set("a", 1);
    set("b", 2);
    freeDisk();
    m_operations.forget();
    set("c", 3);
    EXPECT_EQ(m_operations.count("write preferences"), 1);
    auto const size = fileSize();
    close();
    std::filesystem::resize_file(m_path, size - 1);
    open();
    EXPECT_EQ(get("a"), std::nullopt);
    EXPECT_EQ(get("b"), std::nullopt);
    EXPECT_EQ(get("c"), std::nullopt);
}

TEST_F(JournalFaultTest, WritesOnlyTheDifferenceOfAPendingArray)
{
    open();
    for (int i = 0; i < 1'000; ++i)
        append("queue", i);
    auto const size = fileSize();
    fillDisk();
    append("queue", 1'000);
    freeDisk();
    append("queue", 1'001);
    EXPECT_LT(fileSize() - size, 50U);
}

TEST_F(JournalFaultTest, WritesPendingChangesWhenItSynchronizes)
{
    open();
    fillDisk();
    set("key", "value");
    freeDisk();
    m_store->synchronize();
    restart();
    EXPECT_EQ(get("key"), Value { "value" });
}

TEST_F(JournalFaultTest, LogsAFullDiskAgainAfterAWriteSucceeded)
{
    open();
    fillDisk();
    set("key", 1);
    freeDisk();
    set("key", 2);
    fillDisk();
    set("key", 3);
    set("key", 4);
    EXPECT_EQ(log().size(), 2U);
}

TEST_F(JournalFaultTest, TruncatesAPartlyWrittenRecord)
{
    open();
    set("before", 1);
    auto const size = fileSize();
    fillDisk();
    m_operations.writeBeforeFailing(20);
    set("key", std::string(100, 'v'));
    EXPECT_EQ(m_operations.count("truncate preferences"), 1);
    EXPECT_EQ(fileSize(), size);
    restart();
    EXPECT_EQ(get("before"), Value { 1 });
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalFaultTest, OverwritesAPartlyWrittenRecordThatCouldNotBeTruncated)
{
    open();
    set("before", 1);
    fillDisk();
    m_operations.failTruncating("preferences", EIO);
    m_operations.writeBeforeFailing(90);
    set("key", std::string(100, 'v'));
    freeDisk();
    m_operations.failTruncating("preferences", 0);
    remove("key");
    set("after", 2);
    set("other", "short");
    restart();
    EXPECT_EQ(get("before"), Value { 1 });
    EXPECT_EQ(get("after"), Value { 2 });
    EXPECT_EQ(get("other"), Value { "short" });
    EXPECT_EQ(get("key"), std::nullopt);
}

TEST_F(JournalFaultTest, CompletesAShortWrite)
{
    class ShortWrites final : public shared::FileOperations {
    public:
        ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset) override
        {
            return FileOperations::write(file, bytes, std::min<std::size_t>(count, 7), offset);
        }
    } shortWrites;
    m_options.fileOperations = &shortWrites;
    open();
    set("key", std::string(1'000, 'v'));
    append("queue", "event");
    restart();
    EXPECT_EQ(get("key"), Value(std::string(1'000, 'v')));
    EXPECT_EQ(get("queue"), Value(Array { "event" }));
    EXPECT_TRUE(log().empty());
    close();
}

TEST_F(JournalFaultTest, WorksInMemoryIfItsFileCannotBeCreatedAndRetriesWithTheNextChange)
{
    putBytes(m_directory / "blocked", "a file where the directory should be");
    m_path = m_directory / "blocked/preferences";
    open();
    ASSERT_EQ(log().size(), 1U);
    EXPECT_NE(log()[0].find("Not a directory"), std::string::npos);
    set("a", 1);
    set("b", 2);
    remove("b");
    EXPECT_EQ(get("a"), Value { 1 });
    EXPECT_EQ(log().size(), 1U);
    std::filesystem::remove(m_directory / "blocked");
    set("c", 3);
    restart();
    EXPECT_EQ(get("a"), Value { 1 });
    EXPECT_EQ(get("b"), std::nullopt);
    EXPECT_EQ(get("c"), Value { 3 });
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalFaultTest, ReadsAFileThatItCannotWriteAndWritesItWhenItCan)
{
    open();
    set("kept", "from before");
    set("queue", Array { 1 });
    set("removed", 1);
    close();
    m_operations.failOpening("preferences", EROFS);
    open();
    EXPECT_EQ(get("kept"), Value { "from before" });
    append("queue", 2);
    remove("removed");
    set("new", "value");
    EXPECT_EQ(log().size(), 1U);
    m_operations.failOpening("preferences", 0);
    remove("nothing");
    m_store->synchronize();
    restart();
    EXPECT_EQ(get("kept"), Value { "from before" });
    EXPECT_EQ(get("new"), Value { "value" });
    EXPECT_EQ(get("removed"), std::nullopt);
    EXPECT_EQ(get("queue"), Value(Array { 1, 2 }));
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalFaultTest, RemembersARemovalFromAFileThatCouldNotBeRead)
{
    open();
    set("key", 1);
    close();
    m_operations.failReading("preferences", EIO);
    open();
    remove("key");
    m_operations.failReading("preferences", 0);
    m_store->synchronize();
    restart();
    EXPECT_EQ(get("key"), std::nullopt);
}

TEST_F(JournalFaultTest, LogsAFailedSyncOnceAndRewritesTheFile)
{
    open();
    set("key", 1);
    m_operations.failSyncing("preferences", EIO);
    m_operations.failSyncing("preferences.compacting", EIO);
    m_store->synchronize();
    auto const failedSync =
        "Preferences: cannot sync " + m_path + ": Input/output error; a power cut may lose recent changes";
    EXPECT_TRUE(m_log.contains(failedSync));
    ASSERT_TRUE(m_operations.waitFor("sync preferences.compacting"));
    m_operations.failSyncing("preferences.compacting", 0);
    set("key", 2);
    m_store->synchronize();
    ASSERT_TRUE(m_operations.waitFor("rename preferences.compacting"));
    EXPECT_EQ(std::ranges::count(log(), failedSync), 1);
    m_operations.failSyncing("preferences", 0);
    restart();
    EXPECT_EQ(get("key"), Value { 2 });
}

TEST_F(JournalFaultTest, LogsAFailedSyncOfItsDirectoryOnceAndRetriesWithTheNextSync)
{
    auto const directory = m_directory.path().filename().string();
    m_operations.failSyncing(directory, EIO);
    open();
    for (int i = 0; i < 3; ++i) {
        set("key", i);
        m_store->synchronize();
    }
    EXPECT_EQ(log().size(), 1U);
    EXPECT_EQ(m_operations.count("sync " + directory), 3);
    m_operations.failSyncing(directory, 0);
    set("key", 3);
    m_store->synchronize();
    set("key", 4);
    m_store->synchronize();
    EXPECT_EQ(m_operations.count("sync " + directory), 4);
    close();
    EXPECT_EQ(m_operations.count("rename preferences.compacting"), 0);
}

}
