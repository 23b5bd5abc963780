#pragma once

#include "ZelvoraContract/support/Record.h"
#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

/// What the platform itself promises. A harness installs it, on the main thread:
///
///     // Runs the blocks of the main queue on the calling thread, the main one, until `done` returns true; false after
///     // half a minute. Those of the global queue run meanwhile, on other threads.
///     bool runUntil(std::function<bool()> const& done);
template<typename Harness>
class PlatformContract : public testing::Test {
protected:
    struct Place {
        std::thread::id thread;
        bool isMain = false;
    };

    static platform::Platform& platform() { return platform::Platform::current(); }
    static Place here() { return { std::this_thread::get_id(), platform().isMainThread() }; }
    static std::map<std::string, void const*> services()
    {
        auto& all = platform();
        return { { "mainBundle", &all.mainBundle() }, { "clock", &all.clock() },
            { "standardUserDefaults", &all.standardUserDefaults() },
            { "notificationCenter", &all.notificationCenter() }, { "urlSession", &all.urlSession() },
            { "jsonSerialization", &all.jsonSerialization() }, { "mainQueue", &all.mainQueue() },
            { "globalQueue", &all.globalQueue() }, { "trackingManager", &all.trackingManager() },
            { "identifierManager", &all.identifierManager() }, { "application", &all.application() } };
    }
    /// Where blocks of this queue run.
    std::vector<Place> placesOf(platform::DispatchQueue& queue)
    {
        constexpr std::size_t blockCount = 8;
        Record<Place> places;
        for (std::size_t i = 0; i < blockCount; ++i)
            queue.async([&] { places.add(here()); });
        EXPECT_TRUE(m_harness.runUntil([&] { return places.size() == blockCount; }));
        return places.all();
    }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(PlatformContract);

TYPED_TEST_P(PlatformContract, TheMainQueueRunsOnTheMainThread)
{
    for (auto const& place : this->placesOf(this->platform().mainQueue())) {
        EXPECT_TRUE(place.isMain);
        EXPECT_EQ(place.thread, std::this_thread::get_id());
    }
}

TYPED_TEST_P(PlatformContract, TheGlobalQueueRunsOffTheMainThread)
{
    for (auto const& place : this->placesOf(this->platform().globalQueue())) {
        EXPECT_FALSE(place.isMain) << "isMainThread says yes, as its body in platform::Platform does";
        EXPECT_NE(place.thread, std::this_thread::get_id());
    }
}

TYPED_TEST_P(PlatformContract, AThreadOfTheHostIsNotTheMainThread)
{
    EXPECT_TRUE(this->platform().isMainThread());
    runOnThreads(1, [&](int) { EXPECT_FALSE(this->platform().isMainThread()); });
}

TYPED_TEST_P(PlatformContract, EachServiceIsTheSameObjectEveryTimeAndOnEveryThread)
{
    auto const services = this->services();
    auto const expectSame = [&] {
        for (auto const& [name, service] : this->services())
            EXPECT_EQ(service, services.at(name)) << name;
    };
    expectSame();
    runOnThreads(4, [&](int) { expectSame(); });
}

TYPED_TEST_P(PlatformContract, EveryThreadGetsALogger)
{
    EXPECT_NE(this->platform().makeLogger("com.example.sdk", "Category"), nullptr);
    runOnThreads(4, [&](int) { EXPECT_NE(this->platform().makeLogger("com.example.sdk", "Category"), nullptr); });
}

REGISTER_TYPED_TEST_SUITE_P(PlatformContract, TheMainQueueRunsOnTheMainThread, TheGlobalQueueRunsOffTheMainThread,
    AThreadOfTheHostIsNotTheMainThread, EachServiceIsTheSameObjectEveryTimeAndOnEveryThread, EveryThreadGetsALogger);

}
