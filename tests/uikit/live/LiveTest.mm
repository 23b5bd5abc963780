#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/uikit/doubles/Application.h"
#include "tests/uikit/live/PageServer.h"
#include "tests/uikit/live/WebKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

/// The SDK's view with a page in a real engine, which talks to the SDK over the phone's adapter.
class LiveTest : public testing::Test {
protected:
    LiveTest()
    {
        uikit::install();
        doubles::setApplicationState(UIApplicationStateActive);
        doubles::setOpenableSchemes({ "tel" });
    }

    /// Shows a page with this script.
    void open(std::string const& script)
    {
        auto const url = m_server.serve("/v1/", "<!DOCTYPE html><title>shop</title><script>" + script + "</script>");
        m_view = std::make_shared<ZelvoraWebView>(platform::CGRect { 0, 0, 390, 844 }, url, false);
        UIView* native = uikit::nativeOf(*m_view);
        m_host = [[UIWindow alloc] initWithFrame:native.frame];
        [m_host addSubview:native];
        m_engine = static_cast<WKWebView*>([native.subviews lastObject]);
    }

    /// What a script in the page returns.
    id evaluate(NSString* script)
    {
        WKWebView* engine = m_engine;
        return live::evaluate(engine, script);
    }

    static bool becomesStored(std::string const& key, platform::Value const& value)
    {
        return live::runUntil([&] { return ZelvoraStorage::get(key) == value; });
    }

    PageServer m_server;
    std::shared_ptr<ZelvoraWebView> m_view;
    UIWindow* m_host = nil;
    __weak WKWebView* m_engine = nil;
};

TEST_F(LiveTest, TheBridgeIsThereBeforeThePagesOwnScripts)
{
    @autoreleasepool {
        open("window.early = typeof ZelvoraSDKBridge.setItem; ZelvoraSDKBridge.setItem('ready', true);");
        EXPECT_TRUE(becomesStored("ready", true));
        EXPECT_TRUE([evaluate(@"window.early") isEqual:@"function"]);
    }
}

TEST_F(LiveTest, APageStoresAndReadsValuesWithTheirTypesKept)
{
    @autoreleasepool {
        open("ZelvoraSDKBridge.setItem('text', \"it's 가\"); ZelvoraSDKBridge.setItem('yes', true);"
             "ZelvoraSDKBridge.setItem('one', 1); ZelvoraSDKBridge.setItem('list', [1, 'a', null, false]);"
             "window.received = []; window.receive = (value) => {"
             "    if (received.push(value) === 4) ZelvoraSDKBridge.setItem('received', JSON.stringify(received)); };"
             "for (const key of ['text', 'yes', 'one', 'list']) ZelvoraSDKBridge.getItem(key, 'receive');");
        EXPECT_TRUE(becomesStored("list", platform::Array { 1, "a", platform::Null {}, false }));
        EXPECT_EQ(ZelvoraStorage::get("text"), platform::Value("it's 가"));
        EXPECT_EQ(ZelvoraStorage::get("yes"), platform::Value(true));
        EXPECT_EQ(ZelvoraStorage::get("one"), platform::Value(1));
        // The last of the answers tells that it has arrived.
        EXPECT_TRUE(becomesStored("received", "[\"it's 가\",true,1,[1,\"a\",null,false]]"));
    }
}

TEST_F(LiveTest, TheHostHearsOfAnAddressThatThePageTakes)
{
    @autoreleasepool {
        auto const pages = std::make_shared<std::vector<std::string>>();
        ZelvoraSDK::shared().setOnPageNavigation([pages](std::string const& url) { pages->push_back(url); });
        open("addEventListener('load', () => history.pushState({}, '', '/v1/item'));");
        auto const item = m_view->currentUrl().value_or("") + "item";
        EXPECT_TRUE(live::runUntil([&] { return std::ranges::count(*pages, item) == 1; }));
        EXPECT_EQ(m_view->currentUrl(), item);
    }
}

TEST_F(LiveTest, ALinkOfAnotherSchemeIsOpenedInItsApp)
{
    @autoreleasepool {
        open("location.href = 'tel:123';");
        EXPECT_TRUE(live::runUntil([] { return !doubles::openedURLs().empty(); }));
        EXPECT_EQ(doubles::openedURLs().front(), "tel:123");
    }
}

TEST_F(LiveTest, NothingIsLeftOfAViewThatTheHostLetsGoOf)
{
    @autoreleasepool {
        open("ZelvoraSDKBridge.setItem('ready', true); setInterval(() => ZelvoraSDKBridge.setItem('late', 1), 1);");
        EXPECT_TRUE(becomesStored("ready", true));
    }
    std::weak_ptr<ZelvoraWebView> const watched = m_view;
    @autoreleasepool {
        m_view.reset();
        m_host = nil;
    }
    EXPECT_TRUE(live::runUntil([&] { return watched.expired() && m_engine == nil; }));
}

}

}
