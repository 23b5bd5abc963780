#include "ZelvoraAdapters/shared/Journal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "tests/ZelvoraAdapters/shared/JournalHistory.h"
#include "tests/ZelvoraAdapters/shared/JournalTest.h"
#include "tests/support/makeSeed.h"

#include <algorithm>
#include <random>
#include <set>

namespace zelvora::tests {

using platform::Dictionary;
using platform::Value;

// What a crash may leave of a file is made from one that was recorded with each of its states: every image must open to
// one of them, and to the right one where only one is.
class JournalCrashImageTest : public JournalTest {
protected:
    JournalCrashImageTest() : m_random(makeSeed()) { }

    // The file after each step, and what it says then. A compaction begins the record anew: no older state is in the
    // file any more.
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
        putBytes(m_path, bytes);
        open();
        return textOf(JournalHistory::stateOf(*m_store));
    }

    // The step whose record is the last that ends at or before a place.
    [[nodiscard]] std::size_t stepBefore(std::uint64_t place) const
    {
        auto const behind = std::ranges::upper_bound(m_ends, place);
        return static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - m_ends.begin() - 1, 0));
    }

    std::size_t placeInRecords() { return m_ends[0] + m_random() % (m_bytes.size() - m_ends[0]); }

    std::mt19937_64 m_random;
    std::vector<std::uint64_t> m_ends;
    std::vector<std::string> m_states;
    std::string m_bytes;
};

TEST_F(JournalCrashImageTest, AFileCutBetweenTwoRecordsIsWhatItWasThen)
{
    recordSteps(400);
    for (std::size_t i = 0; i < m_ends.size(); ++i) {
        EXPECT_EQ(stateOfImage(m_bytes.substr(0, m_ends[i])), m_states[i]) << i;
        EXPECT_TRUE(log().empty());
    }
}

TEST_F(JournalCrashImageTest, AFileCutAnywhereIsWhatItWasBeforeTheTornRecord)
{
    recordSteps(200);
    for (int i = 0; i < 250; ++i) {
        auto const place = m_random() % m_bytes.size();
        EXPECT_EQ(stateOfImage(m_bytes.substr(0, place)), m_states[stepBefore(place)]) << place;
    }
}

TEST_F(JournalCrashImageTest, AFileWithZeroesFromAPlaceOnIsWhatItWasBeforeIt)
{
    recordSteps(200);
    for (int i = 0; i < 150; ++i) {
        auto const place = placeInRecords();
        auto bytes = m_bytes.substr(0, place);
        bytes.resize(m_bytes.size(), '\0');
        // The zeroes may be what was there.
        auto const state = stateOfImage(bytes);
        auto const intact = static_cast<std::uint64_t>(std::ranges::mismatch(bytes, m_bytes).in1 - bytes.begin());
        EXPECT_EQ(state, m_states[stepBefore(intact)]) << place;
    }
}

TEST_F(JournalCrashImageTest, AFileWithOneWrongByteIsWhatItWasBeforeIt)
{
    recordSteps(200);
    for (int i = 0; i < 250; ++i) {
        auto const place = placeInRecords();
        auto bytes = m_bytes;
        bytes[place] = static_cast<char>(bytes[place] ^ (1 + static_cast<int>(m_random() % 255)));
        EXPECT_EQ(stateOfImage(bytes), m_states[stepBefore(place)]) << place;
    }
}

TEST_F(JournalCrashImageTest, AFileWithRubbishInPlaceOfItsEndIsWhatItWasBeforeIt)
{
    recordSteps(200);
    for (int i = 0; i < 150; ++i) {
        auto const step = m_random() % m_ends.size();
        auto bytes = m_bytes.substr(0, m_ends[step]);
        // Any bytes, or a run of this very file from another place, as a reused block would have.
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

TEST_F(JournalCrashImageTest, AFileThatWasCompactedIsStillOnlyWhatItOnceWas)
{
    m_tuning.smallestCompaction = 4'096;
    recordSteps(600);
    ASSERT_GT(m_operations.count("rename recorded.compacting"), 0);
    std::set<std::string> const once { m_states.begin(), m_states.end() };
    for (int i = 0; i < 400; ++i) {
        auto const place = m_random() % (m_bytes.size() + 1);
        auto bytes = m_bytes.substr(0, place);
        if (i % 2 == 0)
            bytes += m_bytes.substr(m_random() % (place + 1));
        EXPECT_TRUE(once.contains(stateOfImage(bytes))) << place;
    }
}

}
