#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalCompaction.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <cerrno>

namespace zelvora::tests {

using platform::Array;
using platform::Value;
using shared::JournalHeader;

class JournalRecoveryTest : public JournalTest {
protected:
    // A file of the next format.
    static std::string newerFile()
    {
        auto bytes = JournalHeader::make(JournalHeader::FirstRecord::Change).encoded();
        shared::putFixed(bytes.data() + 8, std::uint32_t { 2 });
        shared::putFixed(bytes.data() + 12, ~std::uint32_t { 2 });
        return bytes + "whatever that format has";
    }
};

TEST_F(JournalRecoveryTest, StartsANewJournalInAnEmptyFile)
{
    putBytes(m_path, "");
    open();
    set("key", 1);
    restart();
    EXPECT_EQ(get("key"), Value { 1 });
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalRecoveryTest, StartsANewJournalIfTheHeaderIsIncomplete)
{
    open();
    auto const header = bytesOf(m_path).substr(0, JournalHeader::size);
    close();
    for (std::size_t size = 1; size < header.size(); ++size) {
        putBytes(m_path, header.substr(0, size));
        open();
        EXPECT_EQ(log().size(), size);
        set("key", static_cast<double>(size));
        restart();
        EXPECT_EQ(get("key"), Value { size });
        close();
    }
    EXPECT_EQ(log().size(), header.size() - 1);
}

TEST_F(JournalRecoveryTest, CutsOffAHalfWrittenRecordAndLogsOneLine)
{
    auto const offsets = writeThreeRecords();
    truncateTo(offsets[3] - 1);
    open();
    EXPECT_EQ(fileSize(), offsets[2]);
    EXPECT_EQ(get("two"), Value { "two" });
    EXPECT_EQ(get("three"), std::nullopt);
    ASSERT_EQ(log().size(), 1U);
    EXPECT_EQ(log()[0],
        "Preferences: " + m_path + " is damaged from byte " + std::to_string(offsets[2]) + "; its last "
            + std::to_string(offsets[3] - 1 - offsets[2]) + " bytes were moved to " + m_path + ".cut");
    set("four", 4);
    restart();
    EXPECT_EQ(get("four"), Value { 4 });
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalRecoveryTest, RejectsARecordFromAnotherPlaceInTheFile)
{
    auto const offsets = writeThreeRecords();
    auto const bytes = bytesOf(m_path);
    putBytes(m_path, bytes + bytes.substr(offsets[0], offsets[1] - offsets[0]));
    open();
    EXPECT_EQ(fileSize(), offsets[3]);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalRecoveryTest, RejectsARecordOfAnotherFile)
{
    auto const offsets = writeThreeRecords();
    auto const records = bytesOf(m_path).substr(offsets[0]);
    std::filesystem::remove(m_path);
    open();
    close();
    putBytes(m_path, bytesOf(m_path) + records);
    open();
    EXPECT_EQ(get("one"), std::nullopt);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalRecoveryTest, RemovesAnIntactRecordThatMakesNoSense)
{
    std::string const noSuchKind = "\x09\x01k";
    std::string const extendsANumber = "\x03\x03one\x01\x00";
    std::string const dropsTooManyElements = "\x03\x04list\x03\x00";
    std::string const isIncomplete = "\x02\x03one\x01";
    for (auto const& payload : { noSuchKind, extendsANumber, dropsTooManyElements, isIncomplete }) {
        std::filesystem::remove(m_path);
        open();
        set("one", 1);
        set("list", Array { 1, 2 });
        close();
        auto const size = fileSize();
        {
            auto opened = shared::JournalFile::open(m_operations, m_path, std::chrono::seconds(1));
            ASSERT_TRUE(opened);
            std::string record;
            shared::beginRecord(record);
            record += payload;
            ASSERT_TRUE(opened->file->append(record));
        }
        auto const linesBefore = log().size();
        open();
        EXPECT_EQ(log().size(), linesBefore + 1);
        EXPECT_EQ(fileSize(), size);
        EXPECT_EQ(get("one"), Value { 1 });
        EXPECT_EQ(get("list"), Value(Array { 1, 2 }));
        close();
    }
}

TEST_F(JournalRecoveryTest, LeavesAFileOfANewerFormatUnchangedAndWorksInMemory)
{
    auto const newer = newerFile();
    putBytes(m_path, newer);
    open();
    ASSERT_EQ(log().size(), 1U);
    EXPECT_NE(log()[0].find("newer version"), std::string::npos);
    set("key", 1);
    append("list", 2);
    m_store->synchronize();
    EXPECT_EQ(get("key"), Value { 1 });
    EXPECT_EQ(get("list"), Value(Array { 2 }));
    remove("key");
    EXPECT_EQ(get("key"), std::nullopt);
    close();
    EXPECT_EQ(bytesOf(m_path), newer);
    EXPECT_FALSE(std::filesystem::exists(m_path + ".damaged"));
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalRecoveryTest, RenamesAFileThatIsNotAJournal)
{
    std::string const foreign = "[preferences]\nwritten = by somebody else, at some length\n";
    putBytes(m_path, foreign);
    open();
    ASSERT_EQ(log().size(), 1U);
    EXPECT_NE(log()[0].find(m_path + ".damaged"), std::string::npos);
    EXPECT_EQ(bytesOf(m_path + ".damaged"), foreign);
    set("key", 1);
    restart();
    EXPECT_EQ(get("key"), Value { 1 });
    close();

    putBytes(m_path, "short");
    open();
    EXPECT_EQ(bytesOf(m_path + ".damaged"), foreign);
    EXPECT_EQ(bytesOf(m_path + ".damaged-2"), "short");
    EXPECT_EQ(log().size(), 2U);
}

TEST_F(JournalRecoveryTest, RenamesAFileWhoseHeaderIsDamaged)
{
    writeThreeRecords();
    auto const whole = bytesOf(m_path);
    for (std::size_t offset = 0; offset < JournalHeader::size; ++offset) {
        auto bytes = whole;
        bytes[offset] ^= 4;
        putBytes(m_path, bytes);
        open();
        EXPECT_EQ(get("one"), std::nullopt);
        auto const name = offset == 0 ? m_path + ".damaged" : m_path + ".damaged-" + std::to_string(offset + 1);
        EXPECT_EQ(bytesOf(name), bytes) << offset;
        close();
    }
}

TEST_F(JournalRecoveryTest, RenamesAFileWhoseSnapshotIsDamaged)
{
    m_options.minimumCompactionSize = 512;
    open();
    for (int i = 0; i < 20; ++i)
        set("key", std::string(60, static_cast<char>('a' + i)));
    ASSERT_TRUE(m_operations.waitFor("rename preferences.compacting"));
    close();
    auto bytes = bytesOf(m_path);
    bytes[JournalHeader::size + 30] ^= 1;
    putBytes(m_path, bytes);
    open();
    EXPECT_EQ(get("key"), std::nullopt);
    EXPECT_EQ(bytesOf(m_path + ".damaged"), bytes);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournalRecoveryTest, DoesNotTruncateAFileThatCannotBeRead)
{
    writeThreeRecords();
    std::size_t launches = 0;
    for (auto const readable : { std::size_t { 0 }, JournalHeader::size }) {
        auto const bytes = bytesOf(m_path);
        m_operations.failReading("preferences", EIO);
        m_operations.readBeforeFailing(static_cast<::off_t>(readable));
        open();
        EXPECT_EQ(log().size(), ++launches);
        set("four", 4);
        EXPECT_EQ(get("four"), Value { 4 });
        EXPECT_EQ(bytesOf(m_path), bytes);
        m_operations.failReading("preferences", 0);
        set("five", launches);
        EXPECT_EQ(get("one"), Value { "one" });
        restart();
        EXPECT_EQ(get("one"), Value { "one" });
        EXPECT_EQ(get("four"), Value { 4 });
        EXPECT_EQ(get("five"), Value { launches });
        EXPECT_EQ(log().size(), launches);
        close();
    }
}

}
