#include "ZelvoraAdapters/shared/Screens/PresentationChain.h"

#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

namespace {

using platform::Animated;
using platform::UIModalPresentationStyle;
using platform::UIViewController;
using Events = std::vector<std::string>;
using Screen = shared::PresentationChain::Screen;
using Level = shared::PresentationChain::Level;

std::string flag(Animated animated)
{
    return animated == Animated::Yes ? ", animated" : "";
}

class NamedScreen final : public UIViewController {
public:
    NamedScreen(std::string screenName, Events& events) : name(std::move(screenName)), m_events(events) { }

    // platform::UIViewController
    void viewDidLoad() override
    {
        m_events.push_back("load " + name);
        if (auto const act = std::exchange(actOnLoad, nullptr))
            act();
    }
    void viewWillDisappear(Animated animated) override
    {
        m_events.push_back("tell " + name + flag(animated));
        if (auto const act = std::exchange(actOnDisappearance, nullptr))
            act();
    }

    std::string name;
    /// What the host does, once.
    std::function<void()> actOnLoad;
    std::function<void()> actOnDisappearance;

private:
    Events& m_events;
};

/// A chain over content, whose client records what it is told to do.
class PresentationChainTest
    : public InstalledPlatform
    , protected shared::PresentationChain::Client {
protected:
    static constexpr auto Yes = Animated::Yes;
    static constexpr auto No = Animated::No;

    std::shared_ptr<NamedScreen> make(std::string name)
    {
        return std::make_shared<NamedScreen>(std::move(name), events);
    }
    void presentFullScreen(Level presenter, Screen controller, Animated animated = No)
    {
        chain.present(presenter, std::move(controller), UIModalPresentationStyle::FullScreen, animated);
    }
    void presentSheet(Level presenter, Screen controller, Animated animated = No)
    {
        chain.present(presenter, std::move(controller), UIModalPresentationStyle::Automatic, animated);
    }
    Events take() { return std::exchange(events, {}); }

    // shared::PresentationChain::Client
    void didAdd(Screen const& controller, Animated animated) override { add("add", controller, animated); }
    void didRemove(Screen const& controller, Animated animated) override { add("remove", controller, animated); }
    void contentWillDisappear(Animated animated) override
    {
        events.push_back("tell content" + flag(animated));
        if (auto const act = std::exchange(actOnContentDisappearance, nullptr))
            act();
    }
    void screenWillDisappear(UIViewController& controller, Animated animated) override
    {
        controller.viewWillDisappear(animated);
    }
    void show(Screen const& controller, Level presenter, Animated animated) override
    {
        add("over " + std::to_string(presenter) + " show", controller, animated);
    }
    void uncover(Level level) override { events.push_back("uncover " + std::to_string(level)); }
    void hide(Screen const& controller, Animated animated) override { add("hide", controller, animated); }

    Events events;
    std::function<void()> actOnContentDisappearance;
    shared::PresentationChain chain { *this };

private:
    void add(std::string const& what, Screen const& controller, Animated animated)
    {
        events.push_back(what + ' ' + static_cast<NamedScreen&>(*controller).name + flag(animated));
    }
};

}

TEST_F(PresentationChainTest, AFullScreenPresentationLoadsThenTellsThePresenterThenShows)
{
    auto const shop = make("shop");
    presentFullScreen(0, shop, Yes);
    EXPECT_EQ(
        take(), (Events { "add shop, animated", "load shop", "tell content, animated", "over 0 show shop, animated" }));
    EXPECT_FALSE(chain.isOnScreen(0));
    EXPECT_TRUE(chain.isOnScreen(1));
    EXPECT_EQ(chain.screenAt(1), shop);
    EXPECT_EQ(chain.levelOf(*shop), 1U);
    EXPECT_EQ(chain.screenAt(0), nullptr);
    EXPECT_EQ(chain.screenAt(2), nullptr);
}

TEST_F(PresentationChainTest, ASheetLeavesThePresenterOnTheScreen)
{
    presentSheet(0, make("sheet"));
    EXPECT_EQ(take(), (Events { "add sheet", "load sheet", "over 0 show sheet" }));
    EXPECT_TRUE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, OnlyTheTopPresents)
{
    presentFullScreen(0, make("shop"));
    (void)take();
    EXPECT_FALSE(chain.mayPresent(0));
    presentFullScreen(0, make("other"));
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(chain.mayPresent(1));
}

TEST_F(PresentationChainTest, ADismissalTellsWhatLeavesUncoversWhatIsBelowAndHides)
{
    auto const shop = make("shop");
    presentFullScreen(0, shop);
    (void)take();
    chain.dismiss(1, Yes);
    EXPECT_EQ(take(), (Events { "remove shop, animated", "tell shop, animated", "uncover 0", "hide shop, animated" }));
    EXPECT_TRUE(chain.isOnScreen(0));
    EXPECT_TRUE(chain.isEmpty());
    EXPECT_EQ(chain.levelOf(*shop), std::nullopt);
    chain.dismiss(0, Yes);
    EXPECT_TRUE(events.empty());
}

TEST_F(PresentationChainTest, AScreenThatItsHookPresentsAgainIsNotHidden)
{
    auto const shop = make("shop");
    presentFullScreen(0, shop);
    (void)take();
    shop->actOnDisappearance = [this, shop] { presentFullScreen(0, shop); };
    chain.dismiss(1, No);
    EXPECT_EQ(take(), (Events { "remove shop", "tell shop", "add shop", "over 0 show shop" }));
    EXPECT_EQ(chain.levelOf(*shop), 1U);
}

TEST_F(PresentationChainTest, ThePresenterEndsWhatItPresentsBeforeItIsEndedItself)
{
    presentFullScreen(0, make("lower"));
    presentFullScreen(1, make("upper"));
    (void)take();
    chain.dismiss(1, No);
    EXPECT_EQ(take(), (Events { "remove upper", "tell upper", "uncover 1", "hide upper" }));
    chain.dismiss(1, No);
    EXPECT_EQ(take(), (Events { "remove lower", "tell lower", "uncover 0", "hide lower" }));
}

TEST_F(PresentationChainTest, DismissingBelowTellsOnlyWhatIsOnTheScreen)
{
    presentFullScreen(0, make("lower"));
    presentFullScreen(1, make("upper"));
    (void)take();
    chain.dismiss(0, Yes);
    EXPECT_EQ(take(),
        (Events { "remove lower, animated", "remove upper, animated", "tell upper, animated", "hide lower", "uncover 0",
            "hide upper, animated" }));
}

TEST_F(PresentationChainTest, SheetsThatEndTogetherAreToldFromTheTopDown)
{
    presentSheet(0, make("lower"));
    presentSheet(1, make("middle"));
    presentSheet(2, make("upper"));
    (void)take();
    chain.dismiss(0, Yes);
    auto const all = take();
    EXPECT_EQ((Events { all.begin() + 3, all.begin() + 6 }),
        (Events { "tell upper, animated", "tell middle, animated", "tell lower, animated" }));
}

TEST_F(PresentationChainTest, WhileAScreenLoadsItsPresenterPresentsNoOther)
{
    auto const shop = make("shop");
    shop->actOnLoad = [this] { presentFullScreen(0, make("other")); };
    presentFullScreen(0, shop);
    EXPECT_EQ(take(), (Events { "add shop", "load shop", "tell content", "over 0 show shop" }));
}

TEST_F(PresentationChainTest, AScreenMayBeDismissedWhileItLoads)
{
    auto const shop = make("shop");
    shop->actOnLoad = [this] { chain.dismiss(0, No); };
    presentFullScreen(0, shop);
    EXPECT_EQ(take(), (Events { "add shop", "load shop", "remove shop", "tell shop", "uncover 0", "hide shop" }));
}

TEST_F(PresentationChainTest, ThePresenterMayEndThePresentationAsItIsCovered)
{
    actOnContentDisappearance = [this] { chain.dismiss(0, No); };
    presentFullScreen(0, make("shop"));
    auto const all = take();
    EXPECT_EQ((Events { all.begin() + 2, all.end() }),
        (Events { "tell content", "remove shop", "tell shop", "uncover 0", "hide shop" }));
    EXPECT_TRUE(chain.isEmpty());
    EXPECT_TRUE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, ThePresenterMayPresentTheSameScreenAgainAsItIsCovered)
{
    auto const shop = make("shop");
    actOnContentDisappearance = [this, shop] {
        chain.dismiss(0, No);
        presentSheet(0, shop);
    };
    presentFullScreen(0, shop);
    // Shown once, by the presentation that lasted.
    EXPECT_EQ(std::ranges::count(events, "over 0 show shop"), 1);
    EXPECT_TRUE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, AScreenThatDismissesOnceMoreAsItLeavesEndsNothing)
{
    auto const shop = make("shop");
    presentFullScreen(0, shop);
    shop->actOnDisappearance = [this] { chain.dismiss(0, No); };
    (void)take();
    chain.dismiss(0, No);
    EXPECT_EQ(take(), (Events { "remove shop", "tell shop", "uncover 0", "hide shop" }));
}

TEST_F(PresentationChainTest, AScreenThatLeavesMayEndWhatIsBelowItWhichIsNotToldAgain)
{
    auto const upper = make("upper");
    presentFullScreen(0, make("lower"));
    presentFullScreen(1, upper);
    upper->actOnDisappearance = [this] { chain.dismiss(0, No); };
    (void)take();
    chain.dismiss(1, Yes);
    // The lower one was covered all the time.
    EXPECT_EQ(take(),
        (Events { "remove upper, animated", "tell upper, animated", "remove lower", "uncover 0", "hide lower",
            "hide upper, animated" }));
    EXPECT_TRUE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, AScreenThatLeavesMayPresentAnotherInItsPlace)
{
    auto const shop = make("shop");
    presentFullScreen(0, shop);
    shop->actOnDisappearance = [this] { presentFullScreen(0, make("other")); };
    (void)take();
    chain.dismiss(0, No);
    // The content stays covered: it is neither uncovered nor told again.
    EXPECT_EQ(
        take(), (Events { "remove shop", "tell shop", "add other", "load other", "over 0 show other", "hide shop" }));
    EXPECT_FALSE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, RemovingAllTellsNobodyAndReturnsTheScreensFromTheBottom)
{
    auto const lower = make("lower");
    auto const upper = make("upper");
    presentFullScreen(0, lower);
    presentFullScreen(1, upper);
    (void)take();
    EXPECT_EQ(chain.removeAll(), (std::vector<Screen> { lower, upper }));
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(chain.isEmpty());
    EXPECT_TRUE(chain.isOnScreen(0));
}

TEST_F(PresentationChainTest, TheChainKeepsItsScreensUntilTheyLeave)
{
    auto shop = make("shop");
    std::weak_ptr<UIViewController> const watched = shop;
    presentFullScreen(0, std::exchange(shop, nullptr));
    EXPECT_FALSE(watched.expired());
    chain.dismiss(0, No);
    EXPECT_TRUE(watched.expired());
}

}
