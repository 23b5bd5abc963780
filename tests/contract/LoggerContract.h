#pragma once

#include "ZelvoraPlatform/os/Logger.h"
#include "tests/support/runOnThreads.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace zelvora::tests {

/// An entry of the system log.
struct LogEntry {
    platform::OSLogType type = platform::OSLogType::Default;
    std::string text;

    bool operator==(LogEntry const&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, LogEntry const& entry)
{
    constexpr std::size_t enough = 80;
    return stream << static_cast<int>(entry.type) << ' ' << entry.text.substr(0, enough);
}

inline constexpr platform::OSLogType logTypes[] = { platform::OSLogType::Default, platform::OSLogType::Info,
    platform::OSLogType::Debug, platform::OSLogType::Error, platform::OSLogType::Fault };

/// What every system log promises. A harness acts as the system:
///
///     std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category);
///     // All entries, in order.
///     std::vector<LogEntry> entries();
///     // Sets whether the user wants debug entries, for loggers that are made afterwards.
///     void setDebugEnabled(bool enabled);
///     // What the log keeps of a message. Logs may end it at a NUL, or shorten a long one.
///     std::string kept(std::string const& message);
template<typename Harness>
class LoggerContract : public testing::Test {
protected:
    std::unique_ptr<platform::Logger> makeLogger() { return m_harness.makeLogger("com.example.sdk", "Category"); }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(LoggerContract);

TYPED_TEST_P(LoggerContract, EachTypeIsLoggedAsItself)
{
    this->m_harness.setDebugEnabled(true);
    auto const logger = this->makeLogger();
    std::vector<LogEntry> expected;
    for (auto const type : logTypes) {
        EXPECT_TRUE(logger->isEnabled(type));
        logger->log(type, "message");
        expected.push_back({ type, "[ZelvoraSDK] message" });
    }
    EXPECT_EQ(this->m_harness.entries(), expected);
}

TYPED_TEST_P(LoggerContract, DebugEntriesAreOffUnlessTheUserWantsThem)
{
    this->m_harness.setDebugEnabled(false);
    auto const logger = this->makeLogger();
    for (auto const type : logTypes)
        EXPECT_EQ(logger->isEnabled(type), type != platform::OSLogType::Debug);
}

TYPED_TEST_P(LoggerContract, AnEmptyMessageIsAnEntry)
{
    this->makeLogger()->log(platform::OSLogType::Info, "");
    EXPECT_EQ(this->m_harness.entries(), (std::vector<LogEntry> { { platform::OSLogType::Info, "[ZelvoraSDK] " } }));
}

TYPED_TEST_P(LoggerContract, TheMessageIsLoggedUnchangedAsFarAsTheLogKeepsIt)
{
    using namespace std::string_literals;
    auto const logger = this->makeLogger();
    std::vector<LogEntry> expected;
    for (auto const& message : { "%s %n %d"s, "두 줄\n과 한 줄"s, "PRIORITY=0\nMESSAGE=other"s, "nul \0 inside"s,
             "\xff\xfe not text"s, std::string(1'000'000, 'x') }) {
        logger->log(platform::OSLogType::Error, message);
        expected.push_back({ platform::OSLogType::Error, "[ZelvoraSDK] " + this->m_harness.kept(message) });
    }
    EXPECT_EQ(this->m_harness.entries(), expected);
}

TYPED_TEST_P(LoggerContract, ManyThreadsMayLogAtOnce)
{
    auto const logger = this->makeLogger();
    runOnThreads(4, [&](int) {
        for (int i = 0; i < 250; ++i)
            logger->log(platform::OSLogType::Info, "message");
    });
    EXPECT_EQ(
        this->m_harness.entries(), std::vector<LogEntry>(1000, { platform::OSLogType::Info, "[ZelvoraSDK] message" }));
}

REGISTER_TYPED_TEST_SUITE_P(LoggerContract, EachTypeIsLoggedAsItself, DebugEntriesAreOffUnlessTheUserWantsThem,
    AnEmptyMessageIsAnEntry, TheMessageIsLoggedUnchangedAsFarAsTheLogKeepsIt, ManyThreadsMayLogAtOnce);

}
