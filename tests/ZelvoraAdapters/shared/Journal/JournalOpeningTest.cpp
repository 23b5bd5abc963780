#include "ZelvoraAdapters/shared/Journal/internal/Journal.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <random>

namespace zelvora::tests {

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

// The real file system, whose files open only once they may.
class HeldFileOperations final : public shared::FileOperations {
public:
    void hold() { set(false); }
    void release() { set(true); }
    // Whether a file was opened only because the wait for `release` took too long.
    [[nodiscard]] bool hasTimedOut() const
    {
        std::scoped_lock const lock(m_mutex);
        return m_hasTimedOut;
    }

    int open(std::string const& path, int flags, ::mode_t mode) override
    {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, std::chrono::seconds(30), [this] { return m_mayOpen; }))
            m_hasTimedOut = m_mayOpen = true;
        return FileOperations::open(path, flags, mode);
    }

private:
    void set(bool mayOpen)
    {
        std::scoped_lock const lock(m_mutex);
        m_mayOpen = mayOpen;
        m_changed.notify_all();
    }

    std::mutex mutable m_mutex;
    std::condition_variable m_changed;
    bool m_mayOpen = true;
    bool m_hasTimedOut = false;
};

}

class JournalOpeningTest : public JournalTest {
protected:
    JournalOpeningTest()
    {
        m_options.fileOperations = &m_heldOperations;
        m_options.opening = shared::JournalOpening::InBackground;
    }
    ~JournalOpeningTest() override { EXPECT_FALSE(m_heldOperations.hasTimedOut()); }

    void restartHeld()
    {
        close();
        m_heldOperations.hold();
        open();
    }

    HeldFileOperations m_heldOperations;
};

TEST_F(JournalOpeningTest, TheStoreIsThereBeforeItsFileIsReadAndTheFirstReaderWaits)
{
    open();
    set("key", "value");
    restartHeld();
    m_heldOperations.release();
    EXPECT_EQ(get("key"), Value("value"));
}

TEST_F(JournalOpeningTest, AChangeThatIsMadeBeforeTheFileIsReadComesAfterWhatTheFileHas)
{
    open();
    set("queue", Array { 1, 2 });
    set("key", "old");
    restartHeld();
    m_heldOperations.release();
    set("key", "new");
    append("queue", 3);
    restart();
    EXPECT_EQ(get("key"), Value("new"));
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3 }));
}

TEST_F(JournalOpeningTest, AStoreThatNobodyUsesOpensAndCloses)
{
    restartHeld();
    m_heldOperations.release();
    close();
    EXPECT_EQ(fileSize(), 32U);
    EXPECT_TRUE(log().empty());
}

TEST_F(JournalOpeningTest, AFileThatCannotBeOpenedIsLogged)
{
    m_path = m_directory.write("file", "") / "preferences";
    open();
    set("key", 1);
    EXPECT_EQ(get("key"), Value(1));
    ASSERT_EQ(log().size(), 1U);
    EXPECT_TRUE(log()[0].ends_with("changes stay in memory until a write succeeds")) << log()[0];
}

// Arrays are read by parts, whose ends fall anywhere in such a history.
TEST_F(JournalTest, AnArrayIsReadBackWhateverWasAppendedAndDropped)
{
    std::mt19937 random { 5 };
    std::vector<int> expected;
    int next = 0;
    open();
    set("queue", Array {});
    for (int round = 0; round < 40; ++round) {
        auto changed = array("queue");
        for (auto count = random() % (round % 3 == 0 ? 900 : 3); count > 0; --count) {
            changed = changed.appending(Dictionary { { "number", next } });
            expected.push_back(next++);
        }
        auto const dropped = std::min<std::size_t>(expected.size(), random() % (round % 4 == 0 ? 1200 : 100));
        changed = changed.droppingFirst(dropped);
        expected.erase(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(dropped));
        set("queue", changed);
        if (round % 2 == 0)
            restart();
        auto const read = array("queue");
        ASSERT_EQ(read.size(), expected.size());
        ASSERT_TRUE(read.holdsOnly(Value::Kind::Dictionary));
        auto element = read.begin();
        for (auto const number : expected)
            ASSERT_EQ(*element++, Value(Dictionary { { "number", number } })) << round;
    }
}

TEST_F(JournalTest, TheNextSyncFreesALongArrayThatWasReplaced)
{
    Array elements;
    for (int i = 0; i < 200; ++i)
        elements = elements.appending(i);
    shared::Journal journal(m_path, m_options);
    journal.open();
    auto const replaced = [&journal] { return journal.beginSync().value().replaced; };

    journal.setObject(elements, "queue");
    journal.setObject(elements.appending(200), "queue");
    journal.setObject(Array { 1, 2, 3 }, "short");
    journal.setObject(std::nullopt, "short");
    EXPECT_TRUE(replaced().empty()) << "nothing long was replaced";
    journal.setObject(elements.appending(200).droppingFirst(100), "queue");
    EXPECT_EQ(replaced(), std::vector { Value(elements.appending(200)) });
    journal.setObject("text", "queue");
    EXPECT_EQ(replaced().size(), 1U);
    journal.setObject(elements, "queue");
    journal.setObject(std::nullopt, "queue");
    EXPECT_EQ(replaced(), std::vector { Value(elements) });
    journal.endTurn();
}

}
