#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"
#include "tests/ZelvoraIOS/support/SequenceTest.h"

#include <algorithm>
#include <chrono>
#include <latch>
#include <mutex>
#include <thread>

namespace zelvora::tests {

namespace {

using Errors = std::vector<std::optional<ZelvoraSDKError>>;
using Status = platform::ATTrackingAuthorizationStatus;
using State = platform::UIApplicationState;

class InitializationSequenceTest : public SequenceTest {
protected:
    using SequenceTest::SequenceTest;
};
class AuthorizedSequenceTest : public InitializationSequenceTest {
protected:
    AuthorizedSequenceTest() : InitializationSequenceTest({ .trackingStatus = Status::Authorized }) { }
};
class InactiveSequenceTest : public InitializationSequenceTest {
protected:
    InactiveSequenceTest() : InitializationSequenceTest({ .applicationState = State::Inactive }) { }
};

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

TEST_F(InactiveSequenceTest, WhileTheAppNeverBecomesActiveEveryFurtherInitializeIsRefused)
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

TEST_F(InitializationSequenceTest, LookupAndPermissionRunInParallel)
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

TEST_F(InitializationSequenceTest, QueuedEventsAreUploadedOnceWithTheNewIdentifier)
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

TEST_F(AuthorizedSequenceTest, AFailedLookupStillUploadsOnceAndEndsTheSequence)
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

TEST_F(AuthorizedSequenceTest, TheSequenceDoesNotWaitForTheUpload)
{
    saveEvents(1);
    begin();
    answerLookup();
    EXPECT_EQ(platform.urlSession().unansweredCount(), 1U);
    EXPECT_FALSE(isInitializing());
}

TEST_F(AuthorizedSequenceTest, TheIdsStayUntilTheNextInitialize)
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

TEST_F(AuthorizedSequenceTest, ALaunchRequestedDuringTheSequenceIsCarriedOutOnceAfterIt)
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

TEST_F(AuthorizedSequenceTest, TheDeferredLaunchIsLoggedBeforeItIsMade)
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

TEST_F(AuthorizedSequenceTest, WithoutALaunchNothingIsLoggedAboutOne)
{
    begin();
    answerLookup();
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "Executing deferred start after initialization"));
    EXPECT_EQ(properties().pendingViewController, nullptr);
}

TEST_F(AuthorizedSequenceTest, TheBusyFlagIsClearedInTheBackgroundAndTheDeferredLaunchWaitsForTheMainQueue)
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

TEST_F(AuthorizedSequenceTest, AStartBetweenTheEndAndTheDeferredLaunchLaunchesAtOnce)
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

TEST_F(AuthorizedSequenceTest, ADeferredLaunchThatFailsIsClearedAfterItsErrorWasReported)
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

TEST_F(AuthorizedSequenceTest, ThePresenterOfADeferredLaunchIsKeptAliveUntilThen)
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

// A host's screen that calls the SDK when it is destroyed.
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

TEST_F(AuthorizedSequenceTest, AReplacedPresenterMayCallTheSDKWhenItIsDestroyed)
{
    begin();
    bool isGone = false;
    EXPECT_TRUE(sdk().start(std::make_shared<LeavingViewController>(isGone)));
    EXPECT_FALSE(isGone);
    EXPECT_TRUE(sdk().start(std::make_shared<memory::ViewController>()));
    platform.mainQueue().runAll();
    EXPECT_TRUE(isGone);
}

// Notes the busy flag at the time of each request.
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

// The global queue has real threads; the test is the main thread and runs the main queue and the loader's queue.
class ThreadedPlatform final : public ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;
    [[nodiscard]] shared::ThreadPoolQueue& globalQueue() override { return m_globalQueue; }

    // Runs the main queue and the loader's until the predicate is true. False after a timeout.
    template<typename Predicate>
    [[nodiscard]] bool runUntil(Predicate isTrue)
    {
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isTrue()) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            if (memory.mainQueue().runAll() + memory.urlSession().loaderQueue().runAll() == 0)
                std::this_thread::yield();
        }
        return true;
    }

    // Waits until the blocks that run in the background have ended.
    void finishRunningBlocks()
    {
        auto const allThreads = std::make_shared<std::latch>(threadCount + 1);
        for (int thread = 0; thread < threadCount; ++thread)
            m_globalQueue.async([allThreads] { allThreads->arrive_and_wait(); });
        allThreads->arrive_and_wait();
    }

private:
    static constexpr int threadCount = 4;

    shared::ThreadPoolQueue m_globalQueue { threadCount };
};

TEST(InitializationThreadsTest, TheSequenceRunsOnBackgroundThreadsWhileTheMainThreadUsesTheSDK)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Authorized });
    auto& sdk = ZelvoraSDK::shared();
    saveEvents(3);
    for (int round = 0; round < 10; ++round) {
        EXPECT_TRUE(sdk.initialize("user", "key", true, round % 2 == 0, false));
        EXPECT_TRUE(platform.runUntil([&] {
            if (platform.memory.urlSession().unansweredCount() > 0)
                platform.memory.urlSession().answer(200, foundShop);
            sdk.setAllowsSwipeBack(true);
            ZelvoraStorage::saveEventTrackingData(makeEvent("during the sequence"));
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
        EXPECT_TRUE(platform.runUntil([] { return !ZelvoraSDKInspector::isInitializing(); }));
        auto const lines = platform.memory.log().lines();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.front().text, "[ZelvoraSDK] Initialized");
    }
}

TEST(InitializationThreadsTest, TheHandlerReceivesAFailedLookupOnABackgroundThread)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    std::mutex mutex;
    std::vector<std::thread::id> toldOn;
    EXPECT_TRUE(ZelvoraSDK::shared().initialize(
        "user", "key", true, false, false, nullptr, nullptr, nullptr, [&](std::optional<ZelvoraSDKError> const&) {
            std::scoped_lock const lock(mutex);
            toldOn.push_back(std::this_thread::get_id());
        }));
    EXPECT_TRUE(platform.runUntil([&] { return platform.memory.urlSession().unansweredCount() > 0; }));
    platform.memory.urlSession().answer(500, "oops");
    EXPECT_TRUE(platform.runUntil([] { return !ZelvoraSDKInspector::isInitializing(); }));
    std::scoped_lock const lock(mutex);
    ASSERT_EQ(toldOn.size(), 1U);
    EXPECT_NE(toldOn.front(), std::this_thread::get_id());
}

TEST(InitializationThreadsTest, ALaunchThatRacesWithTheEndIsCarriedOutExactlyOnce)
{
    auto& platform = tests::install<ThreadedPlatform>(memory::Options { .trackingStatus = Status::Denied });
    ZelvoraStorage::saveShopId("kept");
    for (int round = 0; round < 100; ++round) {
        auto const presenter = std::make_shared<memory::ViewController>();
        EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
        for (int blocks = round; blocks > 0; --blocks)
            (void)platform.memory.mainQueue().runOne();
        EXPECT_TRUE(ZelvoraSDK::shared().start(presenter));
        EXPECT_TRUE(platform.runUntil([&presenter] {
            return !ZelvoraSDKInspector::isInitializing() && memory::peer(*presenter).presentedViewController();
        }));
        memory::peer(*presenter).dismiss(platform::Animated::No);
        // The sequence's last step, which may still be on its way, must not meet the next round.
        platform.finishRunningBlocks();
        (void)platform.memory.mainQueue().runAll();
    }
    std::size_t presentations = 0;
    for (auto const& transition : platform.memory.screen().transitions())
        presentations += transition.kind == memory::Transition::Kind::Present ? 1 : 0;
    EXPECT_EQ(presentations, 100U);
}

}

}
