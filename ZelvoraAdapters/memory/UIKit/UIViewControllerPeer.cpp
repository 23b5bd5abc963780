#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

UIViewControllerPeer::~UIViewControllerPeer()
{
    if (m_presented)
        peer(*m_presented).m_presenting = nullptr;
}

std::shared_ptr<platform::UIViewController> UIViewControllerPeer::presentedViewController() const
{
    return outermost().m_presented;
}

platform::UIViewController* UIViewControllerPeer::presentingViewController() const
{
    auto const* presenting = outermost().m_presenting;
    return presenting ? &presenting->m_owner : nullptr;
}

bool UIViewControllerPeer::isOnScreen() const
{
    auto const stack = m_stack.lock();
    if (!stack)
        return !isCovered();
    return stack->viewControllers().back().get() == &m_owner && peer(*stack).isOnScreen();
}

std::shared_ptr<platform::UIView> UIViewControllerPeer::loadView()
{
    auto view = std::make_shared<platform::UIView>(m_screen.bounds());
    peer(*view).setFillsScreen(true);
    return view;
}

std::shared_ptr<platform::UINavigationController> UIViewControllerPeer::navigationController() const
{
    return m_stack.lock();
}

void UIViewControllerPeer::setModalPresentationStyle(platform::UIModalPresentationStyle style)
{
    m_style = style;
}

void UIViewControllerPeer::present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated)
{
    auto& presenter = outermost();
    if (presenter.m_presented) {
        m_screen.complain("A controller was asked to present another while it presents one already.");
        return;
    }
    auto& presentedPeer = peer(*presented);
    if (presentedPeer.m_presenting || presentedPeer.navigationController() || &presentedPeer == &presenter)
        platform::fatalError("a controller was presented that is on screen already");
    presenter.m_presented = presented;
    presentedPeer.m_presenting = &presenter;
    m_screen.record({ Transition::Kind::Present, presented.get(), animated });
    (void)presented->view();
    if (presenter.isCovered())
        presenter.m_owner.viewWillDisappear(animated);
}

void UIViewControllerPeer::dismiss(platform::Animated animated)
{
    auto& around = outermost();
    if (around.m_presented)
        around.endPresentation(animated);
    else if (around.m_presenting)
        around.m_presenting->endPresentation(animated);
}

UIViewControllerPeer const& UIViewControllerPeer::outermost() const
{
    auto const stack = m_stack.lock();
    return stack ? peer(*stack) : *this;
}

UIViewControllerPeer& UIViewControllerPeer::outermost()
{
    return const_cast<UIViewControllerPeer&>(std::as_const(*this).outermost());
}

bool UIViewControllerPeer::isCovered() const
{
    return m_presented && peer(*m_presented).m_style == platform::UIModalPresentationStyle::FullScreen;
}

void UIViewControllerPeer::endPresentation(platform::Animated animated)
{
    // Taken first: a hook that dismisses once more finds nothing to end.
    auto const leaving = std::exchange(m_presented, nullptr);
    if (!leaving)
        return;
    auto& leavingPeer = peer(*leaving);
    bool const wasOnScreen = leavingPeer.isOnScreen();
    m_screen.record({ Transition::Kind::Dismiss, leaving.get(), animated });
    leavingPeer.endPresentation(animated);
    if (wasOnScreen)
        leaving->viewWillDisappear(animated);
    leavingPeer.m_presenting = nullptr;
}

UIViewControllerPeer& peer(platform::UIViewController const& controller)
{
    auto* found = dynamic_cast<UIViewControllerPeer*>(&controller.peer());
    if (!found)
        platform::fatalError("a controller of another adapter was used with the one in memory");
    return *found;
}

}
