#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/Environment.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"
#include "tests/support/StandardOutput.h"

#include <thread>
#include <type_traits>

namespace zelvora::tests {

namespace {

using Errors = std::vector<std::optional<ZelvoraSDKError>>;

class Delegate final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    // ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView&) override { return true; }
    void zelvoraSDKWillDismiss() override { }
};

class ZelvoraSDKTest : public SDKTest {
protected:
    [[nodiscard]] static auto properties() { return ZelvoraSDKInspector::properties(); }

    // Starts an initialization that keeps running.
    ZelvoraSDK::Result initializeWith(ZelvoraSDK::CompletionHandler handler)
    {
        return sdk().initialize("user", "key", true, false, false, nullptr, nullptr, nullptr, std::move(handler));
    }
};

TEST_F(ZelvoraSDKTest, ThereIsOneSDKAndHostsCannotMakeAnother)
{
    EXPECT_EQ(&ZelvoraSDK::shared(), &ZelvoraSDK::shared());
    EXPECT_FALSE(std::is_default_constructible_v<ZelvoraSDK>);
    EXPECT_FALSE(std::is_copy_constructible_v<ZelvoraSDK>);
}

TEST_F(ZelvoraSDKTest, ThreadsThatAskFirstAtOnceGetTheSameSDK)
{
    std::vector<ZelvoraSDK*> seen(4);
    std::vector<std::thread> threads;
    threads.reserve(seen.size());
    for (auto*& place : seen)
        threads.emplace_back([&place] { place = &ZelvoraSDK::shared(); });
    for (auto& thread : threads)
        thread.join();
    for (auto const* sdk : seen)
        EXPECT_EQ(sdk, &ZelvoraSDK::shared());
}

TEST_F(ZelvoraSDKTest, AFreshSDKHasItsDefaults)
{
    EXPECT_TRUE(sdk().isFooterVisible());
    EXPECT_FALSE(sdk().allowsSwipeBack());
    EXPECT_FALSE(sdk().headerViewProvider());
    EXPECT_FALSE(sdk().footerViewProvider());
    EXPECT_FALSE(sdk().delegate());
    EXPECT_FALSE(sdk().onPageNavigation());
    EXPECT_FALSE(sdk().activeWebView());
    EXPECT_TRUE(sdk().getCustomActions().empty());

    auto const all = properties();
    EXPECT_EQ(all.userKey, std::nullopt);
    EXPECT_EQ(all.apiKey, std::nullopt);
    EXPECT_EQ(all.adId, std::nullopt);
    EXPECT_EQ(all.shopId, std::nullopt);
    EXPECT_EQ(all.packageName, std::nullopt);
    EXPECT_EQ(all.apiURL, std::nullopt);
    EXPECT_EQ(all.webURL, std::nullopt);
    EXPECT_TRUE(all.isTrackingEnabled);
    EXPECT_FALSE(all.isDev);
    EXPECT_FALSE(all.error_handler);
    EXPECT_FALSE(all.isInitializing);
    EXPECT_FALSE(all.pendingViewController);
}

TEST_F(ZelvoraSDKTest, NothingRunsBeforeTheHostsFirstCall)
{
    (void)ZelvoraSDK::shared();
    platform.runUntilIdle();
    EXPECT_TRUE(platform.log().lines().empty());
    EXPECT_TRUE(platform.urlSession().requests().empty());
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
    EXPECT_EQ(platform.trackingManager().requestCount(), 0U);
}

TEST_F(ZelvoraSDKTest, InitializeStoresWhatItIsGiven)
{
    auto const delegate = std::make_shared<Delegate>();
    int headers = 0;
    int footers = 0;
    int told = 0;
    EXPECT_TRUE(sdk().initialize(
        "the user", "the key", false, true, true,
        [&headers](platform::UIViewController&) {
            ++headers;
            return nullptr;
        },
        [&footers](platform::UIViewController&) {
            ++footers;
            return nullptr;
        },
        delegate, [&told](std::optional<ZelvoraSDKError> const&) { ++told; }));

    auto const all = properties();
    EXPECT_EQ(all.userKey, "the user");
    EXPECT_EQ(all.apiKey, "the key");
    EXPECT_EQ(all.packageName, "com.example.host");
    EXPECT_FALSE(all.isTrackingEnabled);
    EXPECT_TRUE(all.isDev);
    EXPECT_TRUE(all.isInitializing);
    EXPECT_TRUE(sdk().allowsSwipeBack());
    EXPECT_EQ(sdk().delegate(), delegate);

    memory::ViewController controller;
    (void)sdk().headerViewProvider()(controller);
    EXPECT_EQ(headers, 1);
    EXPECT_EQ(footers, 0);
    (void)sdk().footerViewProvider()(controller);
    EXPECT_EQ(footers, 1);
    all.error_handler.function()(ZelvoraSDKError::otherError());
    EXPECT_EQ(told, 1);
}

TEST_F(ZelvoraSDKTest, KeysAreNotValidated)
{
    EXPECT_TRUE(initialize({ .userKey = "", .apiKey = "" }));
    EXPECT_EQ(properties().userKey, "");
    EXPECT_EQ(properties().apiKey, "");
    EXPECT_TRUE(errors.empty());
}

TEST_F(ZelvoraSDKTest, WithoutABundleIdentifierThePackageNameIsAbsent)
{
    platform.mainBundle().setBundleIdentifier(std::nullopt);
    EXPECT_TRUE(initialize());
    EXPECT_EQ(properties().packageName, std::nullopt);
}

TEST_F(ZelvoraSDKTest, InitializeLogsInitializedAtInfoLevelBeforeAnyStepOfTheSequence)
{
    StandardOutput const output;
    EXPECT_TRUE(initialize());
    EXPECT_EQ(logMessages(), (std::vector<LogMessage> { { OSLogType::Info, "Initialized" } }));
    EXPECT_EQ(output.text(), "[ZelvoraSDK-debug] Initialized\n");
    EXPECT_TRUE(platform.urlSession().requests().empty());
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
}

TEST_F(ZelvoraSDKTest, InitializeStartsTheSequenceWithoutWaitingForIt)
{
    EXPECT_TRUE(initialize());
    EXPECT_TRUE(ZelvoraSDKInspector::isInitializing());
    EXPECT_EQ(platform.globalQueue().pendingCount(), 1U);
    EXPECT_TRUE(platform.mainQueue().isEmpty());
    platform.runUntilIdle();
    EXPECT_EQ(platform.urlSession().requests().size(), 1U);
}

TEST_F(ZelvoraSDKTest, ASuccessfulInitializationNeverCallsTheHandler)
{
    initializeAndFinish();
    platform.clock().advance(1000);
    platform.runUntilIdle();
    EXPECT_TRUE(errors.empty());
}

TEST_F(ZelvoraSDKTest, ASecondCallTooEarlyCallsTheFirstCallersHandlerAndNotItsOwn)
{
    Errors toldA;
    Errors toldB;
    EXPECT_TRUE(initializeWith([&toldA](auto const& error) { toldA.push_back(error); }));
    auto const second = initializeWith([&toldB](auto const& error) { toldB.push_back(error); });
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error(), ZelvoraSDKError::initializing());
    EXPECT_EQ(toldA, (Errors { ZelvoraSDKError::initializing() }));
    EXPECT_TRUE(toldB.empty());
}

TEST_F(ZelvoraSDKTest, ASecondCallTooEarlyCallsItsOwnHandlerIfTheFirstHadNone)
{
    Errors told;
    EXPECT_TRUE(initializeWith(nullptr));
    auto const second = initializeWith([&told](auto const& error) { told.push_back(error); });
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error(), ZelvoraSDKError::initializing());
    EXPECT_EQ(told, (Errors { ZelvoraSDKError::initializing() }));
}

TEST_F(ZelvoraSDKTest, ASecondCallTooEarlyWithNoHandlersOnlyFails)
{
    EXPECT_TRUE(initializeWith(nullptr));
    auto const second = initializeWith(nullptr);
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().code(), "E004");
}

TEST_F(ZelvoraSDKTest, ASecondCallTooEarlyChangesLogsAndStartsNothing)
{
    auto const delegate = std::make_shared<Delegate>();
    EXPECT_TRUE(
        initialize({ .userKey = "first", .apiKey = "first key", .isTrackingEnabled = true, .delegate = delegate }));
    auto const before = properties();
    auto const lines = platform.log().lines();
    platform.mainBundle().setBundleIdentifier("com.example.renamed");
    StandardOutput const output;

    auto const other = std::make_shared<Delegate>();
    auto const provider = [](platform::UIViewController&) { return nullptr; };
    EXPECT_FALSE(sdk().initialize("second", "second key", false, true, true, provider, provider, other, nullptr));

    auto const after = properties();
    EXPECT_EQ(after.userKey, "first");
    EXPECT_EQ(after.apiKey, "first key");
    EXPECT_EQ(after.packageName, before.packageName);
    EXPECT_EQ(after.apiURL, before.apiURL);
    EXPECT_EQ(after.webURL, before.webURL);
    EXPECT_TRUE(after.isTrackingEnabled);
    EXPECT_FALSE(after.isDev);
    EXPECT_TRUE(after.isInitializing);
    EXPECT_FALSE(after.allowsSwipeBack);
    EXPECT_FALSE(after.headerViewProvider);
    EXPECT_FALSE(after.footerViewProvider);
    EXPECT_EQ(after.delegate.lock(), delegate);
    EXPECT_TRUE(after.error_handler);
    EXPECT_EQ(platform.log().lines(), lines);
    EXPECT_EQ(output.text(), "");
    EXPECT_EQ(platform.globalQueue().pendingCount(), 1U);
}

TEST_F(ZelvoraSDKTest, AnEarlyCallMayBeRepeatedAndIsRefusedEveryTime)
{
    EXPECT_TRUE(initialize());
    EXPECT_FALSE(initialize());
    EXPECT_FALSE(initialize());
    EXPECT_EQ(errors, (Errors { ZelvoraSDKError::initializing(), ZelvoraSDKError::initializing() }));
}

TEST_F(ZelvoraSDKTest, OnceTheSequenceHasEndedInitializeIsAcceptedAndOverwritesAll)
{
    auto const delegate = std::make_shared<Delegate>();
    auto const provider = [](platform::UIViewController&) { return nullptr; };
    initializeAndFinish({ .isTrackingEnabled = false,
        .isDev = true,
        .allowsSwipeBack = true,
        .headerViewProvider = provider,
        .footerViewProvider = provider,
        .delegate = delegate });
    platform.mainBundle().setBundleIdentifier("com.example.renamed");
    EXPECT_TRUE(sdk().initialize("u2", "k2", true, false, false));

    auto const all = properties();
    EXPECT_EQ(all.userKey, "u2");
    EXPECT_EQ(all.apiKey, "k2");
    EXPECT_EQ(all.packageName, "com.example.renamed");
    EXPECT_TRUE(all.isTrackingEnabled);
    EXPECT_FALSE(all.isDev);
    EXPECT_FALSE(all.allowsSwipeBack);
    EXPECT_FALSE(all.headerViewProvider);
    EXPECT_FALSE(all.footerViewProvider);
    EXPECT_FALSE(all.delegate.lock());
    EXPECT_EQ(all.webURL, internal::environmentAddresses(false).webURL);
    EXPECT_EQ(all.apiURL, internal::environmentAddresses(false).apiURL);
    EXPECT_FALSE(all.error_handler) << "an absent handler replaces the earlier one";
    EXPECT_TRUE(all.isInitializing);
}

TEST_F(ZelvoraSDKTest, WhatTheHostSetItselfSurvivesInitialize)
{
    int visits = 0;
    sdk().setOnPageNavigation([&visits](std::string const&) { ++visits; });
    sdk().addCustomAction("pay", [](auto const&) { });
    sdk().setFooterVisible(false);
    initializeAndFinish();
    ASSERT_TRUE(sdk().onPageNavigation());
    sdk().onPageNavigation()("https://shop.example/");
    EXPECT_EQ(visits, 1);
    EXPECT_EQ(sdk().getCustomActions().size(), 1U);
    EXPECT_FALSE(sdk().isFooterVisible());
}

TEST_F(ZelvoraSDKTest, AHandlerMayCallTheSDK)
{
    std::vector<std::string_view> codes;
    EXPECT_TRUE(sdk().initialize("user", "key", true, false, false, nullptr, nullptr, nullptr,
        [&codes](std::optional<ZelvoraSDKError> const& error) {
            codes.push_back(error->code());
            if (codes.size() < 3)
                sdk().initialize("nested", "nested", true, false, false);
        }));
    EXPECT_FALSE(initialize());
    EXPECT_EQ(codes, (std::vector<std::string_view> { "E004", "E004", "E004" }));
    EXPECT_EQ(properties().userKey, "user");
}

TEST_F(ZelvoraSDKTest, TheDelegateIsHeldWeakly)
{
    auto delegate = std::make_shared<Delegate>();
    EXPECT_TRUE(initialize({ .delegate = delegate }));
    EXPECT_EQ(sdk().delegate(), delegate);
    EXPECT_EQ(delegate.use_count(), 1);
    delegate.reset();
    EXPECT_EQ(sdk().delegate(), nullptr);
}

TEST_F(ZelvoraSDKTest, TheHostMaySetTheDelegate)
{
    auto const delegate = std::make_shared<Delegate>();
    sdk().setDelegate(delegate);
    EXPECT_EQ(sdk().delegate(), delegate);
    sdk().setDelegate(nullptr);
    EXPECT_EQ(sdk().delegate(), nullptr);
}

TEST_F(ZelvoraSDKTest, TheHostMaySetProvidersAndSwipeBack)
{
    std::shared_ptr<platform::UIView> const view = std::make_shared<memory::View>();
    sdk().setHeaderViewProvider([&view](platform::UIViewController&) { return view; });
    sdk().setFooterViewProvider([](platform::UIViewController&) { return nullptr; });
    sdk().setAllowsSwipeBack(true);
    memory::ViewController controller;
    EXPECT_EQ(sdk().headerViewProvider()(controller), view);
    EXPECT_EQ(sdk().footerViewProvider()(controller), nullptr);
    EXPECT_TRUE(sdk().allowsSwipeBack());
    sdk().setHeaderViewProvider(nullptr);
    sdk().setFooterViewProvider(nullptr);
    sdk().setAllowsSwipeBack(false);
    EXPECT_FALSE(sdk().headerViewProvider());
    EXPECT_FALSE(sdk().footerViewProvider());
    EXPECT_FALSE(sdk().allowsSwipeBack());
}

TEST_F(ZelvoraSDKTest, SetFooterVisibleWithNoContainerSetsTheFlagAndPostsIt)
{
    auto const observer = std::make_shared<int>();
    std::vector<platform::Notification> posted;
    std::vector<bool> flagWhenPosted;
    platform.notificationCenter().addObserver(
        observer, "ZelvoraFooterVisibilityChanged", [&](platform::Notification const& notification) {
            posted.push_back(notification);
            flagWhenPosted.push_back(sdk().isFooterVisible());
        });
    sdk().setFooterVisible(false);
    EXPECT_FALSE(sdk().isFooterVisible());
    sdk().setFooterVisible(true);
    EXPECT_TRUE(sdk().isFooterVisible());
    EXPECT_EQ(posted,
        (std::vector<platform::Notification> {
            { "ZelvoraFooterVisibilityChanged", Dictionary { { "visible", false } } },
            { "ZelvoraFooterVisibilityChanged", Dictionary { { "visible", true } } } }));
    EXPECT_EQ(flagWhenPosted, (std::vector<bool> { false, true })) << "the flag is set before the notification";
    EXPECT_TRUE(platform.mainQueue().isEmpty()) << "the post is synchronous";
    EXPECT_TRUE(platform.log().lines().empty());
}

TEST_F(ZelvoraSDKTest, SetFooterVisiblePostsEvenIfNothingChanges)
{
    auto const observer = std::make_shared<int>();
    int posts = 0;
    platform.notificationCenter().addObserver(
        observer, "ZelvoraFooterVisibilityChanged", [&posts](platform::Notification const&) { ++posts; });
    sdk().setFooterVisible(true);
    sdk().setFooterVisible(true);
    EXPECT_EQ(posts, 2);
}

TEST_F(ZelvoraSDKTest, SetFooterVisiblePostsOnTheCallersThread)
{
    auto const observer = std::make_shared<int>();
    std::thread::id postedOn;
    platform.notificationCenter().addObserver(observer, "ZelvoraFooterVisibilityChanged",
        [&postedOn](platform::Notification const&) { postedOn = std::this_thread::get_id(); });
    sdk().setFooterVisible(false);
    EXPECT_EQ(postedOn, std::this_thread::get_id());
}

// The names of the properties that have the values of the second of two calls.
std::string newProperties()
{
    auto const all = ZelvoraSDKInspector::properties();
    std::string names;
    auto const add = [&names](bool isNew, std::string const& name) { names += isNew ? name + " " : ""; };
    add(all.userKey == "new", "userKey");
    add(all.apiKey == "new", "apiKey");
    add(all.packageName == "com.example.new", "packageName");
    add(!all.isTrackingEnabled, "isTrackingEnabled");
    add(all.isDev, "isDev");
    add(all.allowsSwipeBack, "allowsSwipeBack");
    add(!all.headerViewProvider, "headerViewProvider");
    add(!all.footerViewProvider, "footerViewProvider");
    add(!all.delegate.lock(), "delegate");
    add(all.webURL == internal::environmentAddresses(true).webURL, "webURL");
    add(all.apiURL == internal::environmentAddresses(true).apiURL, "apiURL");
    add(!all.error_handler, "error_handler");
    return names;
}

TEST(ZelvoraSDKOrderTest, InitializeStoresOneAfterTheOtherAndTheHandlerLast)
{
    struct NotesOnItsWayOut {
        ~NotesOnItsWayOut() { steps->push_back(newProperties()); }
        std::vector<std::string>* steps;
    };
    auto& platform = tests::install<WatchingPlatform>(
        memory::Options { .trackingStatus = platform::ATTrackingAuthorizationStatus::Denied });
    auto& sdk = ZelvoraSDK::shared();
    std::vector<std::string> steps;
    auto const held = [&steps] { return std::make_shared<NotesOnItsWayOut>(&steps); };
    auto const provider = [&held] {
        return [object = held()](platform::UIViewController&) {
            (void)object;
            return nullptr;
        };
    };
    auto const delegate = std::make_shared<Delegate>();
    EXPECT_TRUE(sdk.initialize("old", "old", true, false, false, provider(), provider(), delegate,
        [object = held()](auto const&) { (void)object; }));
    platform.memory.runUntilIdle();
    platform.memory.urlSession().answer(200, "{}");
    platform.memory.runUntilIdle();
    EXPECT_TRUE(steps.empty());

    platform.memory.mainBundle().setBundleIdentifier("com.example.new");
    platform.watchBundle([&steps] { steps.push_back(newProperties()); });
    EXPECT_TRUE(sdk.initialize("new", "new", false, true, true));

    std::string const untilBundle = "userKey apiKey ";
    auto const untilHeader = untilBundle + "packageName isTrackingEnabled isDev allowsSwipeBack headerViewProvider ";
    auto const untilFooter = untilHeader + "footerViewProvider ";
    auto const untilHandler = untilFooter + "delegate webURL apiURL error_handler ";
    EXPECT_EQ(steps, (std::vector<std::string> { untilBundle, untilHeader, untilFooter, untilHandler }));
}

TEST(ZelvoraSDKWithoutPlatformDeathTest, UsingTheSDKBeforeAPlatformIsInstalledStopsTheProcess)
{
    auto const message = "the SDK was used before a platform was installed: call Platform::install first";
    EXPECT_DEATH(ZelvoraSDK::shared().initialize("user", "media", true, false, false), message);
    EXPECT_DEATH((void)ZelvoraSDK::shared().createWebView(), message);
    EXPECT_DEATH(ZelvoraSDK::shared().setFooterVisible(true), message);
    EXPECT_DEATH(ZelvoraSDK::shared().sendTrackingData(), message);
}

}

}
