#include "ZelvoraPlatform/Platform.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/fatalError.h"

#include <gtest/gtest.h>

#include <csignal>

namespace zelvora::platform {

namespace {

TEST(PlatformTest, TheInstalledPlatformIsTheCurrentOne)
{
    auto platform = std::make_unique<memory::Platform>();
    auto const* const installed = platform.get();
    Platform::install(std::move(platform));
    EXPECT_EQ(&Platform::current(), installed);
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
