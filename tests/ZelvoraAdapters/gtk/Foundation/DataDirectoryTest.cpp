#include "ZelvoraAdapters/gtk/Foundation/DataDirectory.h"

#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"
#include "ZelvoraAdapters/gtk/Foundation/Clock.h"
#include "tests/support/TemporaryDirectory.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>

namespace zelvora::tests {

TEST(DataDirectoryTest, IsTheBundlesFolderInTheUsersDataFolder)
{
    g_setenv("XDG_DATA_HOME", "/somewhere/data", TRUE);
    EXPECT_EQ(gtk::dataDirectory("com.example.host"), "/somewhere/data/com.example.host");
}

TEST(DataDirectoryTest, WithoutTheVariableItIsInTheUsersHome)
{
    g_unsetenv("XDG_DATA_HOME");
    g_setenv("HOME", "/somewhere/home", TRUE);
    EXPECT_EQ(gtk::dataDirectory("com.example.host"), "/somewhere/home/.local/share/com.example.host");
}

TEST(DataDirectoryTest, ARelativeVariableCountsAsUnset)
{
    g_setenv("XDG_DATA_HOME", "relative/data", TRUE);
    g_setenv("HOME", "/somewhere/home", TRUE);
    EXPECT_EQ(gtk::dataDirectory("com.example.host"), "/somewhere/home/.local/share/com.example.host");
}

TEST(DataDirectoryTest, WithoutABundleIdentifierItIsNamedAsTheProgram)
{
    g_setenv("XDG_DATA_HOME", "/somewhere/data", TRUE);
    g_set_prgname("shop");
    EXPECT_EQ(gtk::dataDirectory(std::nullopt), "/somewhere/data/shop");
}

TEST(DataDirectoryTest, IsCreatedWithItsParents)
{
    TemporaryDirectory const directory;
    auto const folder = directory.path() / "a" / "b";
    EXPECT_TRUE(gtk::ensureDataDirectory(folder));
    EXPECT_TRUE(gtk::ensureDataDirectory(folder));
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_FALSE(gtk::ensureDataDirectory(directory.write("file", "") / "below"));
    EXPECT_EQ(errno, ENOTDIR);
}

TEST(BundleTest, ItsIdentifierIsTheApplicationsIfItHasOne)
{
    EXPECT_EQ(gtk::Bundle("com.example.host").bundleIdentifier(), "com.example.host");
    EXPECT_EQ(gtk::Bundle(std::nullopt).bundleIdentifier(), std::nullopt);
}

TEST(BundleTest, WhatIsNoApplicationIdStopsTheProcess)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    for (std::string const id :
        { "../../x y", "", "shop", "com.example/../other", ".com.example", "com.example.", "com..example" })
        EXPECT_DEATH(gtk::Bundle { id }, "Fatal error: the bundle identifier \".*\" is not an application id") << id;
    EXPECT_DEATH(gtk::Bundle { std::string("com.example\0/..", 15) }, "Fatal error: the bundle identifier");
}

TEST(ClockTest, IsTheSystemsWallClock)
{
    auto const seconds = [] {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    };
    auto const before = seconds();
    auto const now = gtk::Clock().now().timeIntervalSince1970;
    auto const after = seconds();
    // The two readings are rounded differently.
    constexpr double microsecond = 1e-5;
    EXPECT_GE(now, before - microsecond);
    EXPECT_LE(now, after + microsecond);
}

}
