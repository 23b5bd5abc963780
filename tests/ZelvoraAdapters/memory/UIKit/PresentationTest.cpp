#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace zelvora::tests {

namespace {

using memory::peer;
using memory::Transition;
using memory::ViewController;
using platform::Animated;
using platform::UIModalPresentationStyle;
using Flags = std::vector<Animated>;

class PresentationTest : public InstalledPlatform {
protected:
    static std::shared_ptr<ViewController> fullScreen()
    {
        auto controller = std::make_shared<ViewController>();
        controller->setModalPresentationStyle(UIModalPresentationStyle::FullScreen);
        return controller;
    }

    std::shared_ptr<ViewController> host = std::make_shared<ViewController>();
    std::shared_ptr<ViewController> shop = fullScreen();
};

}

TEST_F(PresentationTest, AFullScreenPresentationCoversThePresenter)
{
    host->present(shop, Animated::Yes);
    EXPECT_TRUE(shop->isViewLoaded());
    EXPECT_EQ(host->disappearances(), Flags { Animated::Yes });
    EXPECT_FALSE(peer(*host).isOnScreen());
    EXPECT_TRUE(peer(*shop).isOnScreen());
    EXPECT_EQ(peer(*host).presentedViewController(), shop);
    EXPECT_EQ(peer(*shop).presentingViewController(), host.get());
    EXPECT_EQ(
        screen.transitions(), (std::vector<Transition> { { Transition::Kind::Present, shop.get(), Animated::Yes } }));
}

TEST_F(PresentationTest, ASheetLeavesThePresenterOnScreen)
{
    auto const sheet = std::make_shared<ViewController>();
    host->present(sheet, Animated::Yes);
    EXPECT_TRUE(host->disappearances().empty());
    EXPECT_TRUE(peer(*host).isOnScreen());
}

TEST_F(PresentationTest, AControllerDismissesItselfAndIsNoLongerKept)
{
    host->present(shop, Animated::Yes);
    std::weak_ptr<ViewController> const weak = shop;
    auto const* const address = shop.get();
    shop->dismiss(Animated::No);
    EXPECT_EQ(shop->disappearances(), Flags { Animated::No });
    EXPECT_EQ(peer(*shop).presentingViewController(), nullptr);
    EXPECT_TRUE(peer(*host).isOnScreen());
    EXPECT_EQ(screen.transitions().back(), (Transition { Transition::Kind::Dismiss, address, Animated::No }));
    shop.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(PresentationTest, APresenterDismissesWhatItPresents)
{
    host->present(shop, Animated::No);
    host->dismiss(Animated::Yes);
    EXPECT_EQ(shop->disappearances(), Flags { Animated::Yes });
    EXPECT_EQ(peer(*host).presentedViewController(), nullptr);
}

TEST_F(PresentationTest, DismissingWhatIsNeitherPresentedNorPresentingDoesNothing)
{
    host->dismiss(Animated::Yes);
    EXPECT_TRUE(host->disappearances().empty());
    EXPECT_TRUE(screen.transitions().empty());
}

TEST_F(PresentationTest, ASecondPresentationIsNotMade)
{
    host->present(shop, Animated::No);
    host->present(fullScreen(), Animated::No);
    EXPECT_EQ(peer(*host).presentedViewController(), shop);
    EXPECT_EQ(screen.complaints().size(), 1u);
    EXPECT_EQ(host->disappearances().size(), 1u);
}

TEST_F(PresentationTest, PresentingWhatIsOnScreenStopsTheProcess)
{
    host->present(shop, Animated::No);
    auto const other = std::make_shared<ViewController>();
    EXPECT_DEATH(other->present(shop, Animated::No), "presented that is on screen already");
    EXPECT_DEATH(other->present(other, Animated::No), "presented that is on screen already");
    EXPECT_DEATH(other->present(nullptr, Animated::No), "no controller was presented");
}

TEST_F(PresentationTest, DismissingEndsWhatIsAboveAndTellsOnlyWhatWasOnScreen)
{
    auto const above = fullScreen();
    host->present(shop, Animated::No);
    shop->present(above, Animated::No);
    EXPECT_EQ(shop->disappearances().size(), 1u);
    host->dismiss(Animated::Yes);
    EXPECT_EQ(above->disappearances(), Flags { Animated::Yes });
    EXPECT_EQ(shop->disappearances().size(), 1u);
    EXPECT_EQ(peer(*shop).presentedViewController(), nullptr);
    EXPECT_EQ(peer(*above).presentingViewController(), nullptr);
}

TEST_F(PresentationTest, AControllerThatIsPresentingDismissesTheOtherFirst)
{
    auto const above = fullScreen();
    host->present(shop, Animated::No);
    shop->present(above, Animated::No);
    shop->dismiss(Animated::No);
    EXPECT_EQ(peer(*host).presentedViewController(), shop);
    EXPECT_TRUE(peer(*shop).isOnScreen());
}

TEST_F(PresentationTest, AStackPresentsForItsControllersAndIsDismissedByThem)
{
    auto const stack = std::make_shared<memory::NavigationController>();
    stack->pushViewController(host, Animated::No);
    host->present(shop, Animated::Yes);
    EXPECT_EQ(peer(*shop).presentingViewController(), stack.get());
    EXPECT_EQ(host->disappearances(), Flags { Animated::Yes });
    host->dismiss(Animated::No);
    EXPECT_EQ(shop->disappearances(), Flags { Animated::No });

    auto const window = std::make_shared<ViewController>();
    window->present(stack, Animated::No);
    host->dismiss(Animated::Yes);
    EXPECT_EQ(peer(*window).presentedViewController(), nullptr);
    EXPECT_EQ(host->disappearances(), (Flags { Animated::Yes, Animated::Yes }));
}

TEST_F(PresentationTest, AScreenMayBeShownAgainAsItIsDismissed)
{
    struct Returning final : ViewController {
        void viewWillDisappear(Animated animated) override
        {
            ViewController::viewWillDisappear(animated);
            if (auto const act = std::exchange(actOnDisappearance, nullptr))
                act();
        }
        std::function<void()> actOnDisappearance;
    };
    auto const returning = std::make_shared<Returning>();
    auto const other = std::make_shared<ViewController>();
    auto const stack = std::make_shared<memory::NavigationController>();

    host->present(returning, Animated::No);
    returning->actOnDisappearance = [&] { host->present(returning, Animated::No); };
    returning->dismiss(Animated::No);
    EXPECT_EQ(peer(*returning).presentingViewController(), host.get());

    returning->actOnDisappearance = [&] { other->present(returning, Animated::No); };
    returning->dismiss(Animated::No);
    EXPECT_EQ(peer(*returning).presentingViewController(), other.get());
    EXPECT_EQ(peer(*host).presentedViewController(), nullptr);

    returning->actOnDisappearance = [&] { stack->pushViewController(returning, Animated::No); };
    returning->dismiss(Animated::No);
    EXPECT_EQ(returning->navigationController(), stack);
    EXPECT_EQ(peer(*other).presentedViewController(), nullptr);
}

TEST_F(PresentationTest, AHookThatDismissesOnceMoreEndsNothingElse)
{
    struct Impatient final : ViewController {
        void viewWillDisappear(Animated animated) override
        {
            ViewController::viewWillDisappear(animated);
            dismiss(animated);
        }
    };
    auto const impatient = std::make_shared<Impatient>();
    host->present(impatient, Animated::No);
    impatient->dismiss(Animated::No);
    EXPECT_EQ(impatient->disappearances().size(), 1u);
}

}
