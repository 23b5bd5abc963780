#include "ZelvoraPlatform/Concurrency/Block.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zelvora::platform {

namespace {

TEST(BlockTest, ABlockCallsItsCallable)
{
    int calls = 0;
    Block<void()> block([&calls] { ++calls; });
    EXPECT_TRUE(block);
    block();
    block();
    EXPECT_EQ(calls, 2);
}

TEST(BlockTest, ArgumentsAndResultPassThrough)
{
    Block<std::string(std::string, std::unique_ptr<int>)> block(
        [](std::string text, std::unique_ptr<int> number) { return std::move(text) + std::to_string(*number); });
    EXPECT_EQ(block("a", std::make_unique<int>(7)), "a7");
}

TEST(BlockTest, ABlockMayOwnAnObjectThatCannotBeCopied)
{
    Block<int()> block([owned = std::make_unique<int>(7)] { return *owned; });
    auto moved = std::move(block);
    EXPECT_EQ(moved(), 7);
}

TEST(BlockTest, AnEmptyBlockIsFalse)
{
    EXPECT_FALSE(Block<void()>());
    EXPECT_FALSE(Block<void()>(nullptr));
}

TEST(BlockTest, ABlockDestroysWhatItOwns)
{
    auto const watched = std::make_shared<int>();
    {
        Block<void()> const block([watched] { });
        EXPECT_EQ(watched.use_count(), 2);
    }
    EXPECT_EQ(watched.use_count(), 1);
}

TEST(BlockTest, ABlockMayKeepState)
{
    Block<int()> counter([count = 0]() mutable { return ++count; });
    EXPECT_EQ(counter(), 1);
    EXPECT_EQ(counter(), 2);
}

}

}
