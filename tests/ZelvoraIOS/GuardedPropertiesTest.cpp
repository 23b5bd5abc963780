#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"

#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <functional>
#include <thread>
#include <utility>
#include <vector>

namespace zelvora::tests {

namespace {

class GuardedPropertiesTest : public SDKTest {
protected:
    static ZelvoraSDK::Result initializeWith(ZelvoraSDK::CompletionHandler handler)
    {
        return sdk().initialize("user", "key", true, false, false, nullptr, nullptr, nullptr, std::move(handler));
    }
};

TEST_F(GuardedPropertiesTest, WhatAReplacedCallbackCapturedMayCallTheSDKWhenItIsDestroyed)
{
    struct CallsOnItsWayOut {
        ~CallsOnItsWayOut()
        {
            (void)sdk().allowsSwipeBack();
            ++*count;
        }
        int* count;
    };
    int count = 0;
    auto const held = [&count] { return std::make_shared<CallsOnItsWayOut>(&count); };
    sdk().setOnPageNavigation([object = held()](std::string const&) { (void)object; });
    sdk().setOnPageNavigation(nullptr);
    EXPECT_EQ(count, 1);
    sdk().setHeaderViewProvider([object = held()](platform::UIViewController&) {
        (void)object;
        return nullptr;
    });
    EXPECT_TRUE(initializeWith([object = held()](auto const&) { (void)object; }));
    EXPECT_EQ(count, 2);
    platform.runUntilIdle();
    platform.urlSession().answer(200, "{}");
    platform.clock().advance(0.1);
    platform.runUntilIdle();
    platform.trackingManager().answer(platform::ATTrackingAuthorizationStatus::Denied);
    platform.runUntilIdle();
    EXPECT_TRUE(initializeWith(nullptr));
    EXPECT_EQ(count, 3);
}

TEST_F(GuardedPropertiesTest, ThreadsMayReadAndSetThePropertiesAtOnce)
{
    std::thread setter([] {
        for (int i = 0; i < 500; ++i) {
            sdk().setAllowsSwipeBack(i % 2 == 0);
            sdk().addCustomAction(std::to_string(i % 7), [i](auto const&) { (void)i; });
            sdk().setOnPageNavigation([i](std::string const&) { (void)i; });
            sdk().setFooterVisible(i % 2 == 0);
        }
    });
    for (int i = 0; i < 500; ++i) {
        (void)sdk().allowsSwipeBack();
        EXPECT_LE(sdk().getCustomActions().size(), 7U);
        if (auto const handler = sdk().onPageNavigation())
            handler("https://shop.example/");
        (void)sdk().isFooterVisible();
        (void)sdk().getCurrentUrl();
    }
    setter.join();
    EXPECT_EQ(sdk().getCustomActions().size(), 7U);
}

// Captured by a host's callback; whoever copies the callback runs this.
struct CallsWhenCopied {
    explicit CallsWhenCopied(int& count) : copies(&count) { }
    CallsWhenCopied(CallsWhenCopied const& other) : copies(other.copies)
    {
        (void)ZelvoraSDK::shared().allowsSwipeBack();
        ++*copies;
    }
    CallsWhenCopied& operator=(CallsWhenCopied const&) = delete;
    ~CallsWhenCopied() { (void)ZelvoraSDK::shared().isFooterVisible(); }

    int* copies;
};

TEST_F(GuardedPropertiesTest, ACallbackIsNeverCopiedOnceItIsSet)
{
    int copies = 0;
    CallsWhenCopied const captured(copies);
    auto const provider = [captured](platform::UIViewController&) {
        (void)captured;
        return nullptr;
    };
    EXPECT_TRUE(sdk().initialize("user", "key", true, false, false, provider, provider, nullptr,
        [captured](std::optional<ZelvoraSDKError> const&) { (void)captured; }));
    sdk().setOnPageNavigation([captured](std::string const&) { (void)captured; });

    copies = 0;
    EXPECT_TRUE(sdk().headerViewProvider());
    EXPECT_TRUE(sdk().footerViewProvider());
    EXPECT_TRUE(sdk().onPageNavigation());
    EXPECT_FALSE(initialize());
    EXPECT_FALSE(sdk().start(nullptr));
    EXPECT_EQ(copies, 0);
}

TEST_F(GuardedPropertiesTest, ACallbackKeepsItsStateFromCallToCall)
{
    std::vector<int> counts;
    EXPECT_TRUE(initializeWith([&counts, count = 0](auto const&) mutable { counts.push_back(++count); }));
    EXPECT_FALSE(sdk().start(nullptr));
    EXPECT_FALSE(sdk().start(nullptr));
    EXPECT_EQ(counts, (std::vector { 1, 2 }));

    counts.clear();
    sdk().setOnPageNavigation([&counts, count = 0](std::string const&) mutable { counts.push_back(++count); });
    auto const handler = sdk().onPageNavigation();
    handler("https://shop.example/");
    sdk().onPageNavigation()("https://shop.example/");
    handler("https://shop.example/");
    EXPECT_EQ(counts, (std::vector { 1, 2, 3 }));
}

TEST_F(GuardedPropertiesTest, ReadingOtherPropertiesCopiesNoCallback)
{
    int copies = 0;
    CallsWhenCopied const captured(copies);
    sdk().setOnPageNavigation([captured](std::string const&) { (void)captured; });
    initializeAndFinish();

    copies = 0;
    (void)sdk().createWebView();
    EXPECT_TRUE(sdk().start(std::make_shared<memory::ViewController>()));
    saveEvents(1);
    sdk().sendTrackingData();
    ZelvoraSDKInspector::sendData();
    EXPECT_EQ(copies, 0);
}

}

}
