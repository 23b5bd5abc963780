#include "ZelvoraPlatform/Concurrency/CompletionHandler.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace zelvora::platform {

namespace {

using Handler = CompletionHandler<void(int)>;

TEST(CompletionHandlerTest, ItPassesItsArgumentsOn)
{
    std::vector<int> received;
    Handler handler([&received](int value) { received.push_back(value); });
    handler(7);
    EXPECT_EQ(received, (std::vector<int> { 7 }));
}

TEST(CompletionHandlerTest, TheNewHandlerOwesTheCallAfterAMove)
{
    int calls = 0;
    {
        Handler first([&calls](int) { ++calls; });
        Handler second(std::move(first));
        second(1);
    }
    EXPECT_EQ(calls, 1);
}

TEST(CompletionHandlerTest, WhatItOwnsIsReleasedByTheCall)
{
    auto const watched = std::make_shared<int>();
    Handler handler([watched](int) { });
    EXPECT_EQ(watched.use_count(), 2);
    handler(1);
    EXPECT_EQ(watched.use_count(), 1);
}

TEST(CompletionHandlerTest, ItMayBeDestroyedByItsOwnCallback)
{
    std::optional<Handler> handler;
    int calls = 0;
    handler.emplace([&](int) {
        ++calls;
        handler.reset();
    });
    (*handler)(1);
    EXPECT_EQ(calls, 1);
}

TEST(CompletionHandlerDeathTest, CallingItTwiceStopsTheProcess)
{
    EXPECT_DEATH(
        {
            Handler handler([](int) { });
            handler(1);
            handler(2);
        },
        "Fatal error: a completion handler was called twice");
}

TEST(CompletionHandlerDeathTest, CallingItFromItsOwnCallbackStopsTheProcess)
{
    EXPECT_DEATH(
        {
            std::optional<Handler> handler;
            handler.emplace([&handler](int) { (*handler)(2); });
            (*handler)(1);
        },
        "Fatal error: a completion handler was called twice");
}

TEST(CompletionHandlerDeathTest, CallingAMovedFromHandlerStopsTheProcess)
{
    EXPECT_DEATH(
        {
            Handler first([](int) { });
            Handler second(std::move(first));
            second(1);
            first(1); // NOLINT(bugprone-use-after-move)
        },
        "Fatal error: a completion handler was called twice");
}

TEST(CompletionHandlerDeathTest, DestroyingItUncalledStopsTheProcess)
{
    EXPECT_DEATH(
        { Handler const handler([](int) { }); },
        "Fatal error: a completion handler was destroyed without having been called");
}

}

}
