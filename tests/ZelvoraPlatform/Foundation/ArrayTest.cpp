#include "ZelvoraPlatform/Foundation/Array.h"

#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <random>
#include <thread>

namespace zelvora::platform {

namespace {

std::vector<int> numbers(Array const& array)
{
    std::vector<int> result;
    for (auto const& element : array)
        result.push_back(static_cast<int>(*element.number()));
    return result;
}

std::vector<int> upTo(int end, int begin = 0)
{
    std::vector<int> result;
    for (auto i = begin; i < end; ++i)
        result.push_back(i);
    return result;
}

Array arrayUpTo(int end)
{
    Array array;
    for (int i = 0; i < end; ++i)
        array = array.appending(i);
    return array;
}

void expectDifference(Array const& newer, Array const& older, std::size_t dropped, std::size_t firstAppended)
{
    auto const difference = newer.differenceFrom(older);
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->dropped, dropped);
    EXPECT_EQ(difference->firstAppended, firstAppended);
}

TEST(ArrayTest, AnEmptyArrayHasNoElements)
{
    Array const empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.size(), 0U);
    EXPECT_EQ(empty.begin(), empty.end());
    EXPECT_EQ(empty, Array {});
    EXPECT_EQ(empty.nesting(), 1U);
}

TEST(ArrayTest, ElementsAreInTheOrderInWhichTheyWereAppended)
{
    auto const array = arrayUpTo(5000);
    EXPECT_EQ(array.size(), 5000U);
    EXPECT_EQ(numbers(array), upTo(5000));
}

TEST(ArrayTest, AnArrayIsMadeFromAListOrAVector)
{
    EXPECT_EQ(numbers(Array { 0, 1, 2 }), upTo(3));
    EXPECT_EQ(numbers(Array(std::vector<Value> { 0, 1, 2 })), upTo(3));
    EXPECT_TRUE(Array(std::vector<Value> {}).isEmpty());
}

TEST(ArrayTest, AnArrayThatIsMadeFromALongVectorGrowsAndShrinksLikeAnyOther)
{
    for (int const size : { 511, 512, 513, 1024, 1025, 2000 }) {
        auto const appended = arrayUpTo(size);
        Array const array(std::vector<Value>(appended.begin(), appended.end()));
        EXPECT_EQ(numbers(array), upTo(size));
        EXPECT_TRUE(array.holdsOnly(Value::Kind::Number));
        auto const longer = array.appending(size);
        EXPECT_EQ(numbers(longer.appending(size + 1)), upTo(size + 2));
        expectDifference(longer.droppingFirst(2), array, 2, array.size() - 2);
        EXPECT_EQ(numbers(array.droppingFirst(510)), upTo(size, 510));
        EXPECT_EQ(numbers(array.prefix(510).appending(510)), upTo(511));
    }
}

TEST(ArrayTest, EveryElementIsReachedByItsIndex)
{
    auto const array = arrayUpTo(3000).droppingFirst(700);
    for (std::size_t i = 0; i < array.size(); ++i)
        ASSERT_EQ(array.at(i), Value(i + 700));
}

TEST(ArrayDeathTest, ReadingBeyondTheEndStopsTheProcess)
{
    EXPECT_DEATH((void)Array {}.at(0), "Fatal error: an array was read beyond its end");
    EXPECT_DEATH((void)arrayUpTo(3).droppingFirst(2).at(1), "Fatal error: an array was read beyond its end");
}

TEST(ArrayTest, AppendingLeavesOlderVersionsAsTheyWere)
{
    auto const older = arrayUpTo(10);
    auto const newer = older.appending(10);
    EXPECT_EQ(numbers(older), upTo(10));
    EXPECT_EQ(numbers(newer), upTo(11));
}

TEST(ArrayTest, EveryVersionKeepsItsElements)
{
    std::vector<Array> versions { Array {} };
    for (int i = 0; i < 600; ++i)
        versions.push_back(versions.back().appending(i));
    for (int i = 0; i <= 600; ++i)
        ASSERT_EQ(numbers(versions[static_cast<std::size_t>(i)]), upTo(i));
}

TEST(ArrayTest, AppendingToAnOlderVersionBranchesOff)
{
    for (auto const size : { 0, 1, 3, 4, 5, 11, 12, 13, 1000 }) {
        auto const base = arrayUpTo(size);
        auto const left = base.appending("left");
        auto const right = base.appending("right");
        EXPECT_EQ(left.size(), base.size() + 1);
        EXPECT_EQ(right.size(), base.size() + 1);
        EXPECT_EQ(left.at(base.size()), Value("left"));
        EXPECT_EQ(right.at(base.size()), Value("right"));
        EXPECT_EQ(numbers(base), upTo(size));
        EXPECT_EQ(numbers(left.prefix(base.size())), upTo(size));
        EXPECT_EQ(numbers(right.prefix(base.size())), upTo(size));
    }
}

TEST(ArrayTest, BothBranchesCanGrow)
{
    auto const base = arrayUpTo(4);
    auto left = base;
    auto right = base;
    for (int i = 4; i < 2000; ++i) {
        left = left.appending(i);
        right = right.appending(-i);
    }
    EXPECT_EQ(numbers(left), upTo(2000));
    EXPECT_EQ(right.size(), 2000U);
    EXPECT_EQ(right.at(1999), Value(-1999));
}

TEST(ArrayTest, DroppingTakesFromTheFrontAndLeavesOlderVersions)
{
    auto const older = arrayUpTo(1000);
    for (auto const count : { 0, 1, 3, 4, 5, 500, 999, 1000 }) {
        EXPECT_EQ(numbers(older.droppingFirst(static_cast<std::size_t>(count))), upTo(1000, count));
        EXPECT_EQ(older.size(), 1000U);
    }
}

TEST(ArrayTest, DroppingMoreThanThereIsLeavesAnEmptyArray)
{
    EXPECT_TRUE(arrayUpTo(3).droppingFirst(4).isEmpty());
    EXPECT_TRUE(arrayUpTo(3).droppingFirst(static_cast<std::size_t>(-1)).isEmpty());
    EXPECT_TRUE(Array {}.droppingFirst(1).isEmpty());
}

TEST(ArrayTest, AnEmptiedArrayAcceptsNewElements)
{
    for (auto const size : { 1, 3, 4, 5, 12, 600 }) {
        auto array = arrayUpTo(size).droppingFirst(static_cast<std::size_t>(size));
        EXPECT_TRUE(array.isEmpty());
        EXPECT_EQ(array.begin(), array.end());
        for (int i = 0; i < 20; ++i)
            array = array.appending(i);
        EXPECT_EQ(numbers(array), upTo(20));
    }
}

TEST(ArrayTest, PrefixTakesTheFirstElements)
{
    auto const array = arrayUpTo(1000).droppingFirst(5);
    for (auto const count : { 0, 1, 7, 8, 500, 994, 995 })
        EXPECT_EQ(numbers(array.prefix(static_cast<std::size_t>(count))), upTo(5 + count, 5));
    EXPECT_EQ(array.prefix(10'000), array);
    EXPECT_TRUE(Array {}.prefix(3).isEmpty());
}

TEST(ArrayTest, AppendingToAPrefixLeavesTheWholeAsItWas)
{
    auto const whole = arrayUpTo(100);
    auto const other = whole.prefix(50).appending(-1);
    EXPECT_EQ(numbers(whole), upTo(100));
    EXPECT_EQ(other.size(), 51U);
    EXPECT_EQ(other.at(50), Value(-1));
}

TEST(ArrayTest, ArraysAreEqualByTheirElementsHoweverTheyWereMade)
{
    std::vector<Value> elements;
    for (int i = 0; i < 100; ++i)
        elements.emplace_back(i);
    EXPECT_EQ(arrayUpTo(100), Array(elements));
    EXPECT_EQ(arrayUpTo(105).droppingFirst(5).prefix(1), Array { 5 });
    EXPECT_NE(arrayUpTo(3), arrayUpTo(4));
    EXPECT_NE((Array { 1, 2 }), (Array { 2, 1 }));
}

TEST(ArrayTest, RandomHistoriesMatchAPlainSequence)
{
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same history in every run
    for (int history = 0; history < 60; ++history) {
        std::vector<std::pair<Array, std::vector<int>>> versions { { Array {}, {} } };
        for (int step = 0; step < 120; ++step) {
            // Mostly the newest version, sometimes an older one.
            auto const place = random() % 4 == 0 ? random() % versions.size() : versions.size() - 1;
            auto [array, model] = versions[place];
            auto const count = random() % 20;
            switch (random() % 3) {
            case 0:
                for (std::size_t i = 0; i < count; ++i) {
                    array = array.appending(step);
                    model.push_back(step);
                }
                break;
            case 1:
                array = array.droppingFirst(count);
                model.erase(model.begin(), model.begin() + static_cast<long>(std::min(count, model.size())));
                break;
            default:
                array = array.prefix(count * 5);
                model.resize(std::min<std::size_t>(model.size(), count * 5));
                break;
            }
            ASSERT_EQ(numbers(array), model);
            versions.emplace_back(array, model);
        }
        for (auto const& [array, model] : versions)
            ASSERT_EQ(numbers(array), model);
    }
}

TEST(ArrayTest, ADifferenceTellsWhatWasAppended)
{
    auto const older = arrayUpTo(10);
    expectDifference(older.appending(10).appending(11), older, 0, 10);
}

TEST(ArrayTest, ADifferenceTellsWhatWasDropped)
{
    auto const older = arrayUpTo(10);
    expectDifference(older.droppingFirst(4), older, 4, 6);
}

TEST(ArrayTest, ADifferenceTellsWhatWasDroppedAndAppended)
{
    auto const older = arrayUpTo(700);
    auto const newer = older.appending(700).droppingFirst(500).appending(701);
    expectDifference(newer, older, 500, 200);
    EXPECT_EQ(newer.at(200), Value(700));
}

TEST(ArrayTest, AVersionDoesNotDifferFromItself)
{
    auto const array = arrayUpTo(10);
    expectDifference(array, array, 0, 10);
}

TEST(ArrayTest, ADifferenceTellsThatAllOldElementsWereDropped)
{
    auto const older = arrayUpTo(3);
    auto const newer = older.appending(3).appending(4).droppingFirst(4);
    expectDifference(newer, older, 3, 0);
    expectDifference(older.droppingFirst(3), older, 3, 0);
}

TEST(ArrayTest, ApplyingADifferenceMakesTheNewerArray)
{
    std::mt19937 random(11); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same history in every run
    Array newest;
    std::vector<Array> versions { newest };
    for (int step = 0; step < 400; ++step) {
        newest = random() % 3 == 0 ? newest.droppingFirst(random() % 6) : newest.appending(step);
        versions.push_back(newest);
    }
    std::size_t told = 0;
    for (std::size_t i = 0; i < versions.size(); i += 7) {
        for (std::size_t j = i; j < versions.size(); j += 13) {
            auto const difference = versions[j].differenceFrom(versions[i]);
            if (!difference)
                continue;
            ++told;
            auto made = numbers(versions[i]);
            made.erase(made.begin(), made.begin() + static_cast<long>(difference->dropped));
            auto const appended = numbers(versions[j].droppingFirst(difference->firstAppended));
            made.insert(made.end(), appended.begin(), appended.end());
            ASSERT_EQ(made, numbers(versions[j]));
        }
    }
    EXPECT_GT(told, 500U);
}

TEST(ArrayTest, ThereIsNoDifferenceIfAnArrayWasNotMadeFromTheOther)
{
    auto const base = arrayUpTo(10);
    EXPECT_FALSE(base.differenceFrom(arrayUpTo(10))) << "equal, but built separately";
    EXPECT_FALSE(base.differenceFrom(base.appending(10))) << "older from newer";
    EXPECT_FALSE(base.differenceFrom(base.droppingFirst(1)));
    EXPECT_FALSE(base.prefix(5).differenceFrom(base)) << "cut at the end";
    EXPECT_FALSE(base.differenceFrom(Array {}));
    EXPECT_FALSE(Array {}.differenceFrom(base));
    EXPECT_FALSE(Array {}.differenceFrom(Array {}));
}

TEST(ArrayTest, BranchesAreNotMadeFromOneAnother)
{
    auto const base = arrayUpTo(10);
    auto const left = base.appending("left");
    auto const right = base.appending("right").appending("more");
    EXPECT_FALSE(right.differenceFrom(left));
    EXPECT_FALSE(left.differenceFrom(right));
    expectDifference(left, base, 0, 10);
}

TEST(ArrayTest, ABranchOffAPrefixIsNotMadeFromTheWhole)
{
    auto const whole = arrayUpTo(10);
    auto branch = whole.prefix(5);
    for (int i = 0; i < 10; ++i)
        branch = branch.appending(-i);
    EXPECT_FALSE(branch.differenceFrom(whole));
}

TEST(ArrayTest, HoldsOnlyLooksAtEveryElement)
{
    EXPECT_TRUE(Array {}.holdsOnly(Value::Kind::Dictionary));
    EXPECT_TRUE((Array { Dictionary {}, Dictionary {} }).holdsOnly(Value::Kind::Dictionary));
    EXPECT_FALSE((Array { Dictionary {}, 1 }).holdsOnly(Value::Kind::Dictionary));
    EXPECT_FALSE((Array { Dictionary {}, Value() }).holdsOnly(Value::Kind::Dictionary));
    EXPECT_FALSE((Array { Dictionary {} }).holdsOnly(Value::Kind::Array));
    EXPECT_TRUE((Array { true }).holdsOnly(Value::Kind::Boolean));
    EXPECT_FALSE((Array { true }).holdsOnly(Value::Kind::Number));
}

TEST(ArrayTest, HoldsOnlyIgnoresDroppedElements)
{
    Array const mixed { 1, "two", "three" };
    EXPECT_FALSE(mixed.holdsOnly(Value::Kind::Text));
    EXPECT_TRUE(mixed.droppingFirst(1).holdsOnly(Value::Kind::Text));
    EXPECT_TRUE(mixed.prefix(1).holdsOnly(Value::Kind::Number));
}

TEST(ArrayTest, NestingCountsItselfAndItsDeepestElement)
{
    EXPECT_EQ((Array { 1, 2 }).nesting(), 1U);
    EXPECT_EQ((Array { 1, Array { Dictionary {} }, 2 }).nesting(), 3U);
}

TEST(ArrayTest, ALongArrayIsDestroyedWithoutRecursion)
{
    Array array;
    for (int i = 0; i < 500'000; ++i)
        array = array.appending(i);
    EXPECT_EQ(array.size(), 500'000U);
    array = {};
    EXPECT_TRUE(array.isEmpty());
}

std::size_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST(ArrayTest, DroppedElementsAreFreedWhileTheArrayGrows)
{
    constexpr std::size_t oneElement = 4096;
    constexpr int count = 300'000;
    Array queue;
    auto const before = residentBytes();
    ASSERT_GT(before, 0U);
    for (int i = 0; i < count; ++i) {
        queue = queue.appending(std::string(oneElement, 'x'));
        if (queue.size() > 100)
            queue = queue.droppingFirst(50);
    }
    // Less than everything that passed through: the sanitizers keep some freed memory for a while.
    EXPECT_LT(residentBytes() - std::min(before, residentBytes()), count * oneElement / 2);
}

TEST(ArrayTest, ManyThreadsMayReadOneVersionWhileANewerOneGrows)
{
    constexpr int size = 2000;
    auto const shared = arrayUpTo(size);
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([shared] {
            for (int round = 0; round < 20; ++round) {
                EXPECT_EQ(numbers(shared), upTo(size));
                EXPECT_EQ(shared.at(size - 1), Value(size - 1));
                EXPECT_EQ(shared.droppingFirst(size - 1).size(), 1U);
            }
        });
    }
    auto newer = shared;
    for (int i = size; i < 4 * size; ++i)
        newer = newer.appending(i).droppingFirst(1);
    for (auto& reader : readers)
        reader.join();
    EXPECT_EQ(numbers(newer), upTo(4 * size, 3 * size));
}

TEST(ArrayTest, ThreadsThatAppendToOneVersionAtOnceEachGetTheirOwnArray)
{
    for (int round = 0; round < 100; ++round) {
        auto const base = arrayUpTo(round);
        std::vector<Array> results(3);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < results.size(); ++i) {
            threads.emplace_back([base, i, &results] {
                auto own = base;
                for (int step = 0; step < 10; ++step)
                    own = own.appending(i);
                results[i] = own;
            });
        }
        for (auto& thread : threads)
            thread.join();
        for (std::size_t i = 0; i < results.size(); ++i) {
            ASSERT_EQ(numbers(results[i].prefix(base.size())), upTo(round));
            for (auto const& element : results[i].droppingFirst(base.size()))
                ASSERT_EQ(element, Value(i));
        }
    }
}

TEST(ArrayTest, VersionsMayBeDroppedOnDifferentThreads)
{
    for (int round = 0; round < 200; ++round) {
        auto older = std::make_unique<Array>(arrayUpTo(10));
        std::atomic<bool> isGrown = false;
        std::thread grower([array = *older, &isGrown]() mutable {
            for (int i = 0; i < 100; ++i)
                array = array.appending(i).droppingFirst(1);
            array = {};
            // Relaxed, so that only the array itself synchronizes the threads.
            isGrown.store(true, std::memory_order_relaxed);
        });
        while (!isGrown.load(std::memory_order_relaxed))
            std::this_thread::yield();
        older.reset();
        grower.join();
    }
}

}

}
