#include "ZelvoraPlatform/Foundation/Array.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace zelvora::platform {

namespace {

// Makes parts of an array of numbers, and counts how often each was made.
class ArrayPartTest : public testing::Test {
protected:
    Array::Part part(std::size_t index, int begin, std::size_t count)
    {
        auto make = [this, index, begin, count] {
            ++m_made.at(index);
            std::vector<Value> elements;
            for (std::size_t i = 0; i < count; ++i)
                elements.emplace_back(begin + static_cast<int>(i));
            return elements;
        };
        auto const number = static_cast<unsigned>(Value::Kind::Number);
        return { .count = count, .nesting = 0, .kinds = static_cast<std::uint8_t>(1U << number), .make = make };
    }

    // 0 to 5.
    Array sixNumbers() { return Array(std::vector { part(0, 0, 3), part(1, 3, 1), part(2, 4, 2) }); }

    std::vector<int> made() const { return { m_made[0], m_made[1], m_made[2] }; }

    std::array<std::atomic<int>, 3> m_made {};
};

std::vector<int> elementsOf(Array const& array)
{
    std::vector<int> result;
    for (auto const& element : array)
        result.push_back(static_cast<int>(*element.number()));
    return result;
}

std::vector<int> visited(Array const& array, std::size_t atMost = 100)
{
    std::vector<int> result;
    array.visit([&](Value const& element) {
        result.push_back(static_cast<int>(*element.number()));
        return result.size() < atMost;
    });
    return result;
}

TEST_F(ArrayPartTest, TheElementsOfThePartsFollowOneAnother)
{
    EXPECT_EQ(elementsOf(sixNumbers()), (std::vector { 0, 1, 2, 3, 4, 5 }));
    EXPECT_EQ(sixNumbers(), (Array { 0, 1, 2, 3, 4, 5 }));
    EXPECT_EQ(elementsOf(Array(std::vector<Array::Part> {})), std::vector<int>());
    EXPECT_EQ(elementsOf(Array(std::vector { part(0, 0, 0), part(1, 7, 1) })), std::vector { 7 });
}

TEST_F(ArrayPartTest, NoPartIsMadeForWhatIsKnownWithoutIt)
{
    auto const array = sixNumbers();
    EXPECT_EQ(array.size(), 6U);
    EXPECT_EQ(array.nesting(), 1U);
    EXPECT_TRUE(array.holdsOnly(Value::Kind::Number));
    auto const longer = array.droppingFirst(4).appending(6);
    EXPECT_EQ(longer.differenceFrom(array)->dropped, 4U);
    EXPECT_EQ(array.prefix(4).size(), 4U);
    EXPECT_EQ(made(), (std::vector { 0, 0, 0 }));
}

TEST_F(ArrayPartTest, APartIsMadeOnceWhenOneOfItsElementsIsRead)
{
    auto const array = sixNumbers();
    EXPECT_EQ(array.at(3), Value(3));
    EXPECT_EQ(made(), (std::vector { 0, 1, 0 }));
    EXPECT_EQ(array.prefix(2), (Array { 0, 1 }));
    EXPECT_EQ(made(), (std::vector { 1, 1, 0 }));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(elementsOf(array.droppingFirst(2)), (std::vector { 2, 3, 4, 5 }));
    EXPECT_EQ(made(), (std::vector { 1, 1, 1 }));
}

TEST_F(ArrayPartTest, ElementsAreAppendedBehindTheParts)
{
    auto const array = sixNumbers();
    auto longer = array;
    for (int i = 6; i < 20; ++i)
        longer = longer.appending(i);
    auto const other = array.appending(-1);
    EXPECT_EQ(
        elementsOf(longer.droppingFirst(5)), (std::vector { 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19 }));
    EXPECT_EQ(elementsOf(other), (std::vector { 0, 1, 2, 3, 4, 5, -1 }));
    EXPECT_EQ(array.size(), 6U);
}

TEST_F(ArrayPartTest, AppendingInsideThePartsBranchesOff)
{
    auto const array = sixNumbers();
    EXPECT_EQ(elementsOf(array.prefix(3).appending(9)), (std::vector { 0, 1, 2, 9 }));
    EXPECT_EQ(elementsOf(array.prefix(2).appending(9)), (std::vector { 0, 1, 9 }));
    EXPECT_EQ(elementsOf(array), (std::vector { 0, 1, 2, 3, 4, 5 }));
}

TEST_F(ArrayPartTest, VisitingKeepsNothingThatItMakes)
{
    auto const array = sixNumbers().appending(6);
    EXPECT_EQ(visited(array), (std::vector { 0, 1, 2, 3, 4, 5, 6 }));
    EXPECT_EQ(visited(array.droppingFirst(3)), (std::vector { 3, 4, 5, 6 }));
    EXPECT_EQ(made(), (std::vector { 1, 2, 2 }));
    EXPECT_EQ(array.at(0), Value(0));
    EXPECT_EQ(visited(array.prefix(2)), (std::vector { 0, 1 }));
    EXPECT_EQ(made(), (std::vector { 2, 2, 2 })) << "what was made for a reader is kept and visited";
}

TEST_F(ArrayPartTest, VisitingEndsWhenTheVisitorSaysSo)
{
    EXPECT_EQ(visited(sixNumbers(), 2), (std::vector { 0, 1 }));
    EXPECT_EQ(made(), (std::vector { 1, 0, 0 }));
    EXPECT_FALSE(Array { 1 }.visit([](Value const&) { return false; }));
    EXPECT_TRUE(Array { 1 }.visit([](Value const&) { return true; }));
    EXPECT_TRUE(Array().visit([](Value const&) { return false; }));
}

TEST_F(ArrayPartTest, APartIsFreedOnceItIsDroppedOrMade)
{
    auto const source = std::make_shared<int>(1);
    auto const makePart = [&source] {
        return Array::Part { .count = 1, .make = [source] { return std::vector<Value> { *source }; } };
    };
    Array array(std::vector { makePart(), makePart() });
    EXPECT_EQ(source.use_count(), 3);
    array = array.droppingFirst(1);
    EXPECT_EQ(source.use_count(), 2);
    EXPECT_EQ(array.at(0), Value(1));
    EXPECT_EQ(source.use_count(), 1);
}

TEST_F(ArrayPartTest, ThreadsThatReadAPartAtOnceSeeOneElement)
{
    for (int round = 0; round < 50; ++round) {
        Array const array(std::vector { part(0, 0, 100) });
        std::vector<std::thread> readers;
        std::vector<Value const*> seen(4);
        for (std::size_t i = 0; i < seen.size(); ++i) {
            readers.emplace_back([&array, &result = seen[i], i] {
                if (i == 0)
                    array.visit([](Value const&) { return true; });
                result = &array.at(99);
            });
        }
        for (auto& reader : readers)
            reader.join();
        for (auto const* element : seen)
            ASSERT_EQ(element, seen[0]);
        ASSERT_EQ(*seen[0], Value(99));
    }
}

TEST(ArrayPartDeathTest, APartThatMakesAnotherNumberOfElementsStopsTheProcess)
{
    Array const array(std::vector { Array::Part { .count = 2, .make = [] { return std::vector<Value>(1); } } });
    EXPECT_DEATH((void)array.at(0), "a part of an array made another number of elements than it has");
}

}

}
