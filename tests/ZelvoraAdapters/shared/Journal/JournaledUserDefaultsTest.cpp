#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"

#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalTest.h"

#include <sys/stat.h>

#include <cmath>
#include <thread>

namespace zelvora::tests {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

class JournaledUserDefaultsTest : public JournalTest {
protected:
    [[nodiscard]] long writes() const { return m_operations.count("write preferences"); }
};

TEST_F(JournaledUserDefaultsTest, KeepsEveryKindOfValueAcrossARestart)
{
    Value const everything { Array { Null {}, true, 1, 0.1, "text", std::string("a\0b", 3), Date { 12.5 },
        Data { std::string("\0\xff", 2) }, Array {}, Dictionary { { "k", Array { false } } } } };
    open();
    set("everything", everything);
    set("boolean", true);
    m_store->setDouble(1, "number");
    set("date", Date { 0.1 });
    set("", "the empty key");
    set(std::string("n\0l", 3), "a key with a NUL");
    restart();
    EXPECT_EQ(get("everything"), everything);
    EXPECT_EQ(get("boolean"), Value { true });
    EXPECT_EQ(get("number"), Value { 1.0 });
    EXPECT_EQ(get("date"), Value { Date { 0.1 } });
    EXPECT_EQ(get(""), Value { "the empty key" });
    EXPECT_EQ(get(std::string("n\0l", 3)), Value { "a key with a NUL" });
    EXPECT_EQ(get("n"), std::nullopt);
    EXPECT_TRUE(log().empty());
}

TEST_F(JournaledUserDefaultsTest, ForgetsAcrossARestartWhatWasRemoved)
{
    open();
    set("a", 1);
    set("b", 2);
    remove("a");
    m_store->setObject(std::nullopt, "b");
    restart();
    EXPECT_EQ(get("a"), std::nullopt);
    EXPECT_EQ(get("b"), std::nullopt);
}

TEST_F(JournaledUserDefaultsTest, MakesOneWriteAndNoOtherCallForAChange)
{
    std::vector<std::string> const oneWrite { "write preferences" };
    m_options.turnLength = std::chrono::hours(1);
    open();
    set("first", 1);
    m_operations.forget();
    set("a", "text");
    EXPECT_EQ(m_operations.calls(), oneWrite);
    append("list", 1);
    m_operations.forget();
    append("list", 2);
    EXPECT_EQ(m_operations.calls(), oneWrite);
    m_operations.forget();
    remove("a");
    EXPECT_EQ(m_operations.calls(), oneWrite);
}

TEST_F(JournaledUserDefaultsTest, WritesNothingIfNothingChanges)
{
    open();
    set("text", "same");
    set("number", 1.5);
    set("boolean", true);
    set("date", Date { 3 });
    set("list", Array { 1, 2 });
    auto const before = writes();
    remove("absent");
    m_store->setObject(std::nullopt, "absent");
    set("text", "same");
    set("number", 1.5);
    set("boolean", true);
    set("date", Date { 3 });
    set("list", array("list"));
    set("list", array("list").droppingFirst(0));
    EXPECT_EQ(writes(), before);
}

TEST_F(JournaledUserDefaultsTest, WritesANumberThatDiffersInOneBit)
{
    open();
    set("zero", 0.0);
    set("zero", -0.0);
    set("one", 1);
    set("one", true);
    restart();
    EXPECT_TRUE(std::signbit(*get("zero")->number()));
    EXPECT_EQ(get("one"), Value { true });
}

TEST_F(JournaledUserDefaultsTest, WritesOneElementWhenOneIsAppendedToALongArray)
{
    open();
    for (int i = 0; i < 5'000; ++i)
        append("queue", Dictionary { { "number", i } });
    auto const before = fileSize();
    append("queue", Dictionary { { "number", 5'000 } });
    EXPECT_LT(fileSize() - before, 60U);
    restart();
    ASSERT_EQ(array("queue").size(), 5'001U);
    EXPECT_EQ(array("queue").at(5'000), Value(Dictionary { { "number", 5'000 } }));
    EXPECT_EQ(array("queue").at(0), Value(Dictionary { { "number", 0 } }));
}

TEST_F(JournaledUserDefaultsTest, WritesAFewBytesWhenElementsAreDropped)
{
    open();
    for (int i = 0; i < 5'000; ++i)
        append("queue", i);
    restart();
    auto const before = fileSize();
    set("queue", array("queue").droppingFirst(500));
    EXPECT_LT(fileSize() - before, 30U);
    restart();
    ASSERT_EQ(array("queue").size(), 4'500U);
    EXPECT_EQ(array("queue").at(0), Value { 500 });
}

TEST_F(JournaledUserDefaultsTest, WritesAnArrayThatDroppedAndAppendedSeveralElements)
{
    open();
    set("queue", Array { 1, 2, 3 });
    set("queue", array("queue").droppingFirst(2).appending(4).appending(5));
    set("queue", array("queue").droppingFirst(3).appending(6));
    append("queue", 7);
    restart();
    EXPECT_EQ(get("queue"), Value(Array { 6, 7 }));
}

TEST_F(JournaledUserDefaultsTest, WritesAnArrayThatWasNotDerivedFromTheStoredOneInFull)
{
    open();
    set("queue", Array { 1, 2, 3 });
    auto const old = array("queue");
    set("queue", old.appending(4));
    set("queue", old.appending(5));
    restart();
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 3, 5 }));
    set("queue", array("queue").prefix(2));
    set("queue", array("queue").appending(9));
    restart();
    EXPECT_EQ(get("queue"), Value(Array { 1, 2, 9 }));
}

TEST_F(JournaledUserDefaultsTest, RefusesABareNullMarkerAndKeepsWhatWasStored)
{
    open();
    set("key", "kept");
    set("key", Null {});
    EXPECT_EQ(get("key"), Value { "kept" });
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournaledUserDefaultsTest, StoresTheDeepestValueAndRefusesADeeperOne)
{
    Value deep { Array {} };
    while (deep.nesting() < Value::maximumNesting)
        deep = Value(Array { deep });
    open();
    set("key", deep);
    set("key", Array { deep });
    EXPECT_EQ(log().size(), 1U);
    restart();
    EXPECT_EQ(get("key"), deep);
    EXPECT_EQ(log().size(), 1U);
}

TEST_F(JournaledUserDefaultsTest, CreatesItsDirectoryAndGivesOnlyTheOwnerAccess)
{
    m_path = m_directory / "not/yet/there/preferences";
    open();
    set("key", 1);
    struct ::stat status {};
    ASSERT_EQ(::stat(m_path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(::stat((m_directory / "not/yet").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    restart();
    EXPECT_EQ(get("key"), Value { 1 });
}

TEST_F(JournaledUserDefaultsTest, AsksOnlyForTheFilesSizeWhenItReadsAfterATurn)
{
    open();
    set("key", "value");
    // Another user of the file locks it, which it can only once the turn has ended.
    make().reset();
    m_operations.forget();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(get("key"), Value { "value" });
    EXPECT_EQ(m_operations.calls(), std::vector<std::string>(100, "fstat preferences"));
}

TEST_F(JournaledUserDefaultsTest, ReadsWithoutTheDisk)
{
    m_options.turnLength = std::chrono::hours(1);
    open();
    set("key", "value");
    append("queue", 1);
    m_operations.forget();
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(get("key"), Value { "value" });
        EXPECT_EQ(array("queue").size(), 1U);
        EXPECT_EQ(get("absent"), std::nullopt);
    }
    EXPECT_TRUE(m_operations.calls().empty());
}

TEST_F(JournaledUserDefaultsTest, ServesManyThreadsAtOnce)
{
    m_options.minimumCompactionSize = 4'096;
    m_options.syncDelay = std::chrono::milliseconds(1);
    open();
    constexpr int perThread = 400;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([this, key = "key" + std::to_string(number)] {
            for (int i = 0; i < perThread; ++i) {
                m_store->setDouble(i, key);
                EXPECT_EQ(m_store->object(key), Value { i });
                append(key + "queue", i);
                if (i % 7 == 3)
                    m_store->removeObject(key);
                if (i % 100 == 0)
                    m_store->synchronize();
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    restart();
    for (int number = 0; number < 4; ++number) {
        auto const key = "key" + std::to_string(number);
        EXPECT_EQ(array(key + "queue").size(), std::size_t { perThread });
        EXPECT_EQ(get(key), Value { perThread - 1 });
    }
    EXPECT_TRUE(log().empty());
}

TEST_F(JournaledUserDefaultsTest, SyncsByItselfAfterTheDelay)
{
    m_options.syncDelay = std::chrono::milliseconds(20);
    open();
    m_operations.forget();
    set("key", 1);
    EXPECT_TRUE(m_operations.waitFor("sync preferences"));
    set("key", 2);
    EXPECT_TRUE(m_operations.waitFor("sync preferences", 2));
}

TEST_F(JournaledUserDefaultsTest, SyncsOnceForManyChangesWithinTheDelay)
{
    open();
    for (int i = 0; i < 100; ++i)
        set("key", i);
    EXPECT_EQ(m_operations.count("sync preferences"), 0);
    m_store->synchronize();
    EXPECT_EQ(m_operations.count("sync preferences"), 1);
}

TEST_F(JournaledUserDefaultsTest, HasSyncedWhenSynchronizeReturnsAndSyncsNothingTwice)
{
    open();
    set("key", 1);
    m_store->synchronize();
    EXPECT_EQ(m_operations.count("sync preferences"), 1);
    m_store->synchronize();
    EXPECT_EQ(m_operations.count("sync preferences"), 1);
}

TEST_F(JournaledUserDefaultsTest, SyncsItsDirectoryForANewFile)
{
    open();
    set("key", 1);
    m_store->synchronize();
    auto const directory = m_directory.path().filename().string();
    EXPECT_EQ(m_operations.count("sync " + directory), 1);
}

TEST_F(JournaledUserDefaultsTest, SyncsWhenItCloses)
{
    open();
    set("key", 1);
    EXPECT_EQ(m_operations.count("sync preferences"), 0);
    close();
    EXPECT_EQ(m_operations.count("sync preferences"), 1);
}

}
