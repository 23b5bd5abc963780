#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

namespace {

using Complaints = std::vector<std::string>;

class WrongUseTest : public ContainerTest {
protected:
    [[nodiscard]] Complaints complaints() { return platform.screen().complaints(); }
};

TEST_F(WrongUseTest, AHeaderThatAnotherContainerShowsIsComplainedOf)
{
    setHeader(makeBar(50));
    auto const first = makeContainer();
    EXPECT_EQ(complaints(), Complaints {});
    auto const second = makeContainer();
    EXPECT_EQ(complaints(),
        (Complaints {
            "A header or footer is in another view, which loses it. Return a new view for each container." }));
}

TEST_F(WrongUseTest, AHeaderOfAContainerThatIsGoneMayBeShownAgain)
{
    setHeader(makeBar(50));
    setFooter(makeBar(60));
    makeContainer().reset();
    makeContainer().reset();
    EXPECT_EQ(complaints(), Complaints {});
}

TEST_F(WrongUseTest, AHeaderThatIsTheFooterTooIsComplainedOf)
{
    auto const bar = makeBar(50);
    setHeader(bar);
    setFooter(bar);
    auto const container = makeContainer();
    EXPECT_EQ(complaints(),
        (Complaints { "The header was returned as the footer too, and is the footer now. Return two views." }));
}

TEST_F(WrongUseTest, InitializingOffTheMainThreadIsComplainedOf)
{
    std::thread([this] { EXPECT_TRUE(initialize()); }).join();
    EXPECT_EQ(complaints(), (Complaints { "ZelvoraSDK::initialize was called off the main thread." }));
}

TEST_F(WrongUseTest, StartingBeforeInitializeIsComplainedOf)
{
    auto const result = sdk().start(std::make_shared<memory::ViewController>());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code(), "E001");
    EXPECT_EQ(complaints(), (Complaints { "ZelvoraSDK::start was called before initialize." }));
}

TEST_F(WrongUseTest, StartingAfterAnInitializeThatFailedIsNotComplainedOf)
{
    initialize();
    platform.runUntilIdle();
    platform.urlSession().answer(500, "");
    platform.runUntilIdle();
    ASSERT_FALSE(errors.empty());
    EXPECT_TRUE(sdk().start(std::make_shared<memory::ViewController>()));
    EXPECT_EQ(complaints(), Complaints {});
}

TEST_F(WrongUseTest, OtherCallsForTheMainThreadAreComplainedOfElsewhere)
{
    std::thread([] {
        (void)sdk().createWebView();
        sdk().setFooterVisible(false);
    }).join();
    EXPECT_EQ(complaints(),
        (Complaints { "ZelvoraSDK::createWebView was called off the main thread.",
            "ZelvoraSDK::setFooterVisible was called off the main thread." }));
}

TEST_F(WrongUseTest, NothingIsComplainedOfAWholeVisit)
{
    setHeader(makeBar(50));
    setFooter(makeBar(60));
    initializeAndFinish();
    auto const presenter = std::make_shared<memory::ViewController>();
    EXPECT_TRUE(sdk().start(presenter));
    platform.runUntilIdle();
    sdk().setFooterVisible(false);
    presenter->dismiss(Animated::Yes);
    std::thread([] { sdk().sendTrackingData(); }).join();
    EXPECT_EQ(complaints(), Complaints {});
}

}

}
