#include "ZelvoraAdapters/gtk/os/Logger.h"

#include "tests/support/gtk/JournalDouble.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

using platform::OSLogType;

bool isDebugEnabledWith(char const* setting)
{
    if (setting)
        g_setenv("G_MESSAGES_DEBUG", setting, TRUE);
    else
        g_unsetenv("G_MESSAGES_DEBUG");
    return gtk::Logger("com.example.sdk", "Category", JournalDouble::send).isEnabled(OSLogType::Debug);
}

}

TEST(GtkLoggerTest, AnEntryNamesItsSource)
{
    JournalDouble const journal;
    gtk::Logger("com.example.sdk", "Category", JournalDouble::send).log(OSLogType::Fault, "message");
    EXPECT_EQ(journal.entries(),
        (std::vector<JournalDouble::Entry> { {
            { "MESSAGE", "[ZelvoraSDK] message" },
            { "PRIORITY", "2" },
            { "SYSLOG_IDENTIFIER", "com.example.sdk" },
            { "SUBSYSTEM", "com.example.sdk" },
            { "CATEGORY", "Category" },
        } }));
}

TEST(GtkLoggerTest, DebugEntriesAreEnabledForASubsystemOrForAll)
{
    EXPECT_FALSE(isDebugEnabledWith(nullptr));
    EXPECT_FALSE(isDebugEnabledWith(""));
    EXPECT_FALSE(isDebugEnabledWith("com.example"));
    EXPECT_FALSE(isDebugEnabledWith("com.example.sdk2 other"));
    EXPECT_FALSE(isDebugEnabledWith("help"));
    EXPECT_TRUE(isDebugEnabledWith("all"));
    EXPECT_TRUE(isDebugEnabledWith("com.example.sdk"));
    EXPECT_TRUE(isDebugEnabledWith("other com.example.sdk another"));
}

TEST(GtkLoggerTest, TheUsersSettingIsReadOncePerLogger)
{
    g_unsetenv("G_MESSAGES_DEBUG");
    gtk::Logger const logger("com.example.sdk", "Category", JournalDouble::send);
    g_setenv("G_MESSAGES_DEBUG", "all", TRUE);
    EXPECT_FALSE(logger.isEnabled(OSLogType::Debug));
}

TEST(GtkLoggerTest, AnEntryOfADisabledTypeIsNotSent)
{
    g_unsetenv("G_MESSAGES_DEBUG");
    JournalDouble const journal;
    gtk::Logger("com.example.sdk", "Category", JournalDouble::send).log(OSLogType::Debug, "message");
    EXPECT_TRUE(journal.entries().empty());
}

TEST(GtkLoggerTest, WithoutAJournalEntriesAreDropped)
{
    JournalDouble const journal;
    gtk::Logger logger("com.example.sdk", "Category", JournalDouble::sendToNobody);
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    logger.log(OSLogType::Error, "message");
    EXPECT_EQ(testing::internal::GetCapturedStderr() + testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(journal.entries().empty());
}

TEST(GtkLoggerTest, TheSystemsOwnSenderTakesEntriesOfAnyLength)
{
    gtk::Logger logger("com.example.sdk", "Category");
    testing::internal::CaptureStderr();
    logger.log(OSLogType::Info, "a test of the system's log");
    logger.log(OSLogType::Info, std::string(3'000'000, 'x'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}
