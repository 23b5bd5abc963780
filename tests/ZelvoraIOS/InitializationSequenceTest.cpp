#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <thread>

namespace zelvora::tests {

namespace {

using Errors = std::vector<std::optional<ZelvoraSDKError>>;
using Status = platform::ATTrackingAuthorizationStatus;
using State = platform::UIApplicationState;
using Texts = std::vector<std::string>;

constexpr char const* activation = platform::UIApplication::didBecomeActiveNotification;
constexpr char const* identifier = "0A1B2C3D-4E5F-4607-8899-AABBCCDDEEFF";
constexpr char const* foundShop = R"({"data": {"shopId": "shop-1"}})";

class InitializationSequenceTest : public SDKTest {
protected:
    using SDKTest::SDKTest;

    [[nodiscard]] static auto properties() { return ZelvoraSDKInspector::properties(); }
    [[nodiscard]] static bool isInitializing() { return ZelvoraSDKInspector::isInitializing(); }
    [[nodiscard]] memory::ATTrackingManager& tracking() { return platform.trackingManager(); }

    void begin(Configuration configuration = {})
    {
        ASSERT_TRUE(initialize(std::move(configuration)));
        platform.runUntilIdle();
    }
    void advance(double seconds)
    {
        platform.clock().advance(seconds);
        platform.runUntilIdle();
    }
    void answerLookup(std::string const& body = foundShop)
    {
        platform.urlSession().answer(200, body, 0);
        platform.runUntilIdle();
    }
    void answerPrompt(Status status)
    {
        tracking().answer(status);
        platform.runUntilIdle();
    }
    [[nodiscard]] std::size_t requestCount() { return platform.urlSession().requests().size(); }
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
    // Whether anything was written to or removed from the entries of the advertising id.
    [[nodiscard]] bool touchedStoredAdId() const
    {
        return std::ranges::any_of(platform.standardUserDefaults().calls(),
            [](std::string const& call) { return call.find(fullKey("adid")) != std::string::npos; });
    }
};

// Fixtures by what the user decided in an earlier launch.
class AuthorizedTest : public InitializationSequenceTest {
protected:
    AuthorizedTest() : InitializationSequenceTest({ .trackingStatus = Status::Authorized }) { }
};
class DeniedTest : public InitializationSequenceTest {
protected:
    DeniedTest() : InitializationSequenceTest({ .trackingStatus = Status::Denied }) { }
};
class RestrictedTest : public InitializationSequenceTest {
protected:
    RestrictedTest() : InitializationSequenceTest({ .trackingStatus = Status::Restricted }) { }
};
class InactiveTest : public InitializationSequenceTest {
protected:
    explicit InactiveTest(State state = State::Inactive) : InitializationSequenceTest({ .applicationState = state }) { }
};
class BackgroundTest : public InactiveTest {
protected:
    BackgroundTest() : InactiveTest(State::Background) { }
};

TEST_F(AuthorizedTest, TheIdentifierIsTakenWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(adIdLines(), (Texts { std::string("ADID: ") + identifier }));
}

TEST_F(AuthorizedTest, TheIdentifierIsStoredWithoutExpiryAndThenLogged)
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

TEST_F(AuthorizedTest, AnInactiveAppIsNotWaitedFor)
{
    platform.application().setApplicationState(State::Background);
    begin();
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(platform.notificationCenter().observerCount(activation), 0U);
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(AuthorizedTest, AnIdentifierOfZerosIsTreatedLikeAnother)
{
    std::string const zeros = "00000000-0000-0000-0000-000000000000";
    platform.identifierManager().setAdvertisingIdentifier(zeros);
    begin();
    EXPECT_EQ(properties().adId, zeros);
    EXPECT_EQ(stored(fullKey("adid")), zeros);
    EXPECT_EQ(adIdLines(), (Texts { "ADID: " + zeros }));
}

TEST_F(AuthorizedTest, TheStatusIsReadOnTheMainQueueAndTheIdentifierTakenInTheBackground)
{
    EXPECT_TRUE(initialize());
    (void)platform.globalQueue().runAll();
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(properties().adId, std::nullopt);
    (void)platform.globalQueue().runAll();
    EXPECT_EQ(properties().adId, identifier);
}

TEST_F(DeniedTest, TheAdvertisingIdIsUnknownWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 2)" }));
    answerLookup();
    EXPECT_TRUE(errors.empty()) << "a denial is no error";
}

TEST_F(DeniedTest, AStoredAdvertisingIdIsLeftAsItIs)
{
    ZelvoraStorage::set("earlier", "adid", 5);
    platform.standardUserDefaults().clearCalls();
    begin();
    answerLookup();
    EXPECT_FALSE(touchedStoredAdId());
    EXPECT_EQ(stored(fullKey("adid")), "earlier");
    EXPECT_EQ(properties().adId, "unknown");
}

TEST_F(DeniedTest, AnInactiveAppIsNotWaitedFor)
{
    platform.application().setApplicationState(State::Inactive);
    begin();
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(RestrictedTest, TheAdvertisingIdIsUnknownWithoutAPrompt)
{
    begin();
    advance(10);
    EXPECT_EQ(tracking().requestCount(), 0U);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 1)" }));
    EXPECT_FALSE(touchedStoredAdId());
}

TEST_F(InitializationSequenceTest, AnUndecidedUserIsAskedATenthOfASecondAfterTheAppIsSeenActive)
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

TEST_F(InitializationSequenceTest, ThePromptIsRequestedOnTheMainQueue)
{
    begin();
    platform.clock().advance(0.1);
    (void)platform.globalQueue().runAll();
    (void)platform.urlSession().loaderQueue().runAll();
    EXPECT_EQ(tracking().requestCount(), 0U);
    (void)platform.mainQueue().runAll();
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InitializationSequenceTest, TheStatusIsReadOnTheMainQueue)
{
    EXPECT_TRUE(initialize());
    (void)platform.globalQueue().runAll();
    tracking().setStatus(Status::Denied);
    platform.runUntilIdle();
    EXPECT_EQ(properties().adId, "unknown");
}

TEST_F(InitializationSequenceTest, AUserWhoAllowsGivesTheIdentifier)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Authorized);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(stored(fullKey("adid")), identifier);
    EXPECT_EQ(adIdLines(), (Texts { std::string("ADID: ") + identifier }));
}

TEST_F(InitializationSequenceTest, AUserWhoDeniesLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Denied);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 2)" }));
    EXPECT_FALSE(touchedStoredAdId());
}

TEST_F(InitializationSequenceTest, APromptThatIsRestrictedLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::Restricted);
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 1)" }));
}

TEST_F(InitializationSequenceTest, APromptThatDecidesNothingLeavesItUnknown)
{
    begin();
    advance(0.1);
    answerPrompt(Status::NotDetermined);
    EXPECT_EQ(properties().adId, "unknown");
    EXPECT_EQ(adIdLines(), (Texts { "ADID: unknown (Status: 0)" }));
    answerLookup();
    EXPECT_FALSE(isInitializing());
}

TEST_F(InitializationSequenceTest, TheUserIsAskedAlsoWhereTrackingIsSwitchedOff)
{
    begin({ .isTrackingEnabled = false });
    advance(0.1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InitializationSequenceTest, TheUserIsAskedOncePerInstall)
{
    initializeAndFinish();
    initializeAndFinish();
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InitializationSequenceTest, APromptWithoutAnswerKeepsTheSequenceWaiting)
{
    begin();
    advance(0.1);
    answerLookup();
    advance(100'000);
    EXPECT_TRUE(isInitializing());
    EXPECT_EQ(properties().adId, std::nullopt);
    answerPrompt(Status::Denied);
    EXPECT_FALSE(isInitializing());
}

TEST_F(InactiveTest, ThePromptWaitsForTheFirstActivationAndATenthOfASecondMore)
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

TEST_F(InactiveTest, TheObserverIsRemovedAfterTheFirstActivation)
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

TEST_F(InactiveTest, ActivationsInQuickSuccessionCountOnce)
{
    begin();
    platform.application().setApplicationState(State::Active);
    platform.application().setApplicationState(State::Inactive);
    platform.application().setApplicationState(State::Active);
    EXPECT_GE(platform.mainQueue().pendingCount(), 2U) << "both notifications are on their way";
    advance(0.1);
    advance(0.1);
    EXPECT_EQ(tracking().requestCount(), 1U);
}

TEST_F(InactiveTest, TheStateIsReadAndTheActivationHeardOnTheMainQueue)
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

TEST_F(InactiveTest, AnAppThatNeverBecomesActiveKeepsEveryFurtherInitializeOut)
{
    begin();
    answerLookup();
    advance(1e6);
    EXPECT_TRUE(isInitializing());
    auto const again = initialize();
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error(), ZelvoraSDKError::initializing());
    EXPECT_EQ(errors, (Errors { ZelvoraSDKError::initializing() }));
}

TEST_F(BackgroundTest, AnAppInTheBackgroundIsWaitedForToo)
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

TEST_F(InitializationSequenceTest, LookupAndPermissionRunSideBySide)
{
    begin();
    advance(0.1);
    EXPECT_EQ(requestCount(), 1U);
    EXPECT_EQ(tracking().pendingRequestCount(), 1U);
}

TEST_F(InitializationSequenceTest, TheSequenceWaitsForThePermissionAfterTheLookup)
{
    saveEvents(1);
    begin();
    answerLookup();
    EXPECT_EQ(properties().shopId, "shop-1");
    EXPECT_EQ(requestCount(), 1U);
    EXPECT_TRUE(isInitializing());
    advance(0.1);
    answerPrompt(Status::Authorized);
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_FALSE(isInitializing());
}

TEST_F(InitializationSequenceTest, TheSequenceWaitsForTheLookupAfterThePermission)
{
    saveEvents(1);
    begin();
    advance(0.1);
    answerPrompt(Status::Authorized);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(requestCount(), 1U);
    EXPECT_TRUE(isInitializing());
    answerLookup();
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_FALSE(isInitializing());
}

TEST_F(InitializationSequenceTest, QueuedEventsAreUploadedOnceWithTheIdentifierJustLearnt)
{
    saveEvents(600);
    initializeAndFinish();
    ASSERT_EQ(requestCount(), 2U);
    auto const body = bodyOf(platform.urlSession().requests().back());
    auto const* events = body.dictionary()->find("data")->array();
    ASSERT_EQ(events->size(), 500U);
    EXPECT_EQ(*events->at(0).dictionary()->find("adid"), Value(identifier));
    advance(1000);
    EXPECT_EQ(requestCount(), 2U);
}

TEST_F(AuthorizedTest, AFailedLookupStillUploadsOnceAndEndsTheSequence)
{
    saveEvents(2);
    begin();
    platform.urlSession().fail(memory::URLSession::notConnected());
    platform.runUntilIdle();
    EXPECT_EQ(errors.size(), 1U);
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_EQ(properties().shopId, std::nullopt);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_FALSE(isInitializing());
}

TEST_F(AuthorizedTest, TheSequenceDoesNotWaitForTheUpload)
{
    saveEvents(1);
    begin();
    answerLookup();
    EXPECT_EQ(platform.urlSession().unansweredCount(), 1U);
    EXPECT_FALSE(isInitializing());
}

TEST_F(AuthorizedTest, TheIdsStayUntilTheNextInitialize)
{
    initializeAndFinish();
    EXPECT_EQ(properties().shopId, "shop-1");
    tracking().setStatus(Status::Denied);
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_TRUE(initialize());
    EXPECT_EQ(properties().adId, identifier);
    EXPECT_EQ(properties().shopId, "shop-1");
    platform.runUntilIdle();
    EXPECT_EQ(properties().adId, "unknown");
}

TEST_F(AuthorizedTest, ALaunchMadeMeanwhileIsCarriedOutOnceAfterwards)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    begin();
    EXPECT_TRUE(sdk().start(presenter));
    platform.runUntilIdle();
    EXPECT_TRUE(platform.screen().transitions().empty());
    EXPECT_EQ(properties().pendingViewController, presenter);
    answerLookup();
    EXPECT_TRUE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    ASSERT_EQ(platform.screen().transitions().size(), 1U);
    EXPECT_EQ(platform.screen().transitions().front().kind, memory::Transition::Kind::Present);
    EXPECT_EQ(properties().pendingViewController, nullptr);
    EXPECT_TRUE(errors.empty());
    advance(1000);
    EXPECT_EQ(platform.screen().transitions().size(), 1U);

    memory::peer(*presenter).dismiss(platform::Animated::No);
}

TEST_F(AuthorizedTest, TheDeferredLaunchIsLoggedBeforeItIsMade)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    begin();
    EXPECT_TRUE(sdk().start(presenter));
    platform.log().clear();
    answerLookup();
    auto const lines = logMessages(OSLogType::Debug);
    auto const found = std::ranges::find(lines, "Executing deferred start after initialization");
    ASSERT_NE(found, lines.end());
    ASSERT_NE(found + 1, lines.end());
    EXPECT_TRUE((found + 1)->starts_with("Final URL: ")) << *(found + 1);
    memory::peer(*presenter).dismiss(platform::Animated::No);
}

TEST_F(AuthorizedTest, WithoutALaunchNothingIsLoggedAboutOne)
{
    begin();
    answerLookup();
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    EXPECT_EQ(properties().pendingViewController, nullptr);
}

TEST_F(AuthorizedTest, TheBusyFlagIsClearedInTheBackgroundAndTheDeferredLaunchWaitsForTheMainQueue)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    begin();
    EXPECT_TRUE(sdk().start(presenter));
    platform.urlSession().answer(200, foundShop);
    while (platform.urlSession().loaderQueue().runAll() + platform.globalQueue().runAll() > 0) { }
    EXPECT_FALSE(isInitializing());
    EXPECT_EQ(properties().pendingViewController, presenter);
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    EXPECT_EQ(platform.mainQueue().pendingCount(), 1U);
    EXPECT_TRUE(platform.mainQueue().runOne());
    EXPECT_TRUE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    EXPECT_EQ(properties().pendingViewController, nullptr);
    platform.runUntilIdle();
    EXPECT_EQ(platform.screen().transitions().size(), 1U);
    memory::peer(*presenter).dismiss(platform::Animated::No);
}

TEST_F(AuthorizedTest, AStartBetweenTheEndAndTheDeferredLaunchLaunchesAtOnce)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    begin();
    platform.urlSession().answer(200, foundShop);
    while (platform.urlSession().loaderQueue().runAll() + platform.globalQueue().runAll() > 0) { }
    ASSERT_FALSE(isInitializing());
    EXPECT_TRUE(sdk().start(presenter));
    EXPECT_EQ(properties().pendingViewController, nullptr);
    platform.runUntilIdle();
    EXPECT_EQ(platform.screen().transitions().size(), 1U);
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    memory::peer(*presenter).dismiss(platform::Animated::No);
}

TEST_F(AuthorizedTest, ADeferredLaunchThatFailsIsTakenBackAfterItsErrorWasTold)
{
    std::vector<std::string_view> codes;
    std::vector<bool> wasPending;
    EXPECT_TRUE(sdk().initialize(
        "user", "key", true, false, false, nullptr, nullptr, nullptr, [&](std::optional<ZelvoraSDKError> const& error) {
            codes.push_back(error->code());
            wasPending.push_back(static_cast<bool>(properties().pendingViewController));
        }));
    auto const presenter = std::make_shared<memory::ViewController>();
    EXPECT_TRUE(sdk().start(presenter));
    platform.runUntilIdle();
    answerLookup("{}");
    EXPECT_EQ(codes, (std::vector<std::string_view> { "E001" }));
    EXPECT_EQ(wasPending, (std::vector<bool> { true }));
    EXPECT_EQ(properties().pendingViewController, nullptr);
    EXPECT_EQ(presenter.use_count(), 1);
    EXPECT_TRUE(platform.screen().transitions().empty());
}

TEST_F(AuthorizedTest, ThePresenterOfADeferredLaunchIsHeldUntilThen)
{
    std::weak_ptr<memory::ViewController> watched;
    begin();
    {
        auto const presenter = std::make_shared<memory::ViewController>();
        watched = presenter;
        EXPECT_TRUE(sdk().start(presenter));
    }
    EXPECT_FALSE(watched.expired());
    answerLookup("{}");
    EXPECT_TRUE(watched.expired());
}

// A screen of a host that takes itself back from the SDK.
class LeavingViewController final : public memory::ViewController {
public:
    explicit LeavingViewController(bool& isGone) : m_isGone(isGone) { }
    ~LeavingViewController() override
    {
        ZelvoraSDK::shared().setDelegate(nullptr);
        m_isGone = true;
    }

private:
    bool& m_isGone;
};

TEST_F(AuthorizedTest, APresenterThatIsReplacedMayCallTheSDKWhenItGoes)
{
    begin();
    bool isGone = false;
    EXPECT_TRUE(sdk().start(std::make_shared<LeavingViewController>(isGone)));
    EXPECT_FALSE(isGone);
    EXPECT_TRUE(sdk().start(std::make_shared<memory::ViewController>()));
    EXPECT_TRUE(isGone);
}

TEST(InitializationOrderTest, TheIdentifierIsSetBeforeItIsStored)
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

TEST(InitializationOrderTest, AnUnknownIdentifierIsSetBeforeItIsLogged)
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

// What the facade looked like at the moment of each request.
class WatchedSession final : public platform::URLSession {
public:
    explicit WatchedSession(platform::URLSession& session) : m_session(session) { }

    void dataTask(platform::URLRequest request, Completion completion) override
    {
        wasInitializing.push_back(ZelvoraSDKInspector::isInitializing());
        m_session.dataTask(std::move(request), std::move(completion));
    }

    std::vector<bool> wasInitializing;

private:
    platform::URLSession& m_session;
};

class WatchedPlatform final : public ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;
    [[nodiscard]] WatchedSession& urlSession() override { return m_session; }

private:
    WatchedSession m_session { memory.urlSession() };
};

TEST(InitializationOrderTest, TheEventsAreSentBeforeTheBusyFlagIsCleared)
{
    auto& platform = tests::install<WatchedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    saveEvents(1);
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    platform.memory.urlSession().answer(200, foundShop);
    platform.memory.runUntilIdle();
    EXPECT_EQ(platform.urlSession().wasInitializing, (std::vector<bool> { true, true })) << "the lookup and the upload";
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

// How many observers of the activation there were whenever a block was put off.
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

TEST(InitializationOrderTest, TheObserverIsRemovedBeforeTheSequenceGoesOn)
{
    auto& platform = tests::install<WatchedQueuePlatform>(memory::Options { .applicationState = State::Inactive });
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    EXPECT_TRUE(platform.mainQueue().observerCounts.empty());
    platform.memory.application().setApplicationState(State::Active);
    platform.memory.runUntilIdle();
    EXPECT_EQ(platform.mainQueue().observerCounts, (std::vector<std::size_t> { 0 }));
}

// The background on real threads; the main queue and the loader are turned by the test, which plays the main thread.
class ThreadedPlatform final : public ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;
    [[nodiscard]] shared::ThreadPoolQueue& globalQueue() override { return m_globalQueue; }

    // Turns the main queue and the loader's until something has become so.
    template<typename Predicate>
    [[nodiscard]] bool turnUntil(Predicate isSo)
    {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isSo()) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            if (memory.mainQueue().runAll() + memory.urlSession().loaderQueue().runAll() == 0)
                std::this_thread::yield();
        }
        return true;
    }

private:
    shared::ThreadPoolQueue m_globalQueue { 4 };
};

TEST(InitializationThreadsTest, TheSequenceRunsOnBackgroundThreadsWhileTheMainThreadUsesTheSDK)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Authorized });
    auto& sdk = ZelvoraSDK::shared();
    saveEvents(3);
    for (int round = 0; round < 10; ++round) {
        EXPECT_TRUE(sdk.initialize("user", "key", true, round % 2 == 0, false));
        EXPECT_TRUE(platform.turnUntil([&] {
            if (platform.memory.urlSession().unansweredCount() > 0)
                platform.memory.urlSession().answer(200, foundShop);
            sdk.setAllowsSwipeBack(true);
            ZelvoraStorage::saveEventTrackingData(makeEvent("meanwhile"));
            (void)sdk.getCurrentUrl();
            return !ZelvoraSDKInspector::isInitializing();
        }));
        EXPECT_EQ(ZelvoraSDKInspector::properties().adId, identifier);
        EXPECT_EQ(ZelvoraSDKInspector::properties().shopId, "shop-1");
    }
}

TEST(InitializationThreadsTest, InitializedIsLoggedBeforeAnythingThatTheSequenceLogs)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    ZelvoraStorage::saveShopId("kept");
    for (int round = 0; round < 50; ++round) {
        platform.memory.log().clear();
        EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
        EXPECT_TRUE(platform.turnUntil([] { return !ZelvoraSDKInspector::isInitializing(); }));
        auto const lines = platform.memory.log().lines();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.front().text, "[ZelvoraSDK] Initialized");
    }
}

TEST(InitializationThreadsTest, TheHandlerHearsOfAFailedLookupOnABackgroundThread)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    std::mutex mutex;
    std::vector<std::thread::id> toldOn;
    EXPECT_TRUE(ZelvoraSDK::shared().initialize(
        "user", "key", true, false, false, nullptr, nullptr, nullptr, [&](std::optional<ZelvoraSDKError> const&) {
            std::scoped_lock const lock(mutex);
            toldOn.push_back(std::this_thread::get_id());
        }));
    EXPECT_TRUE(platform.turnUntil([&] { return platform.memory.urlSession().unansweredCount() > 0; }));
    platform.memory.urlSession().answer(500, "oops");
    EXPECT_TRUE(platform.turnUntil([] { return !ZelvoraSDKInspector::isInitializing(); }));
    std::scoped_lock const lock(mutex);
    ASSERT_EQ(toldOn.size(), 1U);
    EXPECT_NE(toldOn.front(), std::this_thread::get_id());
}

TEST(InitializationThreadsTest, ALaunchThatRacesWithTheEndIsMadeExactlyOnce)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    ZelvoraStorage::saveShopId("kept");
    for (int round = 0; round < 100; ++round) {
        auto const presenter = std::make_shared<memory::ViewController>();
        EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
        for (int turns = round; turns > 0; --turns)
            (void)platform.memory.mainQueue().runOne();
        EXPECT_TRUE(ZelvoraSDK::shared().start(presenter));
        EXPECT_TRUE(platform.turnUntil([&presenter] {
            return !ZelvoraSDKInspector::isInitializing() && memory::peer(*presenter).presentedViewController();
        }));
        memory::peer(*presenter).dismiss(platform::Animated::No);
        // The last hop of the sequence, where it is still on its way.
        EXPECT_TRUE(platform.turnUntil([] { return !ZelvoraSDKInspector::properties().pendingViewController; }));
        (void)platform.memory.mainQueue().runAll();
    }
    std::size_t presentations = 0;
    for (auto const& transition : platform.memory.screen().transitions())
        presentations += transition.kind == memory::Transition::Kind::Present ? 1 : 0;
    EXPECT_EQ(presentations, 100U);
}

}

}
