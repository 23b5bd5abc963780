#include "tests/uikit/doubles/Log.h"
#include "tests/uikit/module/SurfaceTest.h"

#include <os/log.h>

namespace zelvora::tests {

namespace {

class LoggerTest : public SurfaceTest { };

TEST_F(LoggerTest, EveryOperationHasItsTypeInTheSystemLogAndALineOnStandardOutput)
{
    doubles::setDebugLogged(true);
    doubles::clearLog();
    testing::internal::CaptureStdout();
    [ZelvoraLogger d:@"d"];
    [ZelvoraLogger i:@"i"];
    [ZelvoraLogger e:@"e"];
    [ZelvoraLogger l:@"l"];
    [ZelvoraLogger w:@"w"];
    [ZelvoraLogger c:@"c"];
    [ZelvoraLogger n:@"n"];
    [ZelvoraLogger t:@"t"];
    [ZelvoraLogger f:@"공유"];
    auto const printed = testing::internal::GetCapturedStdout();

    std::vector<std::pair<std::string, std::uint8_t>> entries;
    for (auto const& entry : doubles::logEntries())
        entries.emplace_back(entry.text, entry.type);
    std::vector<std::pair<std::string, std::uint8_t>> const expected {
        { "[ZelvoraSDK] d", OS_LOG_TYPE_DEBUG },
        { "[ZelvoraSDK] i", OS_LOG_TYPE_INFO },
        { "[ZelvoraSDK] e", OS_LOG_TYPE_ERROR },
        { "[ZelvoraSDK] l", OS_LOG_TYPE_DEFAULT },
        { "[ZelvoraSDK] w", OS_LOG_TYPE_ERROR },
        { "[ZelvoraSDK] c", OS_LOG_TYPE_FAULT },
        { "[ZelvoraSDK] n", OS_LOG_TYPE_DEFAULT },
        { "[ZelvoraSDK] t", OS_LOG_TYPE_DEBUG },
        { "[ZelvoraSDK] 공유", OS_LOG_TYPE_FAULT },
    };
    EXPECT_EQ(entries, expected);
    EXPECT_TRUE(printed.starts_with("[ZelvoraSDK-debug] d\n[ZelvoraSDK-debug] i\n")) << printed;
    EXPECT_TRUE(printed.ends_with("[ZelvoraSDK-debug] 공유\n")) << printed;
}

}

}
