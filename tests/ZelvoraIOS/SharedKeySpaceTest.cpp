// What docs/security.md says that a page can do, because pages, frames and the SDK share one store and one bridge.

#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

class SharedKeySpaceTest : public AuthorizedContainerTest {
protected:
    void openShop()
    {
        initialize();
        finishInitialization();
        sdk().start(presenter);
        platform.runUntilIdle();
    }
};

TEST_F(SharedKeySpaceTest, APageCanChooseTheHostOfTheNextLaunch)
{
    openShop();
    post({ { "action", "setItem" }, { "key", "shop_id" }, { "value", "elsewhere.example/" }, { "expire", 1e9 } });

    initialize();
    platform.runUntilIdle();
    platform.clock().advance(1);
    platform.runUntilIdle();
    auto const next = std::make_shared<memory::ViewController>();
    sdk().start(next);
    platform.runUntilIdle();
    EXPECT_TRUE(engine().url()->absoluteString().starts_with("https://elsewhere.example/"))
        << engine().url()->absoluteString();
}

TEST_F(SharedKeySpaceTest, APageCanReplaceTheQueueOfEvents)
{
    openShop();
    saveEvents(3);
    post({ { "action", "setItem" }, { "key", "tracking_event" }, { "value", Array { makeEvent("the page's") } } });
    EXPECT_EQ(names(ZelvoraStorage::getEventTrackingData()), (std::vector<std::string> { "the page's" }));
}

TEST_F(SharedKeySpaceTest, APageCanReadTheAdvertisingIdentifier)
{
    openShop();
    post({ { "action", "getItem" }, { "key", "adid" }, { "callback", "f" } });
    platform.runUntilIdle();
    EXPECT_EQ(engine().evaluated().back(), "f(\"AD-1\");");
}

TEST_F(SharedKeySpaceTest, TheNameOfACallbackIsScript)
{
    openShop();
    post({ { "action", "getItem" }, { "key", "none" }, { "callback", "alert(document.cookie);f" } });
    platform.runUntilIdle();
    EXPECT_EQ(engine().evaluated().back(), "alert(document.cookie);f(null);");
}

}

}
