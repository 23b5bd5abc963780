#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"
#include "tests/ZelvoraIOS/support/SequenceTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"

#include <algorithm>

namespace zelvora::tests {

namespace {

using Status = platform::ATTrackingAuthorizationStatus;
using State = platform::UIApplicationState;
using Texts = std::vector<std::string>;

class TrackingPermissionTest : public SequenceTest {
protected:
    using SequenceTest::SequenceTest;

    [[nodiscard]] Texts adIdLines() const
    {
        Texts texts;
        for (auto const& message : logMessages()) {
            if (!message.text.starts_with("ADID: "))
                continue;
            EXPECT_EQ(message.type, OSLogType::Debug);
            texts.push_back(message.text);
        }
        return texts;
    }
    // Whether an entry of the advertising id was written or removed.
    [[nodiscard]] bool touchedStoredAdId() const
    {
        return std::ranges::any_of(platform.standardUserDefaults().calls(),
            [](std::string const& call) { return call.find(fullKey("adid")) != std::string::npos; });
    }
};

// By what the user decided in an earlier launch, and by the state of the app.
class AuthorizedPermissionTest : public TrackingPermissionTest {
protected:
    AuthorizedPermissionTest() : TrackingPermissionTest({ .trackingStatus = Status::Authorized }) { }
};

class DeniedPermissionTest : public TrackingPermissionTest {
protected:
    DeniedPermissionTest() : TrackingPermissionTest({ .trackingStatus = Status::Denied }) { }
};

class RestrictedPermissionTest : public TrackingPermissionTest {
protected:
    RestrictedPermissionTest() : TrackingPermissionTest({ .trackingStatus = Status::Restricted }) { }
};

class InactivePermissionTest : public TrackingPermissionTest {
protected:
    explicit InactivePermissionTest(State state = State::Inactive)
        : TrackingPermissionTest({ .applicationState = state })
    {
    }
};

class BackgroundPermissionTest : public InactivePermissionTest {
protected:
    BackgroundPermissionTest() : InactivePermissionTest(State::Background) { }
};

TEST_F(AuthorizedPermissionTest, TheIdentifierIsTakenWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(adIdLines(), (Texts { std::string("ADID: ") + identifier }));
}

TEST_F(AuthorizedPermissionTest, TheIdentifierIsStoredWithoutExpiryAndThenLogged)
{
    begin();
    EXPECT_EQ(stored(fullKey("adid")), identifier);
    EXPECT_EQ(stored(fullKey("adid_ts")), std::nullopt);
    EXPECT_EQ(stored(fullKey("adid_exp")), std::nullopt);
    auto const lines = logMessages(OSLogType::Debug);
    auto const storing =
        std::ranges::find(lines, "set(forKey: adid, value: " + debugDescription(Value(identifier)) + ")");
    auto const telling = std::ranges::find(lines, std::string("ADID: ") + identifier);
    ASSERT_NE(storing, lines.end());
    ASSERT_NE(telling, lines.end());
    EXPECT_LT(storing, telling);
}

TEST_F(AuthorizedPermissionTest, AnInactiveAppIsNotWaitedFor)
{
    platform.application().setApplicationState(State::Background);
    begin();
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 0U);
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(AuthorizedPermissionTest, AnIdentifierOfZerosIsAnIdentifier)
{
    std::string const zeros = "00000000-0000-0000-0000-000000000000";
    platform.identifierManager().setAdvertisingIdentifier(zeros);
    begin();
    EXPECT_EQ(properties().adId, zeros);
    EXPECT_EQ(stored(fullKey("adid")), zeros);
    EXPECT_EQ(adIdLines(), (Texts { "ADID: " + zeros }));
}

TEST_F(AuthorizedPermissionTest, TheStatusIsReadOnTheMainQueueAndTheIdentifierTakenInTheBackground)
{
    EXPECT_TRUE(initialize());
    (void)platform.globalQueue().runAll();
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(properties().adId, std::nullopt);
    (void)platform.globalQueue().runAll();
    EXPECT_EQ(properties().adId, identifier);
}

TEST_F(DeniedPermissionTest, TheAdvertisingIdIsUnknownWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 2)" }));
    answerLookup();
    EXPECT_TRUE(errors.empty()) << "a denial is not an error";
}

TEST_F(DeniedPermissionTest, AStoredAdvertisingIdIsUnchanged)
{
    ZelvoraStorage::set("earlier", "adid", 5);
    platform.standardUserDefaults().clearCalls();
    begin();
    answerLookup();
    EXPECT_FALSE(touchedStoredAdId());
    EXPECT_EQ(stored(fullKey("adid")), "earlier");
    EXPECT_EQ(properties().adId, "unknown");
}

TEST_F(DeniedPermissionTest, AnInactiveAppIsNotWaitedFor)
{
    platform.application().setApplicationState(State::Inactive);
    begin();
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(RestrictedPermissionTest, TheAdvertisingIdIsUnknownWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 1)" }));
    EXPECT_FALSE(touchedStoredAdId());
}

TEST_F(TrackingPermissionTest, AnUndecidedUserIsAskedATenthOfASecondAfterTheAppIsSeenActive)
{
    begin();
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(platform.mainQueue().delayedCount(), 1U);
    advance(0.099);
    EXPECT_EQ(tracking().requestCount(), 0U);
    advance(0.001);
    EXPECT_EQ(tracking().requestCount(), 1U);
    EXPECT_EQ(tracking().pendingRequestCount(), 1U);
}

TEST_F(TrackingPermissionTest, ThePromptIsRequestedOnTheMainQueue)
{
    begin();
    platform.clock().advance(0.1);
    (void)platform.globalQueue().runAll();
    (void)platform.urlSession().loaderQueue().runAll();
    EXPECT_EQ(tracking().requestCount(), 0U);
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(TrackingPermissionTest, TheStatusIsReadOnTheMainQueue)
{
    EXPECT_TRUE(initialize());
    (void)platform.globalQueue().runAll();
    tracking().setStatus(Status::Denied);
    platform.runUntilIdle();
    EXPECT_EQ(properties().adId, "unknown");
}

TEST_F(TrackingPermissionTest, AUserWhoAllowsGivesTheIdentifier)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Authorized);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(stored(fullKey("adid")), identifier);
    EXPECT_EQ(adIdLines(), (Texts { std::string("ADID: ") + identifier }));
}

TEST_F(TrackingPermissionTest, AUserWhoDeniesLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Denied);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 2)" }));
    EXPECT_FALSE(touchedStoredAdId());
}

TEST_F(TrackingPermissionTest, APromptThatIsRestrictedLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Restricted);
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 1)" }));
}

TEST_F(TrackingPermissionTest, APromptThatDecidesNothingLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::NotDetermined);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 0)" }));
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(TrackingPermissionTest, TheUserIsAskedEvenIfTrackingIsSwitchedOff)
{
    begin({ .isTrackingEnabled = false });
    advance(0.1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(TrackingPermissionTest, TheUserIsAskedOncePerInstall)
{
    initializeAndFinish();
    initializeAndFinish();
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InactivePermissionTest, ThePromptWaitsForTheFirstActivationAndATenthOfASecondMore)
{
    begin();
    advance(1000);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 1U);

    platform.application().setApplicationState(State::Active);
    platform.runUntilIdle();
    EXPECT_EQ(tracking().requestCount(), 0U);
    advance(0.099);
    EXPECT_EQ(tracking().requestCount(), 0U);
    advance(0.001);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InactivePermissionTest, TheObserverIsRemovedAfterTheFirstActivation)
{
    begin();
    platform.application().setApplicationState(State::Active);
    platform.runUntilIdle();
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 0U);
    platform.application().setApplicationState(State::Inactive);
    platform.application().setApplicationState(State::Active);
    advance(1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InactivePermissionTest, ActivationsInQuickSuccessionCountOnce)
{
    begin();
    platform.application().setApplicationState(State::Active);
    platform.application().setApplicationState(State::Inactive);
    platform.application().setApplicationState(State::Active);
    EXPECT_GE(platform.mainQueue().pendingCount(), 2U) << "both notifications are queued";
    advance(0.1);
    advance(0.1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InactivePermissionTest, TheStateIsReadAndTheActivationReceivedOnTheMainQueue)
{
    EXPECT_TRUE(initialize());
    (void)platform.globalQueue().runAll();
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 0U);
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 1U);
    platform.application().setApplicationState(State::Active);
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 1U);
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 0U);
}

TEST_F(BackgroundPermissionTest, AnAppInTheBackgroundIsWaitedForToo)
{
    begin();
    advance(1000);
    EXPECT_EQ(tracking().requestCount(), 0U);
    platform.application().setApplicationState(State::Inactive);
    advance(1);
    EXPECT_EQ(tracking().requestCount(), 0U);
    platform.application().setApplicationState(State::Active);
    platform.runUntilIdle();
    advance(0.1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST(TrackingPermissionOrderTest, TheIdentifierIsSetBeforeItIsStored)
{
    auto& platform = tests::install<WatchingPlatform>(memory::Options { .trackingStatus = Status::Authorized });
    std::vector<std::optional<std::string>> whenStored;
    platform.watchStoring([&](std::string const& key) {
        if (key.ends_with("_adid"))
            whenStored.push_back(ZelvoraSDKInspector::properties().adId);
    });
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    EXPECT_EQ(whenStored, (std::vector<std::optional<std::string>> { identifier }));
}

TEST(TrackingPermissionOrderTest, AnUnknownIdentifierIsSetBeforeItIsLogged)
{
    auto& platform = tests::install<WatchingPlatform>(memory::Options { .trackingStatus = Status::Denied });
    std::vector<std::optional<std::string>> whenLogged;
    platform.watchLog([&](std::string const& message) {
        if (message.starts_with("ADID: "))
            whenLogged.push_back(ZelvoraSDKInspector::properties().adId);
    });
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    EXPECT_EQ(whenLogged, (std::vector<std::optional<std::string>> { "unknown" }));
}

// Notes the number of activation observers whenever a block is delayed.
class WatchedQueue final : public platform::DispatchQueue {
public:
    explicit WatchedQueue(memory::Platform& platform) : m_platform(platform) { }

    // platform::DispatchQueue
    void async(Work work) override { m_platform.mainQueue().async(std::move(work)); }
    void asyncAfter(platform::TimeInterval delay, Work work) override
    {
        observerCounts.push_back(m_platform.notificationCenter().observerCount(activation));
        m_platform.mainQueue().asyncAfter(delay, std::move(work));
    }

    std::vector<std::size_t> observerCounts;

private:
    memory::Platform& m_platform;
};

class WatchedQueuePlatform final : public ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;
    [[nodiscard]] WatchedQueue& mainQueue() override { return m_queue; }

private:
    WatchedQueue m_queue { memory };
};

TEST(TrackingPermissionOrderTest, TheObserverIsRemovedBeforeTheSequenceContinues)
{
    auto& platform = tests::install<WatchedQueuePlatform>(memory::Options { .applicationState = State::Inactive });
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    EXPECT_TRUE(platform.mainQueue().observerCounts.empty());
    platform.memory.application().setApplicationState(State::Active);
    platform.memory.runUntilIdle();
    EXPECT_EQ(platform.mainQueue().observerCounts, (std::vector<std::size_t> { 0 }));
}

}

}
