#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalHistory.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"
#include "tests/support/makeSeed.h"

#include <algorithm>
#include <random>
#include <set>

namespace zelvora::tests {

using platform::Dictionary;
using platform::Value;

// Records a file together with its content after each step, makes images of what a crash may leave of it, and checks
// that every image opens with the content of a step, and of the right step if only one is possible.
class JournalCrashImageTest : public JournalTest {
protected:
    JournalCrashImageTest() : m_random(makeSeed()) { }

    // The size of the file and the content after each step.
    void recordSteps(int count)
    {
        JournalHistory const history { m_random() };
        m_path = m_directory / "recorded";
        open();
        m_ends = { shared::JournalHeader::size };
        m_states = { textOf({}) };
        for (int i = 0; i < count; ++i) {
            history.takeStep(static_cast<std::uint64_t>(i), *m_store);
            m_ends.push_back(fileSize());
            m_states.push_back(textOf(JournalHistory::stateOf(*m_store)));
        }
        close();
        m_bytes = bytesOf(m_path);
        m_path = m_directory / "image";
    }

    static std::string textOf(JournalHistory::State const& state)
    {
        std::string bytes;
        shared::appendValue(bytes, Value(Dictionary(Dictionary::Entries(state.begin(), state.end()))));
        return bytes;
    }

    std::string stateOfImage(std::string const& bytes)
    {
        close();
        std::filesystem::remove(m_path + ".damaged");
        std::filesystem::remove(m_path + ".cut");
        putBytes(m_path, bytes);
        open();
        return textOf(JournalHistory::stateOf(*m_store));
    }

    // The last step whose record ends at or before an offset.
    [[nodiscard]] std::size_t stepAt(std::uint64_t offset) const
    {
        auto const after = std::ranges::upper_bound(m_ends, offset);
        return static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - m_ends.begin() - 1, 0));
    }

    std::size_t offsetInRecords() { return m_ends[0] + m_random() % (m_bytes.size() - m_ends[0]); }

    std::mt19937_64 m_random;
    std::vector<std::uint64_t> m_ends;
    std::vector<std::string> m_states;
    std::string m_bytes;
};

TEST_F(JournalCrashImageTest, AFileTruncatedBetweenTwoRecordsHasTheContentOfThatStep)
{
    recordSteps(400);
    for (std::size_t i = 0; i < m_ends.size(); ++i) {
        EXPECT_EQ(stateOfImage(m_bytes.substr(0, m_ends[i])), m_states[i]) << i;
        EXPECT_TRUE(log().empty());
    }
}

TEST_F(JournalCrashImageTest, AFileTruncatedAnywhereHasTheContentBeforeTheTornRecord)
{
    recordSteps(200);
    for (int i = 0; i < 250; ++i) {
        auto const offset = m_random() % m_bytes.size();
        EXPECT_EQ(stateOfImage(m_bytes.substr(0, offset)), m_states[stepAt(offset)]) << offset;
    }
}

TEST_F(JournalCrashImageTest, AFileThatEndsInZeroesHasTheContentBeforeThem)
{
    recordSteps(200);
    for (int i = 0; i < 150; ++i) {
        auto const offset = offsetInRecords();
        auto bytes = m_bytes.substr(0, offset);
        bytes.resize(m_bytes.size(), '\0');
        // The bytes may have been zeroes before.
        auto const state = stateOfImage(bytes);
        auto const intact = static_cast<std::uint64_t>(std::ranges::mismatch(bytes, m_bytes).in1 - bytes.begin());
        EXPECT_EQ(state, m_states[stepAt(intact)]) << offset;
    }
}

TEST_F(JournalCrashImageTest, AFileWithOneWrongByteHasTheContentBeforeIt)
{
    recordSteps(200);
    for (int i = 0; i < 250; ++i) {
        auto const offset = offsetInRecords();
        auto bytes = m_bytes;
        bytes[offset] = static_cast<char>(bytes[offset] ^ (1 + static_cast<int>(m_random() % 255)));
        EXPECT_EQ(stateOfImage(bytes), m_states[stepAt(offset)]) << offset;
    }
}

TEST_F(JournalCrashImageTest, AFileThatEndsInGarbageHasTheContentBeforeIt)
{
    recordSteps(200);
    for (int i = 0; i < 150; ++i) {
        auto const step = m_random() % m_ends.size();
        auto bytes = m_bytes.substr(0, m_ends[step]);
        // Random bytes, or bytes of this file from another offset, as a reused block would contain.
        if (i % 2 == 0) {
            for (auto length = m_random() % 5'000; length > 0; --length)
                bytes.push_back(static_cast<char>(m_random()));
        } else {
            auto const other = m_random() % m_ends.size();
            if (other == step)
                continue;
            bytes += m_bytes.substr(m_ends[other]);
        }
        EXPECT_EQ(stateOfImage(bytes), m_states[step]) << step;
    }
}

TEST_F(JournalCrashImageTest, ACompactedFileHasTheContentOfSomeStep)
{
    m_options.minimumCompactionSize = 4'096;
    recordSteps(600);
    ASSERT_GT(m_operations.count("rename recorded.compacting"), 0);
    std::set<std::string> const once { m_states.begin(), m_states.end() };
    for (int i = 0; i < 400; ++i) {
        auto const offset = m_random() % (m_bytes.size() + 1);
        auto bytes = m_bytes.substr(0, offset);
        if (i % 2 == 0)
            bytes += m_bytes.substr(m_random() % (offset + 1));
        EXPECT_TRUE(once.contains(stateOfImage(bytes))) << offset;
    }
}

}
