#include "ZelvoraAdapters/memory/UIKit/UIViewControllerPeer.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/shared/Screens/expectFreeScreen.h"
#include "ZelvoraAdapters/shared/Screens/outermost.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

using platform::Animated;
using platform::UINavigationController;
using platform::UIView;
using platform::UIViewController;

UIViewControllerPeer::UIViewControllerPeer(Screen& screen, UIViewController& owner) : m_screen(screen), m_owner(owner)
{
}

UIViewControllerPeer::~UIViewControllerPeer()
{
    for (auto const& presented : m_presentations.removeAll())
        of(*presented).m_base = nullptr;
}

UIViewControllerPeer& UIViewControllerPeer::of(UIViewController const& controller)
{
    auto* found = dynamic_cast<UIViewControllerPeer*>(&controller.peer());
    if (!found)
        platform::fatalError("a controller of another adapter was used with the one in memory");
    return *found;
}

std::shared_ptr<UIViewController> UIViewControllerPeer::presentedViewController() const
{
    auto const [base, level] = outermost().place();
    return base.m_presentations.screenAt(level + 1);
}

UIViewController* UIViewControllerPeer::presentingViewController() const
{
    auto const [base, level] = outermost().place();
    if (level == 0)
        return nullptr;
    auto const below = base.m_presentations.screenAt(level - 1);
    return below ? below.get() : &base.m_owner;
}

bool UIViewControllerPeer::isOnScreen() const
{
    if (auto const navigation = m_navigation.lock())
        return navigation->viewControllers().back().get() == &m_owner && of(*navigation).isOnScreen();
    auto const [base, level] = place();
    return base.m_presentations.isOnScreen(level);
}

bool UIViewControllerPeer::isShown(UIViewController const& controller)
{
    auto const& shown = of(controller);
    return shown.place().level > 0 || !shown.m_presentations.isEmpty();
}

std::shared_ptr<UIView> UIViewControllerPeer::loadView()
{
    auto view = std::make_shared<UIView>(m_screen.bounds());
    UIViewPeer::of(*view).setFillsScreen(true);
    return view;
}

std::shared_ptr<UINavigationController> UIViewControllerPeer::navigationController() const
{
    return m_navigation.lock();
}

void UIViewControllerPeer::present(std::shared_ptr<UIViewController> presented, Animated animated)
{
    auto const [base, level] = outermost().place();
    auto& presentations = base.m_presentations;
    if (!presentations.mayPresent(level)) {
        m_screen.complain("A controller was asked to present another while it presents one already.");
        return;
    }
    shared::expectFreeToPresent(presented.get(), m_owner, isShown);
    auto const style = of(*presented).m_style;
    // A hook may release the base.
    auto const kept = base.m_owner.weak_from_this().lock();
    presentations.present(level, std::move(presented), style, animated);
}

void UIViewControllerPeer::dismiss(Animated animated)
{
    auto const [base, level] = outermost().place();
    // A hook may release the base.
    auto const kept = base.m_owner.weak_from_this().lock();
    base.m_presentations.dismiss(level, animated);
}

void UIViewControllerPeer::didAdd(shared::PresentationChain::Screen const& screen, Animated animated)
{
    of(*screen).m_base = this;
    m_screen.record({ Transition::Kind::Present, screen.get(), animated });
}

void UIViewControllerPeer::didRemove(shared::PresentationChain::Screen const& screen, Animated animated)
{
    m_screen.record({ Transition::Kind::Dismiss, screen.get(), animated });
}

void UIViewControllerPeer::contentWillDisappear(Animated animated)
{
    m_owner.viewWillDisappear(animated);
}

void UIViewControllerPeer::screenWillDisappear(UIViewController& screen, Animated animated)
{
    screen.viewWillDisappear(animated);
}

void UIViewControllerPeer::hide(shared::PresentationChain::Screen const& screen, Animated)
{
    // Its hook may have presented it elsewhere.
    if (of(*screen).m_base == this)
        of(*screen).m_base = nullptr;
}

UIViewControllerPeer& UIViewControllerPeer::outermost() const
{
    return of(shared::outermost(m_owner));
}

UIViewControllerPeer::Place UIViewControllerPeer::place() const
{
    if (auto const level = m_base ? m_base->m_presentations.levelOf(m_owner) : std::nullopt)
        return { *m_base, *level };
    return { of(m_owner), 0 };
}

UIViewControllerPeer& peer(UIViewController const& controller)
{
    return UIViewControllerPeer::of(controller);
}

}
