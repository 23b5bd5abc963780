#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <gtest/gtest.h>

namespace zelvora::platform {

namespace {

TEST(DictionaryTest, AnEmptyDictionaryHasNoEntries)
{
    Dictionary const empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.size(), 0U);
    EXPECT_EQ(empty.begin(), empty.end());
    EXPECT_EQ(empty.find(""), nullptr);
    EXPECT_EQ(empty.nesting(), 1U);
}

TEST(DictionaryTest, AValueIsFoundUnderExactlyItsKey)
{
    Dictionary const dictionary { { "b", 2 }, { "a", 1 }, { "", 0 }, { "한글", 3 } };
    EXPECT_EQ(dictionary.size(), 4U);
    EXPECT_EQ(*dictionary.find("a"), Value(1));
    EXPECT_EQ(*dictionary.find("b"), Value(2));
    EXPECT_EQ(*dictionary.find(""), Value(0));
    EXPECT_EQ(*dictionary.find("한글"), Value(3));
    for (auto const* key : { "A", "c", "aa", "ab", " a", "한" })
        EXPECT_EQ(dictionary.find(key), nullptr) << key;
}

TEST(DictionaryTest, KeysMayContainZeroBytes)
{
    std::string const key("a\0b", 3);
    Dictionary const dictionary { { "a", 1 }, { key, 2 } };
    EXPECT_EQ(*dictionary.find(key), Value(2));
    EXPECT_EQ(*dictionary.find("a"), Value(1));
}

TEST(DictionaryTest, EntriesAreOrderedByTheBytesOfTheirKeys)
{
    Dictionary const dictionary { { "한", 4 }, { "b", 3 }, { "B", 1 }, { "a", 2 } };
    std::vector<std::string> keys;
    for (auto const& [key, value] : dictionary)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string> { "B", "a", "b", "한" }));
}

TEST(DictionaryTest, IfAKeyRepeatsTheLastEntryWins)
{
    Dictionary const dictionary { { "a", 1 }, { "b", 2 }, { "a", 3 } };
    EXPECT_EQ(dictionary.size(), 2U);
    EXPECT_EQ(*dictionary.find("a"), Value(3));

    // No matter how many there are.
    Dictionary::Entries entries;
    for (int number = 0; number < 300; ++number)
        entries.emplace_back(std::to_string(number % 100), number);
    Dictionary const many(std::move(entries));
    EXPECT_EQ(many.size(), 100U);
    for (int number = 0; number < 100; ++number)
        EXPECT_EQ(*many.find(std::to_string(number)), Value(number + 200));
}

TEST(DictionaryTest, EqualityDoesNotDependOnTheOrderOfTheEntriesGiven)
{
    EXPECT_EQ((Dictionary { { "a", 1 }, { "b", 2 } }), (Dictionary { { "b", 2 }, { "a", 1 } }));
    EXPECT_NE((Dictionary { { "a", 1 } }), (Dictionary { { "a", 2 } }));
    EXPECT_NE((Dictionary { { "a", 1 } }), (Dictionary { { "b", 1 } }));
    EXPECT_NE((Dictionary { { "a", 1 } }), (Dictionary { { "a", 1 }, { "b", 2 } }));
    EXPECT_NE((Dictionary { { "a", Null {} } }), Dictionary {}) << "a null marker is a member";
}

TEST(DictionaryTest, FoundValuesStayValidWhileACopyLives)
{
    auto original = std::make_unique<Dictionary>(Dictionary { { "a", std::string(1000, 'x') } });
    auto const copy = *original;
    auto const* value = copy.find("a");
    EXPECT_EQ(value, original->find("a"));
    original.reset();
    EXPECT_EQ(*value->text(), std::string(1000, 'x'));
}

TEST(DictionaryTest, ManyEntriesAreAllFound)
{
    Dictionary::Entries entries;
    for (int i = 0; i < 5000; ++i)
        entries.emplace_back(std::to_string(i), i);
    Dictionary const dictionary(std::move(entries));
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(*dictionary.find(std::to_string(i)), Value(i));
    EXPECT_EQ(dictionary.find("5000"), nullptr);
}

TEST(DictionaryTest, NestingCountsItselfAndItsDeepestMember)
{
    EXPECT_EQ((Dictionary { { "a", 1 } }).nesting(), 1U);
    EXPECT_EQ((Dictionary { { "a", 1 }, { "b", Array { Dictionary {} } }, { "c", "x" } }).nesting(), 3U);
}

}

}
