#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

class NavigationController::PopGestureRecognizer final : public platform::UIGestureRecognizer {
public:
    explicit PopGestureRecognizer(NavigationController& stack) : m_stack(&stack) { }

    void forgetStack() { m_stack = nullptr; }

protected:
    void stateDidChange() override
    {
        if (m_stack && state() == platform::UIGestureRecognizerState::Ended)
            m_stack->popViewController(platform::Animated::Yes);
    }

private:
    // Reset by the stack's destructor.
    NavigationController* m_stack;
};

NavigationController::NavigationController(SwipeToPop swipe)
    : m_popGestureRecognizer(swipe == SwipeToPop::Yes ? std::make_shared<PopGestureRecognizer>(*this) : nullptr)
{
}

NavigationController::~NavigationController()
{
    if (m_popGestureRecognizer)
        m_popGestureRecognizer->forgetStack();
}

std::shared_ptr<platform::UIViewController> NavigationController::topViewController() const
{
    return m_controllers.empty() ? nullptr : m_controllers.back();
}

std::vector<std::shared_ptr<platform::UIViewController>> NavigationController::viewControllers() const
{
    return m_controllers;
}

void NavigationController::pushViewController(
    std::shared_ptr<platform::UIViewController> controller, platform::Animated animated)
{
    auto& controllerPeer = memory::peer(*controller);
    if (controllerPeer.navigationController() || controllerPeer.presentingViewController() || controller.get() == this)
        platform::fatalError("a controller was pushed that is on screen already");
    auto const covered = topViewController();
    bool const wasOnScreen = covered && memory::peer(*covered).isOnScreen();
    m_controllers.push_back(controller);
    controllerPeer.setNavigationController(std::static_pointer_cast<NavigationController>(shared_from_this()));
    memory::peer(*this).screen().record({ Transition::Kind::Push, controller.get(), animated });
    (void)controller->view();
    if (wasOnScreen)
        covered->viewWillDisappear(animated);
}

void NavigationController::popViewController(platform::Animated animated)
{
    if (m_controllers.size() <= 1)
        return;
    auto const leaving = m_controllers.back();
    bool const wasOnScreen = memory::peer(*leaving).isOnScreen();
    // Off the stack first, as on the phone, while it still knows the stack: a hook that pops once more pops another.
    m_controllers.pop_back();
    memory::peer(*this).screen().record({ Transition::Kind::Pop, leaving.get(), animated });
    if (wasOnScreen)
        leaving->viewWillDisappear(animated);
    memory::peer(*leaving).setNavigationController({});
}

std::shared_ptr<platform::UIGestureRecognizer> NavigationController::interactivePopGestureRecognizer() const
{
    return m_popGestureRecognizer;
}

void NavigationController::viewWillDisappear(platform::Animated animated)
{
    platform::UINavigationController::viewWillDisappear(animated);
    if (auto const top = topViewController())
        top->viewWillDisappear(animated);
}

}
