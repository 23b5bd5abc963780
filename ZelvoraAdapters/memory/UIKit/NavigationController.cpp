#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/shared/Screens/expectFreeScreen.h"

#include <utility>

namespace zelvora::memory {

class NavigationController::PopRecognizer final : public platform::UIGestureRecognizer {
public:
    explicit PopRecognizer(NavigationController& navigation) : m_navigation(&navigation) { }

    void retire() { m_navigation = nullptr; }

protected:
    void stateDidChange() override
    {
        if (m_navigation && state() == platform::UIGestureRecognizerState::Ended)
            m_navigation->popViewController(platform::Animated::Yes);
    }

private:
    // Reset by the stack's destructor.
    NavigationController* m_navigation;
};

NavigationController::NavigationController(SwipeToPop swipe)
    : m_popRecognizer(swipe == SwipeToPop::Yes ? std::make_shared<PopRecognizer>(*this) : nullptr)
{
}

NavigationController::~NavigationController()
{
    if (m_popRecognizer)
        m_popRecognizer->retire();
}

std::shared_ptr<platform::UIViewController> NavigationController::topViewController() const
{
    return m_stack.empty() ? nullptr : m_stack.back();
}

std::vector<std::shared_ptr<platform::UIViewController>> NavigationController::viewControllers() const
{
    return m_stack;
}

void NavigationController::pushViewController(
    std::shared_ptr<platform::UIViewController> controller, platform::Animated animated)
{
    shared::expectFreeToPush(controller.get(), *this, UIViewControllerPeer::isShown);
    auto& controllerPeer = UIViewControllerPeer::of(*controller);
    auto const covered = topViewController();
    bool const wasOnScreen = covered && UIViewControllerPeer::of(*covered).isOnScreen();
    m_stack.push_back(controller);
    controllerPeer.setNavigationController(std::static_pointer_cast<NavigationController>(shared_from_this()));
    UIViewControllerPeer::of(*this).screen().record({ Transition::Kind::Push, controller.get(), animated });
    (void)controller->view();
    if (wasOnScreen)
        covered->viewWillDisappear(animated);
}

void NavigationController::popViewController(platform::Animated animated)
{
    if (m_stack.size() <= 1)
        return;
    auto const leaving = m_stack.back();
    bool const wasOnScreen = UIViewControllerPeer::of(*leaving).isOnScreen();
    // As on the phone, it leaves the stack before its hook runs and still knows the stack: if the hook pops again, it
    // pops the next one.
    m_stack.pop_back();
    UIViewControllerPeer::of(*this).screen().record({ Transition::Kind::Pop, leaving.get(), animated });
    if (wasOnScreen)
        leaving->viewWillDisappear(animated);
    UIViewControllerPeer::of(*leaving).setNavigationController({});
}

std::shared_ptr<platform::UIGestureRecognizer> NavigationController::interactivePopGestureRecognizer() const
{
    return m_popRecognizer;
}

void NavigationController::viewWillDisappear(platform::Animated animated)
{
    platform::UINavigationController::viewWillDisappear(animated);
    if (auto const top = topViewController())
        top->viewWillDisappear(animated);
}

}
