#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace zelvora::tests {

using platform::Value;

// Damaged and foreign files that a journal finds at its path.
class JournalDamageTest : public JournalTest { };

TEST_F(JournalDamageTest, MovesEverythingFromTheFirstInvalidRecordToAnotherFileAndNamesIt)
{
    auto const offsets = writeThreeRecords();
    auto const whole = bytesOf(m_path);
    std::size_t times = 0;
    for (auto const* const ending : { ".cut", ".cut-2" }) {
        auto bytes = whole;
        bytes[offsets[1] + 12] ^= 1;
        putBytes(m_path, bytes);
        open();
        EXPECT_EQ(fileSize(), offsets[1]);
        EXPECT_EQ(get("one"), Value { "one" });
        EXPECT_EQ(get("two"), std::nullopt);
        EXPECT_EQ(get("three"), std::nullopt);
        EXPECT_EQ(bytesOf(m_path + ending), bytes.substr(offsets[1]));
        ASSERT_EQ(log().size(), ++times);
        EXPECT_TRUE(log().back().ends_with(" bytes were moved to " + m_path + ending)) << log().back();
        close();
    }
}

TEST_F(JournalDamageTest, KeepsNoFileOfZeroes)
{
    auto const offsets = writeThreeRecords();
    truncateTo(offsets[3] + 1'000'000);
    open();
    EXPECT_EQ(fileSize(), offsets[3]);
    EXPECT_EQ(get("three"), Value { "three" });
    EXPECT_EQ(log().size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(m_path + ".cut"));
}

TEST_F(JournalDamageTest, CutsOffNothingThatItCannotKeep)
{
    auto const offsets = writeThreeRecords();
    auto bytes = bytesOf(m_path);
    bytes[offsets[1] + 12] ^= 1;
    putBytes(m_path, bytes);
    m_operations.failWriting(".cut", ENOSPC);
    open();
    EXPECT_EQ(get("one"), Value { "one" });
    EXPECT_EQ(bytesOf(m_path), bytes);
    EXPECT_FALSE(std::filesystem::exists(m_path + ".cut"));
    ASSERT_EQ(log().size(), 1U);
    m_operations.failWriting(".cut", 0);
    set("four", 4);
    EXPECT_EQ(bytesOf(m_path + ".cut"), bytes.substr(offsets[1]));
    restart();
    EXPECT_EQ(get("one"), Value { "one" });
    EXPECT_EQ(get("four"), Value { 4 });
    EXPECT_EQ(log().size(), 2U);
}

TEST_F(JournalDamageTest, ReadsALongRecordAndCutsOffADamagedOne)
{
    open();
    set("one", std::string(1'000'000, '1'));
    set("two", std::string(1'000'000, '2'));
    restart();
    EXPECT_EQ(get("one"), Value(std::string(1'000'000, '1')));
    EXPECT_EQ(get("two"), Value(std::string(1'000'000, '2')));
    close();
    auto bytes = bytesOf(m_path);
    bytes[bytes.size() - 400'000] ^= 1;
    putBytes(m_path, bytes);
    open();
    EXPECT_EQ(get("one"), Value(std::string(1'000'000, '1')));
    EXPECT_EQ(get("two"), std::nullopt);
    EXPECT_GT(sizeOf(m_path + ".cut"), 1'000'000U);
}

TEST_F(JournalDamageTest, AsksForNoMemoryForALongRecordBeforeItIsKnownToBeIntact)
{
    class LargestRead final : public shared::FileOperations {
    public:
        ::ssize_t read(int file, char* bytes, std::size_t count, ::off_t offset) override
        {
            m_count = std::max(m_count, count);
            return FileOperations::read(file, bytes, count, offset);
        }
        [[nodiscard]] std::size_t count() const { return m_count; }

    private:
        std::size_t m_count = 0;
    } largestRead;
    auto const offsets = writeThreeRecords();
    constexpr std::uint32_t length = 100'000'000;
    std::string frame(shared::JournalRecord::frameSize, '\x5a');
    shared::putFixed(frame.data(), length);
    putBytes(m_path, bytesOf(m_path) + frame);
    truncateTo(offsets[3] + frame.size() + length);
    m_options.fileOperations = &largestRead;
    open();
    EXPECT_LE(largestRead.count(), 1'000'000U);
    EXPECT_EQ(get("three"), Value { "three" });
    EXPECT_EQ(fileSize(), offsets[3]);
    EXPECT_EQ(log().size(), 1U);
    close();
}

TEST_F(JournalDamageTest, WorksInMemoryIfAnythingButARegularFileHasItsPath)
{
    auto const target = m_directory.write("target", "").string();
    auto const expectRefusal = [&] {
        auto const lines = log().size();
        open();
        set("key", 1);
        EXPECT_EQ(get("key"), Value { 1 });
        m_store->synchronize();
        EXPECT_EQ(log().size(), lines + 1);
        close();
        std::filesystem::remove(m_path);
    };
    ASSERT_EQ(::mkfifo(m_path.c_str(), 0600), 0);
    expectRefusal();
    std::filesystem::create_symlink(target, m_path);
    expectRefusal();
    EXPECT_EQ(bytesOf(target), "");
    std::filesystem::create_directory(m_path);
    expectRefusal();
}

TEST_F(JournalDamageTest, TakesTheAccessOfOthersAway)
{
    open();
    set("key", 1);
    close();
    std::filesystem::permissions(m_path, std::filesystem::perms { 0644 });
    open();
    EXPECT_EQ(get("key"), Value { 1 });
    EXPECT_EQ(std::filesystem::status(m_path).permissions(), std::filesystem::perms { 0600 });
}

}
