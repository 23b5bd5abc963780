#include "ZelvoraIOS/ZelvoraLogger.h"

#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"
#include "tests/support/FileBytes.h"
#include "tests/support/StandardOutput.h"
#include "tests/support/TemporaryDirectory.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace zelvora::tests {

namespace {

using Operation = void (*)(std::string const&);

class ZelvoraLoggerTest : public SDKTest {
protected:
    void expectLoggedAs(OSLogType type, Operation operation)
    {
        StandardOutput const output;
        operation("one message");
        EXPECT_EQ(platform.log().lines(), (std::vector<memory::Log::Line> { { type, "[ZelvoraSDK] one message" } }));
        EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] one message\n");
    }
};

TEST_F(ZelvoraLoggerTest, DLogsAsDebug)
{
    expectLoggedAs(OSLogType::Debug, &ZelvoraLogger::d);
}

TEST_F(ZelvoraLoggerTest, ILogsAsInfo)
{
    expectLoggedAs(OSLogType::Info, &ZelvoraLogger::i);
}

TEST_F(ZelvoraLoggerTest, ELogsAsError)
{
    expectLoggedAs(OSLogType::Error, &ZelvoraLogger::e);
}

TEST_F(ZelvoraLoggerTest, LLogsAsDefault)
{
    expectLoggedAs(OSLogType::Default, &ZelvoraLogger::l);
}

TEST_F(ZelvoraLoggerTest, WLogsAsError)
{
    expectLoggedAs(OSLogType::Error, &ZelvoraLogger::w);
}

TEST_F(ZelvoraLoggerTest, CLogsAsFault)
{
    expectLoggedAs(OSLogType::Fault, &ZelvoraLogger::c);
}

TEST_F(ZelvoraLoggerTest, NLogsAsDefault)
{
    expectLoggedAs(OSLogType::Default, &ZelvoraLogger::n);
}

TEST_F(ZelvoraLoggerTest, TLogsAsDebug)
{
    expectLoggedAs(OSLogType::Debug, &ZelvoraLogger::t);
}

TEST_F(ZelvoraLoggerTest, FLogsAsFault)
{
    expectLoggedAs(OSLogType::Fault, &ZelvoraLogger::f);
}

TEST_F(ZelvoraLoggerTest, AnEmptyMessageLeavesThePrefixesAlone)
{
    StandardOutput const output;
    ZelvoraLogger::d("");
    EXPECT_EQ(platform.log().lines(), (std::vector<memory::Log::Line> { { OSLogType::Debug, "[ZelvoraSDK] " } }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] \n");
}

TEST_F(ZelvoraLoggerTest, ATypeThatTheSystemFiltersStillReachesStandardOutput)
{
    platform.log().setEnabled(OSLogType::Debug, false);
    StandardOutput const output;
    ZelvoraLogger::d("quiet");
    ZelvoraLogger::t("quiet too");
    ZelvoraLogger::i("loud");
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Info, "loud" } }));
    EXPECT_EQ(output.lines(),
        (std::vector<std::string> {
            "[ZelvoraSDK-debug] quiet", "[ZelvoraSDK-debug] quiet too", "[ZelvoraSDK-debug] loud" }));
}

TEST_F(ZelvoraLoggerTest, EachTypeIsAskedAboutOnItsOwn)
{
    platform.log().setEnabled(OSLogType::Error, false);
    ZelvoraLogger::e("error");
    ZelvoraLogger::w("warning");
    ZelvoraLogger::f("fault");
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Fault, "fault" } }));
}

TEST_F(ZelvoraLoggerTest, AMessageIsNeverReadAsAFormat)
{
    StandardOutput const output;
    ZelvoraLogger::i("%s %d %n 100%");
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Info, "%s %d %n 100%" } }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] %s %d %n 100%\n");
}

TEST_F(ZelvoraLoggerTest, KoreanTextAndZeroBytesPassUnchanged)
{
    StandardOutput const output;
    std::string const message("가나\0다", 10);
    ZelvoraLogger::d(message);
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Debug, message } }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] " + message + "\n");
}

TEST_F(ZelvoraLoggerTest, TheSystemLoggerIsMadeOnFirstUse)
{
    EXPECT_TRUE(platform.log().loggersMade().empty());
    ZelvoraLogger::d("first");
    EXPECT_EQ(platform.log().loggersMade().size(), 1U);
}

TEST_F(ZelvoraLoggerTest, TheSystemLoggerHasTheCategoryOfTheSDKAndAReverseDNSSubsystem)
{
    ZelvoraLogger::d("first");
    auto const made = platform.log().loggersMade();
    ASSERT_EQ(made.size(), 1U);
    EXPECT_EQ(made.front().category, "ZelvoraSDK");
    EXPECT_EQ(made.front().subsystem, "com.zelvora.sdk.ios");
}

TEST_F(ZelvoraLoggerTest, AllOperationsShareOneSystemLogger)
{
    for (auto const operation : { &ZelvoraLogger::d, &ZelvoraLogger::i, &ZelvoraLogger::e, &ZelvoraLogger::l,
             &ZelvoraLogger::w, &ZelvoraLogger::c, &ZelvoraLogger::n, &ZelvoraLogger::t, &ZelvoraLogger::f })
        operation("x");
    EXPECT_EQ(platform.log().loggersMade().size(), 1U);
    EXPECT_EQ(platform.log().lines().size(), 9U);
}

TEST_F(ZelvoraLoggerTest, ThreadsThatLogFirstAtOnceMakeOneLoggerAndLoseNoLine)
{
    constexpr std::size_t threadCount = 8;
    constexpr std::size_t linesEach = 50;
    StandardOutput const output;
    {
        std::array<std::thread, threadCount> threads;
        for (std::size_t thread = 0; thread < threadCount; ++thread) {
            threads[thread] = std::thread([thread] {
                for (std::size_t line = 0; line < linesEach; ++line)
                    ZelvoraLogger::i(std::to_string(thread) + " says " + std::to_string(line));
            });
        }
        for (auto& thread : threads)
            thread.join();
    }
    EXPECT_EQ(platform.log().loggersMade().size(), 1U);

    std::vector<std::string> expected;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        for (std::size_t line = 0; line < linesEach; ++line)
            expected.push_back(std::to_string(thread) + " says " + std::to_string(line));
    }
    auto logged = logMessages(OSLogType::Info);
    std::ranges::sort(logged);
    std::ranges::sort(expected);
    EXPECT_EQ(logged, expected);

    std::vector<std::string> printed;
    for (auto const& line : output.lines()) {
        ASSERT_TRUE(line.starts_with("[ZelvoraSDK-debug] ")) << line;
        printed.push_back(line.substr(std::string_view("[ZelvoraSDK-debug] ").size()));
    }
    std::ranges::sort(printed);
    EXPECT_EQ(printed, expected);
}

TEST(ZelvoraLoggerOrderTest, TheSystemLogHasALineBeforeStandardOutput)
{
    auto& platform = tests::install<WatchingPlatform>();
    StandardOutput const output;
    std::vector<std::string> printedBefore;
    platform.watchLog([&](std::string const&) { printedBefore.push_back(output.text()); });
    ZelvoraLogger::i("one");
    EXPECT_EQ(printedBefore, (std::vector<std::string> { "" }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] one\n");
}

TEST(ZelvoraLoggerDeathTest, AFileHasEveryLineOfAProcessThatCrashed)
{
    TemporaryDirectory const directory;
    auto const file = directory / "output";
    EXPECT_EXIT(
        {
            tests::install<ForwardingPlatform>();
            if (std::freopen(file.c_str(), "w", stdout))
                ZelvoraLogger::e("last words");
            std::_Exit(EXIT_FAILURE);
        },
        testing::ExitedWithCode(EXIT_FAILURE), "");
    EXPECT_EQ(bytesOf(file), "[ZelvoraSDK-debug] last words\n");
}

class MortalLogger final : public platform::Logger {
public:
    ~MortalLogger() override { std::fputs("the logger is gone", stderr); }

    // platform::Logger
    [[nodiscard]] bool isEnabled(OSLogType) const override { return true; }
    void log(OSLogType, std::string const&) override { }
};

class MortalLoggerPlatform final : public ForwardingPlatform {
public:
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(std::string const&, std::string const&) override
    {
        return std::make_unique<MortalLogger>();
    }
};

TEST(ZelvoraLoggerDeathTest, ThreadsOfTheSystemMayLogWhileTheProcessEnds)
{
    tests::install<MortalLoggerPlatform>();
    EXPECT_EXIT(
        {
            ZelvoraLogger::d("first");
            std::exit(EXIT_SUCCESS);
        },
        testing::ExitedWithCode(EXIT_SUCCESS), "^$")
        << "the logger must outlive the process's destructors";
}

}

}
