#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"
#include "tests/support/ChildProcess.h"

#include <algorithm>

namespace zelvora::tests {

using platform::Array;
using platform::Value;
using shared::JournalHeader;

// What happens to the file of a running journal.
class JournalLossTest : public JournalTest {
protected:
    JournalLossTest()
    {
        m_path = m_directory / "data/preferences";
        open();
        set("key", "value");
        set("queue", Array { 1, 2 });
        waitForEndOfTurn();
    }

    // Another user of the file locks it, which it can only once the turn has ended.
    void waitForEndOfTurn() { make().reset(); }

    // Makes a change and expects all the values in a new file at the path.
    void expectAnotherFileWithEverything(std::string const& event)
    {
        append("queue", 3);
        m_store->synchronize();
        close();
        m_store = make();
        EXPECT_EQ(get("key"), Value { "value" });
        EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3 }));
        EXPECT_EQ(log(), std::vector<std::string> { "Preferences: " + m_path + " " + event });
    }

    std::string const m_rewritten = "; all values were written again";
    std::string const m_found = "; what was found is now " + (m_directory / "data/preferences.found").string();
};

TEST_F(JournalLossTest, MakesItsDirectoryAgain)
{
    std::filesystem::remove_all(m_directory / "data");
    expectAnotherFileWithEverything("was removed while in use" + m_rewritten);
}

TEST_F(JournalLossTest, WritesARemovedFileAgain)
{
    std::filesystem::remove(m_path);
    expectAnotherFileWithEverything("was removed while in use" + m_rewritten);
}

TEST_F(JournalLossTest, WritesARenamedFileAgain)
{
    std::filesystem::rename(m_path, m_directory / "elsewhere");
    auto const before = bytesOf(m_directory / "elsewhere");
    expectAnotherFileWithEverything("was removed while in use" + m_rewritten);
    EXPECT_EQ(bytesOf(m_directory / "elsewhere"), before);
}

TEST_F(JournalLossTest, WritesAFileAgainThatWasTruncatedToNothing)
{
    std::filesystem::resize_file(m_path, 0);
    expectAnotherFileWithEverything("was truncated while in use" + m_rewritten);
}

TEST_F(JournalLossTest, ReadsOnAfterTheFileWasTruncated)
{
    std::filesystem::resize_file(m_path, 0);
    EXPECT_EQ(get("key"), Value { "value" });
    EXPECT_EQ(get("queue"), Value(Array { 1, 2 }));
    EXPECT_EQ(log().size(), 1U);
    restart();
    EXPECT_EQ(get("key"), Value { "value" });
}

TEST_F(JournalLossTest, KeepsTheRestOfATruncatedFile)
{
    std::filesystem::resize_file(m_path, 40);
    auto const rest = bytesOf(m_path);
    expectAnotherFileWithEverything("was truncated while in use" + m_found + m_rewritten);
    EXPECT_EQ(bytesOf(m_path + ".found"), rest);
}

TEST_F(JournalLossTest, NoticesATruncationDuringATurnWhenItSynchronizes)
{
    close();
    m_options.turnLength = std::chrono::hours(1);
    open();
    std::filesystem::resize_file(m_path, 0);
    expectAnotherFileWithEverything("was overwritten while in use" + m_found + m_rewritten);
}

TEST_F(JournalLossTest, KeepsWhatReplacedTheFile)
{
    auto const other = m_directory.write("other", "[written]\nby = somebody else, at some length\n");
    std::filesystem::rename(other, m_path);
    expectAnotherFileWithEverything("was replaced while in use" + m_found + m_rewritten);
    EXPECT_TRUE(bytesOf(m_path + ".found").starts_with("[written]"));
}

TEST_F(JournalLossTest, KeepsAnOlderCopyOfTheFileThatReplacedIt)
{
    auto const copy = m_directory.write("copy", bytesOf(m_path).substr(0, JournalHeader::size));
    std::filesystem::rename(copy, m_path);
    expectAnotherFileWithEverything("was replaced while in use" + m_found + m_rewritten);
    EXPECT_EQ(sizeOf(m_path + ".found"), JournalHeader::size);
}

TEST_F(JournalLossTest, KeepsWhatTheFileWasOverwrittenWith)
{
    auto const foreign = std::string(1'000, 'x');
    putBytes(m_path, foreign);
    expectAnotherFileWithEverything("was overwritten while in use" + m_found + m_rewritten);
    EXPECT_EQ(bytesOf(m_path + ".found"), foreign);
}

TEST_F(JournalLossTest, KeepsALinkThatReplacedTheFileAndDoesNotFollowIt)
{
    auto const target = m_directory.write("target", "");
    std::filesystem::remove(m_path);
    std::filesystem::create_symlink(target, m_path);
    expectAnotherFileWithEverything("was replaced while in use" + m_found + m_rewritten);
    EXPECT_EQ(bytesOf(target), "");
    EXPECT_TRUE(std::filesystem::is_symlink(m_path + ".found"));
}

TEST_F(JournalLossTest, LeavesAFileOfANewerFormatThatReplacedItUnchanged)
{
    auto newer = JournalHeader::make(JournalHeader::FirstRecord::Change).encoded();
    newer[8] = '\x02';
    newer[12] = '\xfd';
    std::filesystem::rename(m_directory.write("newer", newer), m_path);
    append("queue", 3);
    m_store->synchronize();
    append("queue", 4);
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3, 4 }));
    close();
    EXPECT_EQ(bytesOf(m_path), newer);
    ASSERT_EQ(log().size(), 1U);
    EXPECT_NE(log()[0].find("newer version"), std::string::npos);
}

TEST_F(JournalLossTest, TwoProcessesGoOnWithOneNewFile)
{
    ChildProcess other { { ZELVORA_JOURNAL_PROCESS, "serve", m_path } };
    EXPECT_EQ(other.ask("append theirs 1"), "done");
    std::filesystem::remove_all(m_directory / "data");
    append("queue", 3);
    EXPECT_EQ(other.ask("append theirs 2"), "done");
    m_store->synchronize();
    EXPECT_EQ(other.ask("append theirs 3"), "done");
    append("queue", 4);
    EXPECT_EQ(other.ask("append theirs 4"), "done");
    other.kill();
    restart();
    EXPECT_EQ(get("key"), Value { "value" });
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3, 4 }));
    EXPECT_EQ(get("theirs"), Value(Array { "1", "2", "3", "4" }));
}

TEST_F(JournalLossTest, GoesOnWithTheFileOfAProcessThatStartedMeanwhile)
{
    std::filesystem::remove_all(m_directory / "data");
    ChildProcess other { { ZELVORA_JOURNAL_PROCESS, "serve", m_path } };
    EXPECT_EQ(other.ask("set theirs 1"), "done");
    m_store->synchronize();
    for (int i = 3; i <= 5; ++i) {
        append("queue", i);
        EXPECT_EQ(other.ask("set theirs " + std::to_string(i)), "done");
    }
    EXPECT_EQ(other.ask("get key"), debugDescription(Value { "value" }));
    other.kill();
    restart();
    EXPECT_EQ(get("theirs"), Value { "5" });
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3, 4, 5 }));
    auto const files = std::filesystem::directory_iterator(m_directory / "data");
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(JournalLossTest, TheSuccessorsOfAFileAreRecognized)
{
    auto const first = JournalHeader::make(JournalHeader::FirstRecord::Change);
    auto const second = JournalHeader::makeSuccessor(first, JournalHeader::FirstRecord::Snapshot);
    auto const third = JournalHeader::makeSuccessor(second, JournalHeader::FirstRecord::Change);
    EXPECT_TRUE(second.isSuccessorOf(first));
    EXPECT_TRUE(third.isSuccessorOf(first));
    EXPECT_FALSE(first.isSuccessorOf(first));
    EXPECT_FALSE(first.isSuccessorOf(second));
    EXPECT_FALSE(JournalHeader::make(JournalHeader::FirstRecord::Change).isSuccessorOf(first));
    auto last = first;
    last.identity |= 0xFFFFFFFFU;
    EXPECT_TRUE(JournalHeader::makeSuccessor(last, JournalHeader::FirstRecord::Change).isSuccessorOf(last));
}

}
