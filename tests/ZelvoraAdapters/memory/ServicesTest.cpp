#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

namespace {

using platform::OSLogType;
using platform::UIApplicationState;
using platform::Value;
using Status = platform::ATTrackingAuthorizationStatus;

class ServicesTest : public ::testing::Test {
protected:
    memory::Platform platform;
};

}

TEST_F(ServicesTest, PreferencesKeepValuesAndTheOrderOfChanges)
{
    auto& defaults = platform.standardUserDefaults();
    defaults.setObject(Value("text"), "a");
    defaults.setDouble(1.5, "b");
    defaults.setObject(platform::Array { platform::Null {} }, "c");
    EXPECT_EQ(defaults.object("a"), Value("text"));
    EXPECT_EQ(defaults.object("b"), Value(1.5));
    EXPECT_EQ(defaults.object("missing"), std::nullopt);
    defaults.removeObject("a");
    defaults.setObject(std::nullopt, "b");
    EXPECT_EQ(defaults.contents(), (memory::UserDefaults::Contents { { "c", platform::Array { platform::Null {} } } }));
    EXPECT_EQ(defaults.calls(),
        (std::vector<std::string> { "setObject a", "setDouble b", "setObject c", "removeObject a", "setObject b" }));
}

TEST_F(ServicesTest, PreferencesRefuseWhatTheInterfaceForbids)
{
    EXPECT_DEATH(platform.standardUserDefaults().setObject(Value(), "a"), "bare null marker");
    Value deep = platform::Array {};
    for (std::size_t level = 0; level < Value::maximumNesting; ++level)
        deep = platform::Array { deep };
    EXPECT_DEATH(platform.standardUserDefaults().setObject(deep, "a"), "nests too deep");
}

TEST_F(ServicesTest, StoredValuesOfAnEarlierLaunchAreNotCalls)
{
    memory::Options options;
    options.storedValues = { { "a", 1 } };
    memory::Platform const later(std::move(options));
    auto& defaults = const_cast<memory::Platform&>(later).standardUserDefaults();
    EXPECT_EQ(defaults.object("a"), Value(1));
    EXPECT_TRUE(defaults.calls().empty());
}

TEST_F(ServicesTest, TheLogKeepsLinesAndWhatLoggersWereMadeFor)
{
    auto const logger = platform.makeLogger("com.example", "category");
    EXPECT_TRUE(logger->isEnabled(OSLogType::Debug));
    logger->log(OSLogType::Info, "message");
    EXPECT_EQ(platform.log().lines(), (std::vector<memory::Log::Line> { { OSLogType::Info, "[ZelvoraSDK] message" } }));
    EXPECT_TRUE(platform.log().holds(OSLogType::Info, "message"));
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "message"));
    EXPECT_EQ(platform.log().loggersMade(), (std::vector<memory::Log::Handle> { { "com.example", "category" } }));

    platform.log().setEnabled(OSLogType::Debug, false);
    EXPECT_FALSE(logger->isEnabled(OSLogType::Debug));
    EXPECT_TRUE(logger->isEnabled(OSLogType::Error));
}

TEST_F(ServicesTest, BecomingActiveIsPostedAfterTheStateChanged)
{
    auto const observer = std::make_shared<int>();
    std::vector<UIApplicationState> seen;
    platform.notificationCenter().addObserver(observer, platform::UIApplication::didBecomeActiveNotification,
        [&](auto const&) { seen.push_back(platform.application().applicationState()); });
    platform.application().setApplicationState(UIApplicationState::Active);
    platform.application().setApplicationState(UIApplicationState::Background);
    EXPECT_TRUE(seen.empty());
    platform.application().setApplicationState(UIApplicationState::Active);
    EXPECT_EQ(seen, std::vector { UIApplicationState::Active });
}

TEST_F(ServicesTest, TheApplicationOpensTheSchemesThatItWasGiven)
{
    auto& application = platform.application();
    application.setOpenableSchemes({ "tel" });
    auto const call = *platform::URL::parse("TEL:123");
    auto const mail = *platform::URL::parse("mailto:a@example.com");
    EXPECT_TRUE(application.canOpenURL(call));
    EXPECT_FALSE(application.canOpenURL(mail));
    EXPECT_EQ(application.askedURLs(), (std::vector { call, mail }));
    application.open(call);
    EXPECT_EQ(application.openedURLs(), std::vector { call });
}

TEST_F(ServicesTest, OneAnswerToTheTrackingPromptCompletesAllRequests)
{
    auto& tracking = platform.trackingManager();
    std::vector<Status> told;
    auto const note = [&told](Status status) { told.push_back(status); };
    tracking.requestTrackingAuthorization(note);
    tracking.requestTrackingAuthorization(note);
    platform.runUntilIdle();
    EXPECT_EQ(tracking.pendingRequestCount(), 2u);
    EXPECT_TRUE(told.empty());

    tracking.answer(Status::Denied);
    EXPECT_EQ(tracking.trackingAuthorizationStatus(), Status::Denied);
    EXPECT_EQ(tracking.pendingRequestCount(), 0u);
    platform.runUntilIdle();
    EXPECT_EQ(told, (std::vector { Status::Denied, Status::Denied }));

    tracking.requestTrackingAuthorization(note);
    EXPECT_EQ(tracking.pendingRequestCount(), 0u);
    platform.runUntilIdle();
    EXPECT_EQ(told.size(), 3u);
    EXPECT_EQ(tracking.requestCount(), 3u);
    EXPECT_DEATH(tracking.answer(Status::Denied), "while it was not shown");
}

TEST(ServicesEndTest, PendingTrackingRequestsCompleteWhenThePlatformEnds)
{
    std::vector<Status> told;
    {
        memory::Platform platform;
        auto const note = [&told](Status status) { told.push_back(status); };
        platform.trackingManager().requestTrackingAuthorization(note);
        platform.trackingManager().answer(Status::Authorized);
        platform.trackingManager().setStatus(Status::NotDetermined);
        platform.trackingManager().requestTrackingAuthorization(note);
    }
    EXPECT_EQ(told, (std::vector { Status::NotDetermined, Status::Authorized }));
}

TEST_F(ServicesTest, ServicesMayBeUsedOnManyThreads)
{
    auto const logger = platform.makeLogger("com.example", "category");
    constexpr int rounds = 300;
    auto const work = [&](std::string const& name) {
        for (int round = 0; round < rounds; ++round) {
            platform.standardUserDefaults().setDouble(round, name);
            logger->log(OSLogType::Debug, name);
            platform.globalQueue().async([] { });
            platform.globalQueue().runAll();
            platform.clock().advance(1);
        }
    };
    std::thread other([&work] { work("other"); });
    work("this");
    other.join();
    EXPECT_EQ(platform.log().lines().size(), 2u * rounds);
    EXPECT_EQ(platform.standardUserDefaults().calls().size(), 2u * rounds);
    EXPECT_EQ(platform.clock().now().timeIntervalSince(memory::Clock::start), 2.0 * rounds);
}

}
