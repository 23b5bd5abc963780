#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"

#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using memory::NavigationController;
using memory::peer;
using memory::Transition;
using memory::ViewController;
using platform::Animated;
using Flags = std::vector<Animated>;

class NavigationControllerTest : public InstalledPlatform {
protected:
    NavigationControllerTest() { stack->pushViewController(first, Animated::No); }

    std::shared_ptr<NavigationController> stack = std::make_shared<NavigationController>();
    std::shared_ptr<ViewController> first = std::make_shared<ViewController>();
    std::shared_ptr<ViewController> second = std::make_shared<ViewController>();
};

}

TEST_F(NavigationControllerTest, APushCoversTheTopController)
{
    stack->pushViewController(second, Animated::Yes);
    EXPECT_EQ(first->disappearances(), Flags { Animated::Yes });
    EXPECT_EQ(stack->viewControllers(), (std::vector<std::shared_ptr<platform::UIViewController>> { first, second }));
    EXPECT_EQ(second->navigationController(), stack);
    EXPECT_TRUE(peer(*second).isOnScreen());
    EXPECT_FALSE(peer(*first).isOnScreen());
    EXPECT_EQ(screen.transitions().back(), (Transition { Transition::Kind::Push, second.get(), Animated::Yes }));
}

TEST_F(NavigationControllerTest, APushedControllerKnowsItsStackWhenItsViewLoads)
{
    struct Curious final : platform::UIViewController {
        void viewDidLoad() override { knewStack = navigationController() != nullptr; }
        bool knewStack = false;
    };
    auto const curious = std::make_shared<Curious>();
    stack->pushViewController(curious, Animated::No);
    EXPECT_TRUE(curious->knewStack);
}

TEST_F(NavigationControllerTest, APoppedControllerIsToldAndNoLongerKept)
{
    stack->pushViewController(second, Animated::No);
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(second->disappearances(), Flags { Animated::Yes });
    EXPECT_EQ(second->navigationController(), nullptr);
    EXPECT_EQ(stack->topViewController(), first);
    EXPECT_EQ(second.use_count(), 1);
    EXPECT_EQ(screen.transitions().back(), (Transition { Transition::Kind::Pop, second.get(), Animated::Yes }));
}

TEST_F(NavigationControllerTest, TheOnlyControllerIsNotPopped)
{
    stack->popViewController(Animated::Yes);
    EXPECT_EQ(stack->topViewController(), first);
    EXPECT_TRUE(first->disappearances().empty());
}

TEST_F(NavigationControllerTest, WhatIsCoveredByAPresentationDoesNotDisappearTwice)
{
    auto const shop = std::make_shared<ViewController>();
    shop->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    first->present(shop, Animated::No);
    stack->pushViewController(second, Animated::No);
    stack->popViewController(Animated::No);
    EXPECT_EQ(first->disappearances().size(), 1u);
    EXPECT_TRUE(second->disappearances().empty());
}

TEST_F(NavigationControllerTest, PushingWhatIsOnScreenStopsTheProcess)
{
    EXPECT_DEATH(stack->pushViewController(first, Animated::No), "pushed that is on screen already");
    EXPECT_DEATH(stack->pushViewController(stack, Animated::No), "pushed that is on screen already");
    EXPECT_DEATH(stack->pushViewController(nullptr, Animated::No), "no controller was pushed");
}

TEST_F(NavigationControllerTest, ACompletedSwipePopsAndACancelledOneDoesNot)
{
    stack->pushViewController(second, Animated::No);
    auto const swipe = stack->interactivePopGestureRecognizer();
    ASSERT_TRUE(swipe);
    EXPECT_TRUE(memory::perform(*swipe, memory::brokenOff()));
    EXPECT_EQ(stack->topViewController(), second);
    swipe->setEnabled(false);
    EXPECT_FALSE(memory::perform(*swipe));
    swipe->setEnabled(true);
    EXPECT_TRUE(memory::perform(*swipe));
    EXPECT_EQ(stack->topViewController(), first);

    stack.reset();
    EXPECT_TRUE(memory::perform(*swipe));
}

TEST_F(NavigationControllerTest, AStackMayHaveNoSwipe)
{
    EXPECT_EQ(NavigationController(NavigationController::SwipeToPop::No).interactivePopGestureRecognizer(), nullptr);
}

TEST_F(NavigationControllerTest, ADestroyedStackLeavesItsControllersAlone)
{
    stack.reset();
    EXPECT_EQ(first->navigationController(), nullptr);
    EXPECT_EQ(first.use_count(), 1);
}

}
