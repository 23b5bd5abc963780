#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"

#include <gtest/gtest.h>

namespace zelvora::platform {

namespace {

class Screen final : public UIViewController {
public:
    void viewDidLoad() override
    {
        UIViewController::viewDidLoad();
        ++loads;
        // The view has already been made.
        rootWhenLoaded = &view();
    }

    int loads = 0;
    UIView* rootWhenLoaded = nullptr;
};

class UIViewControllerTest : public ::testing::Test {
protected:
    memory::Platform& m_platform = memory::install();
    std::shared_ptr<Screen> m_screen = std::make_shared<Screen>();
};

TEST_F(UIViewControllerTest, TheRootViewIsMadeOnFirstUseAndOnlyOnce)
{
    EXPECT_FALSE(m_screen->isViewLoaded());
    EXPECT_EQ(m_screen->loads, 0);
    auto* const view = &m_screen->view();
    EXPECT_TRUE(m_screen->isViewLoaded());
    EXPECT_EQ(&m_screen->view(), view);
    EXPECT_EQ(m_screen->loads, 1);
    EXPECT_EQ(m_screen->rootWhenLoaded, view);
}

TEST_F(UIViewControllerTest, AControllerThatIsOnNoStackHasNoNavigationController)
{
    EXPECT_EQ(m_screen->navigationController(), nullptr);
}

TEST_F(UIViewControllerTest, AControllerKnowsItsStack)
{
    auto const stack = std::make_shared<memory::NavigationController>();
    stack->pushViewController(m_screen, Animated::No);
    EXPECT_EQ(m_screen->navigationController(), stack);
}

TEST_F(UIViewControllerTest, APresentedControllerIsKeptUntilItIsDismissed)
{
    auto const presenter = std::make_shared<memory::ViewController>();
    std::weak_ptr<Screen> const watched = m_screen;
    m_screen->setModalPresentationStyle(UIModalPresentationStyle::FullScreen);
    EXPECT_EQ(memory::peer(*m_screen).modalPresentationStyle(), UIModalPresentationStyle::FullScreen);
    presenter->present(std::move(m_screen), Animated::Yes);
    EXPECT_FALSE(watched.expired());
    watched.lock()->dismiss(Animated::Yes);
    EXPECT_TRUE(watched.expired());
}

TEST_F(UIViewControllerTest, HooksHaveHarmlessDefaults)
{
    memory::ViewController controller;
    controller.viewDidLoad();
    controller.viewWillDisappear(Animated::No);
    EXPECT_FALSE(controller.isViewLoaded());
}

}

}
