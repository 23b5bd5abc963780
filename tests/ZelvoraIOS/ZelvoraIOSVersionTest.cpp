#include "ZelvoraIOS/ZelvoraIOSVersion.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

TEST(VersionTest, TheModuleExportsTheVersionNumberOnePointZero)
{
    EXPECT_EQ(ZelvoraIOSVersionNumber, 1.0);
}

TEST(VersionTest, TheModuleExportsAVersionStringThatNamesIt)
{
    EXPECT_NE(std::string_view(ZelvoraIOSVersionString).find("ZelvoraIOS"), std::string_view::npos);
}

}
