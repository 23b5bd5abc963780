#include "ZelvoraPlatform/Platform.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/fatalError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <utility>

namespace zelvora::platform {

namespace {

TEST(PlatformTest, TheInstalledPlatformIsTheCurrentOne)
{
    auto platform = std::make_unique<memory::Platform>();
    auto const* const installed = platform.get();
    Platform::install(std::move(platform));
    EXPECT_EQ(&Platform::current(), installed);
}

TEST(PlatformTest, APlatformMayBeInstalledOnAnyThread)
{
    auto platform = std::make_unique<memory::Platform>();
    auto const* const installed = platform.get();
    tests::runOnThreads(1, [&](int) { Platform::install(std::move(platform)); });
    EXPECT_EQ(&Platform::current(), installed);
    tests::runOnThreads(4, [&](int) { EXPECT_EQ(&Platform::current(), installed); });
}

TEST(PlatformDeathTest, UsingThePlatformBeforeItIsInstalledStopsTheProcessAndSaysWhatToCall)
{
    EXPECT_DEATH((void)Platform::current(), "Fatal error: .*call Platform::install first");
}

TEST(PlatformDeathTest, InstallingTwiceStopsTheProcess)
{
    (void)memory::install();
    EXPECT_DEATH(
        Platform::install(std::make_unique<memory::Platform>()), "Fatal error: Platform::install was called twice");
}

TEST(FatalErrorDeathTest, ItWritesItsMessageOnStandardErrorAndAborts)
{
    EXPECT_EXIT(fatalError("the reason"), testing::KilledBySignal(SIGABRT), "^Fatal error: the reason\n");
}

}

}
