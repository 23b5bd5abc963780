#include "ZelvoraAdapters/gtk/UIKit/NavigationController.h"

#include "ZelvoraAdapters/gtk/UIKit/EdgePan.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/View.h"
#include "ZelvoraAdapters/shared/Screens/expectFreeScreen.h"

#include <algorithm>
#include <utility>

namespace zelvora::gtk {

using platform::Animated;
using platform::UIGestureRecognizerState;
using platform::UIViewController;

class NavigationController::Peer final : public UIViewControllerPeer {
public:
    explicit Peer(NavigationController& owner) : UIViewControllerPeer(owner), m_navigation(owner) { }

private:
    // UIViewControllerPeer
    [[nodiscard]] std::shared_ptr<platform::UIView> makeView() override
    {
        return View::create(m_navigation.m_stage.widget());
    }

    [[nodiscard]] UIViewController* visibleChild() const override
    {
        return m_navigation.m_stack.empty() ? nullptr : m_navigation.m_stack.back().get();
    }

    NavigationController& m_navigation;
};

/// Moves the top screen with the drag.
class NavigationController::PopRecognizer final : public platform::UIGestureRecognizer {
public:
    explicit PopRecognizer(NavigationController& navigation) : m_navigation(&navigation) { }

    /// The stack is being destroyed; the recognizer may outlive it.
    void retire() { m_navigation = nullptr; }

    void move(double distance, double speed)
    {
        m_distance = distance;
        m_speed = speed;
    }

private:
    // platform::UIGestureRecognizer
    void stateDidChange() override
    {
        if (!m_navigation)
            return;
        switch (state()) {
        case UIGestureRecognizerState::Began:
            m_navigation->popDidBegin();
            m_navigation->popDidMove(m_distance);
            break;
        case UIGestureRecognizerState::Changed:
            m_navigation->popDidMove(m_distance);
            break;
        case UIGestureRecognizerState::Ended:
            m_navigation->popDidEnd(goesOut());
            break;
        case UIGestureRecognizerState::Cancelled:
        case UIGestureRecognizerState::Failed:
            m_navigation->popDidEnd(false);
            break;
        case UIGestureRecognizerState::Possible:
            break;
        }
    }

    // Whether the screen would be beyond the middle a moment later.
    [[nodiscard]] bool goesOut() const
    {
        constexpr double moment = 0.2;
        auto const width = gtk_widget_get_width(m_navigation->m_stage.widget());
        return m_distance + (m_speed * moment) > width / 2.0;
    }

    // Reset by the stack's destructor.
    NavigationController* m_navigation;
    double m_distance = 0;
    double m_speed = 0;
};

std::shared_ptr<NavigationController> NavigationController::create(std::shared_ptr<UIViewController> rootViewController)
{
    std::shared_ptr<NavigationController> navigation(new NavigationController);
    // A window's content may become the first screen of the stack that takes its place.
    shared::expectFreeToPush(rootViewController.get(), *navigation, [](UIViewController const&) { return false; });
    UIViewControllerPeer::of(*rootViewController).setNavigationController(navigation);
    navigation->m_stack.push_back(std::move(rootViewController));
    return navigation;
}

NavigationController::NavigationController()
    : UINavigationController(std::make_unique<Peer>(*this))
    , m_popRecognizer(std::make_shared<PopRecognizer>(*this))
{
    m_stage.setCollectTargets([this](std::vector<EdgePanTarget>& targets) {
        auto const recognizer = m_popRecognizer;
        if (m_stack.size() > 1) {
            targets.push_back(
                { recognizer, [recognizer](double distance, double speed) { recognizer->move(distance, speed); } });
        }
    });
}

NavigationController::~NavigationController()
{
    m_popRecognizer->retire();
    m_stage.finishSlide();
    for (auto const& controller : m_stack) {
        UIViewControllerPeer::of(*controller).setNavigationController({});
        if (controller->isViewLoaded())
            m_stage.remove(widgetOf(*controller));
    }
}

std::vector<std::shared_ptr<UIViewController>> NavigationController::viewControllers() const
{
    return m_stack;
}

void NavigationController::pushViewController(std::shared_ptr<UIViewController> controller, Animated animated)
{
    settle();
    shared::expectFreeToPush(controller.get(), *this, UIViewControllerPeer::isShown);
    UIViewControllerPeer::of(*controller)
        .setNavigationController(std::static_pointer_cast<UINavigationController>(shared_from_this()));
    auto const covered = m_stack.back();
    m_stack.push_back(controller);
    if (!isViewLoaded())
        return;

    UIViewControllerPeer::of(*this).warnIfWindowIsHidden();
    auto* page = showPage(*controller);
    UIViewControllerPeer::of(*covered).willDisappear(animated);
    // The hook may have popped it again, or ended the window.
    if (m_stack.back() != controller)
        return;
    if (UIViewControllerPeer::of(*this).isOnScreen()) {
        UIViewControllerPeer::of(*controller).didAppear();
        gtk_widget_child_focus(page, GTK_DIR_TAB_FORWARD);
    }
    m_stage.place(page, outside());
    m_stage.slide(page, {}, animated, [this, covered] { m_stage.setCovered(widgetOf(*covered), true); });
}

void NavigationController::popViewController(Animated animated)
{
    settle();
    if (m_stack.size() > 1)
        slideOut(takeTop(animated), animated);
}

std::shared_ptr<platform::UIGestureRecognizer> NavigationController::interactivePopGestureRecognizer() const
{
    return m_popRecognizer;
}

void NavigationController::viewDidLoad()
{
    UINavigationController::viewDidLoad();
    m_stage.setMeasuredPage(showPage(*m_stack.back()));
}

GtkWidget* NavigationController::showPage(UIViewController& controller)
{
    auto* page = widgetOf(controller);
    m_stage.add(page);
    m_stage.setCovered(page, false);
    return page;
}

Stage::Offset NavigationController::outside() const
{
    bool const isRightToLeft = gtk_widget_get_direction(m_stage.widget()) == GTK_TEXT_DIR_RTL;
    return { isRightToLeft ? -1.0 : 1.0, 0 };
}

std::shared_ptr<UIViewController> NavigationController::takeTop(Animated animated)
{
    auto leaving = m_stack.back();
    auto& peer = UIViewControllerPeer::of(*leaving);
    // As on the phone, it leaves the stack before its hook runs and still knows the stack: if the hook pops again, it
    // pops the next one.
    m_stack.pop_back();
    peer.willDisappear(animated);
    peer.setNavigationController({});
    if (isViewLoaded()) {
        (void)showPage(*m_stack.back());
        // A page that is made only now would be on top of the leaving one.
        gtk_widget_insert_before(widgetOf(*leaving), m_stage.widget(), nullptr);
        m_stage.setLeaving(widgetOf(*leaving));
    }
    // The hook may have ended the window.
    if (UIViewControllerPeer::of(*this).isOnScreen())
        UIViewControllerPeer::of(*m_stack.back()).didAppear();
    return leaving;
}

void NavigationController::slideOut(std::shared_ptr<UIViewController> const& leaving, Animated animated)
{
    if (!isViewLoaded()) {
        releaseLater(leaving);
        return;
    }
    m_stage.slide(widgetOf(*leaving), outside(), animated, [this, leaving] {
        m_stage.remove(widgetOf(*leaving));
        releaseLater(leaving);
    });
}

void NavigationController::slideBackIn()
{
    auto const returning = std::exchange(m_dragged, nullptr);
    auto const covered = m_stack.back();
    auto& peer = UIViewControllerPeer::of(*returning);
    peer.setNavigationController(std::static_pointer_cast<UINavigationController>(shared_from_this()));
    m_stack.push_back(returning);
    m_stage.add(widgetOf(*returning));
    UIViewControllerPeer::of(*covered).willDisappear(Animated::Yes);
    if (UIViewControllerPeer::of(*this).isOnScreen())
        peer.didAppear();
    m_stage.slide(
        widgetOf(*returning), {}, Animated::Yes, [this, covered] { m_stage.setCovered(widgetOf(*covered), true); });
}

// Finishes running transitions; the next one starts where they end.
void NavigationController::settle()
{
    m_stage.finishSlide();
    if (m_dragged)
        slideOut(std::exchange(m_dragged, nullptr), Animated::No);
}

void NavigationController::popDidBegin()
{
    settle();
    if (m_stack.size() > 1)
        m_dragged = takeTop(Animated::Yes);
}

void NavigationController::popDidMove(double distance)
{
    auto const width = gtk_widget_get_width(m_stage.widget());
    if (m_dragged && width > 0)
        m_stage.place(widgetOf(*m_dragged), { std::clamp(distance / width, 0.0, 1.0), 0 });
}

void NavigationController::popDidEnd(bool isCompleted)
{
    if (!m_dragged)
        return;
    // It may have been shown elsewhere since.
    if (isCompleted || !m_stage.has(widgetOf(*m_dragged)))
        slideOut(std::exchange(m_dragged, nullptr), Animated::Yes);
    else
        slideBackIn();
}

}
