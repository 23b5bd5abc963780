#pragma once

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// An entry of the system log.
struct LogEntry {
    platform::OSLogType type = platform::OSLogType::Default;
    std::string text;

    bool operator==(LogEntry const&) const = default;
};

inline constexpr platform::OSLogType logTypes[] = { platform::OSLogType::Default, platform::OSLogType::Info,
    platform::OSLogType::Debug, platform::OSLogType::Error, platform::OSLogType::Fault };

[[nodiscard]] inline std::string nameOf(platform::OSLogType type)
{
    using enum platform::OSLogType;
    switch (type) {
    case Default:
        return "Default";
    case Info:
        return "Info";
    case Debug:
        return "Debug";
    case Error:
        return "Error";
    case Fault:
        return "Fault";
    }
    return "type " + std::to_string(static_cast<int>(type));
}

/// For a failure: what is at the byte `position` of an entry that may have a million.
[[nodiscard]] inline std::string excerpt(LogEntry const& entry, std::size_t position)
{
    constexpr std::size_t enough = 80;
    auto const text = testing::PrintToString(entry.text.substr(position, enough));
    return nameOf(entry.type) + ", " + std::to_string(entry.text.size()) + " bytes, from byte "
        + std::to_string(position) + " on: " + text;
}

/// Fails at the first entry that differs, with the place where it does.
[[nodiscard]] inline testing::AssertionResult areEqual(
    std::vector<LogEntry> const& entries, std::vector<LogEntry> const& expected)
{
    auto const [entry, other] = std::ranges::mismatch(entries, expected);
    if (entry == entries.end() && other == expected.end())
        return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure()
        << entries.size() << " entries where " << expected.size() << " are expected. Entry " << entry - entries.begin();
    if (entry == entries.end())
        return failure << " is missing: " << excerpt(*other, 0);
    if (other == expected.end())
        return failure << " is one too many: " << excerpt(*entry, 0);
    std::size_t position = 0;
    if (entry->text != other->text) {
        auto const difference = std::ranges::mismatch(entry->text, other->text).in1;
        position = static_cast<std::size_t>(difference - entry->text.begin());
    }
    return failure << "\n is       " << excerpt(*entry, position) << "\n expected " << excerpt(*other, position);
}

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
        EXPECT_TRUE(logger->isEnabled(type)) << nameOf(type);
        logger->log(type, "message");
        expected.push_back({ type, "[ZelvoraSDK] message" });
    }
    EXPECT_TRUE(areEqual(this->m_harness.entries(), expected));
}

TYPED_TEST_P(LoggerContract, DebugEntriesAreOffUnlessTheUserWantsThem)
{
    this->m_harness.setDebugEnabled(false);
    auto const logger = this->makeLogger();
    for (auto const type : logTypes)
        EXPECT_EQ(logger->isEnabled(type), type != platform::OSLogType::Debug) << nameOf(type);
}

TYPED_TEST_P(LoggerContract, AnEmptyMessageIsAnEntry)
{
    this->makeLogger()->log(platform::OSLogType::Info, "");
    EXPECT_TRUE(areEqual(
        this->m_harness.entries(), (std::vector<LogEntry> { { platform::OSLogType::Info, "[ZelvoraSDK] " } })));
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
    EXPECT_TRUE(areEqual(this->m_harness.entries(), expected));
}

TYPED_TEST_P(LoggerContract, ManyThreadsMayLogAtOnce)
{
    auto const logger = this->makeLogger();
    runOnThreads(4, [&](int) {
        for (int i = 0; i < 250; ++i)
            logger->log(platform::OSLogType::Info, "message");
    });
    EXPECT_TRUE(areEqual(
        this->m_harness.entries(), std::vector<LogEntry>(1000, { platform::OSLogType::Info, "[ZelvoraSDK] message" })));
}

REGISTER_TYPED_TEST_SUITE_P(LoggerContract, EachTypeIsLoggedAsItself, DebugEntriesAreOffUnlessTheUserWantsThem,
    AnEmptyMessageIsAnEntry, TheMessageIsLoggedUnchangedAsFarAsTheLogKeepsIt, ManyThreadsMayLogAtOnce);

}
