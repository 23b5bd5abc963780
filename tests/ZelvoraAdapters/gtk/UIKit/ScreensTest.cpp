#include "ZelvoraContract/support/RecordingScreen.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "tests/support/gtk/GtkHarness.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

namespace {

using platform::Animated;
using platform::UIGestureRecognizer;
using Events = std::vector<std::string>;

/// A screen that watches the drag that pops it, as the shop does.
class ShopScreen final
    : public RecordingScreen
    , public platform::UIGestureRecognizerDelegate {
public:
    using RecordingScreen::RecordingScreen;

    void watchEdge(std::function<void()> ended)
    {
        auto pan = std::make_shared<platform::UIScreenEdgePanGestureRecognizer>(platform::UIRectEdge::Left,
            [ended = std::move(ended)](platform::UIScreenEdgePanGestureRecognizer& recognizer) {
                if (recognizer.state() == platform::UIGestureRecognizerState::Ended)
                    ended();
            });
        view().addGestureRecognizer(pan);
    }

    // platform::UIGestureRecognizerDelegate
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override { return mayBegin; }
    bool gestureRecognizerShouldRecognizeSimultaneouslyWith(UIGestureRecognizer&, UIGestureRecognizer&) override
    {
        return mayShare;
    }

    bool mayBegin = true;
    bool mayShare = true;
};

class ScreensTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_harness.show(m_stack);
        m_shop->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    }

    void push()
    {
        m_stack->interactivePopGestureRecognizer()->setDelegate(m_shop);
        m_stack->pushViewController(m_shop, Animated::No);
        // The web engine takes every press, so the edge must be watched before it.
        auto const web = platform::Platform::current().makeWebView(
            {}, { platform::Platform::current().makeUserContentController() });
        web->setTranslatesAutoresizingMaskIntoConstraints(false);
        auto& root = m_shop->view();
        root.addSubview(web);
        platform::NSLayoutConstraint::activate({ web->topAnchor().constraintEqualTo(root.topAnchor()),
            web->bottomAnchor().constraintEqualTo(root.bottomAnchor()),
            web->leadingAnchor().constraintEqualTo(root.leadingAnchor()),
            web->trailingAnchor().constraintEqualTo(root.trailingAnchor()) });
        EXPECT_TRUE(m_harness.runUntil([&] {
            return gtk_widget_get_mapped(gtk::widgetOf(*web)) && gtk_widget_get_width(gtk::widgetOf(*web)) > 0;
        }));
        (void)takeEvents();
    }

    struct Place {
        std::function<void()> show;
        std::shared_ptr<platform::UIViewController> covered;
    };
    std::vector<Place> placesOfTheShop()
    {
        return {
            { [this] { m_stack->pushViewController(m_shop, Animated::Yes); }, m_home },
            { [this] { m_stack->present(m_shop, Animated::Yes); }, m_home },
            { [this] { m_secondStack->pushViewController(m_shop, Animated::Yes); }, m_secondHome },
            { [this] { m_secondStack->present(m_shop, Animated::Yes); }, m_secondHome },
        };
    }

    void showSecondWindow()
    {
        auto* window = GTK_WINDOW(gtk_window_new());
        gtk::setRootViewController(window, m_secondStack);
        gtk_window_present(window);
        EXPECT_TRUE(m_harness.runUntil([this] { return isMapped(*m_secondStack); }));
    }

    // When every slide is over, of which the one that covers is the last.
    void expectShownOver(platform::UIViewController& covered)
    {
        EXPECT_TRUE(m_harness.runUntil([&] { return !isMapped(covered); }));
        EXPECT_TRUE(m_harness.runUntil([turns = 0]() mutable { return ++turns > 3; }));
        EXPECT_TRUE(isMapped(*m_shop));
    }

    void hideShop()
    {
        if (auto const stack = m_shop->navigationController())
            stack->popViewController(Animated::No);
        else
            m_shop->dismiss(Animated::No);
        EXPECT_TRUE(
            m_harness.runUntil([this] { return !isMapped(*m_shop) && isMapped(*m_home) && isMapped(*m_secondHome); }));
    }

    bool isMapped(platform::UIViewController& screen) { return gtk_widget_get_mapped(gtk::widgetOf(screen.view())); }

    Events takeEvents() { return m_record.takeNew(); }

    Record<std::string> m_record;
    GtkHarness m_harness;
    std::shared_ptr<platform::UIViewController> m_home = gtk::wrapScreen(gtk_label_new("home"));
    std::shared_ptr<platform::UINavigationController> m_stack = gtk::makeNavigationController(m_home);
    std::shared_ptr<platform::UIViewController> m_secondHome = gtk::wrapScreen(gtk_label_new("second"));
    std::shared_ptr<platform::UINavigationController> m_secondStack = gtk::makeNavigationController(m_secondHome);
    std::shared_ptr<ShopScreen> m_shop = std::make_shared<ShopScreen>("shop", m_record);
};

}

TEST_F(ScreensTest, ALongDragFromTheLeftEdgeTakesTheTopScreenOff)
{
    push();
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(m_stack->viewControllers().size(), 1U);
    EXPECT_EQ(takeEvents(), (Events { "shop will disappear, animated" }));
    std::weak_ptr<platform::UIViewController> const watched = m_shop;
    m_shop.reset();
    EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired() && isMapped(*m_home); }));
    // The last screen stays.
    m_harness.dragFromLeftEdge(m_home->view());
    EXPECT_EQ(m_stack->viewControllers().size(), 1U);
}

TEST_F(ScreensTest, AScreenThatWasDraggedTooLittleSlidesBack)
{
    push();
    m_harness.drag({ { 3, 300 }, { 20, 300 }, { 40, 300 } });
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
    EXPECT_EQ(m_shop->navigationController(), m_stack);
    EXPECT_TRUE(m_harness.runUntil([&] { return !isMapped(*m_home) && isMapped(*m_shop); }));
    EXPECT_EQ(takeEvents(), (Events { "shop will disappear, animated" }));
    // It is on the screen again, so it is told again.
    m_stack->popViewController(Animated::No);
    EXPECT_EQ(takeEvents(), (Events { "shop will disappear" }));
}

TEST_F(ScreensTest, TheDelegateKeepsTheDragFromTheStack)
{
    push();
    m_shop->mayBegin = false;
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
    m_shop->mayBegin = true;
    m_stack->interactivePopGestureRecognizer()->setEnabled(false);
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(ScreensTest, TheScreenAndTheStackBothReceiveADragThatTheDelegateLetsThemShare)
{
    int ended = 0;
    push();
    m_shop->watchEdge([&ended] { ++ended; });
    m_shop->mayShare = false;
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
    m_shop->mayShare = true;
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(m_stack->viewControllers().size(), 1U);
}

TEST_F(ScreensTest, AScreenThatPopsItselfWhileItIsDraggedIsTakenOffOnce)
{
    auto const below = std::make_shared<RecordingScreen>("below", m_record);
    m_stack->pushViewController(below, Animated::No);
    push();
    m_shop->watchEdge([this] {
        if (auto const stack = m_shop->navigationController(); stack && stack->viewControllers().size() > 1)
            stack->popViewController(Animated::Yes);
        else
            m_shop->dismiss(Animated::Yes);
    });
    m_harness.dragFromLeftEdge(m_shop->view());
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
    EXPECT_EQ(takeEvents(), (Events { "shop will disappear, animated" }));
}

TEST_F(ScreensTest, OtherDragsReachNoRecognizer)
{
    int ended = 0;
    push();
    m_shop->watchEdge([&ended] { ++ended; });
    m_harness.drag({ { 60, 300 }, { 100, 300 }, { 300, 300 } });
    m_harness.drag({ { 5, 300 }, { 10, 340 }, { 100, 600 } });
    m_harness.drag({ { 5, 300 }, { 6, 301 } });
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(m_stack->viewControllers().size(), 2U);
}

TEST_F(ScreensTest, APresentationCoversTheWindowsContent)
{
    auto const window = gtk::wrapWindow(m_harness.window());
    window->present(m_shop, Animated::Yes);
    EXPECT_TRUE(m_harness.runUntil([&] { return !isMapped(*m_home); }));
    EXPECT_TRUE(isMapped(*m_shop));
    EXPECT_EQ(gtk_widget_get_height(gtk::widgetOf(m_shop->view())), m_harness.screenBounds().height);
    m_shop->dismiss(Animated::Yes);
    EXPECT_TRUE(isMapped(*m_home));
    EXPECT_TRUE(m_harness.runUntil([&] { return !isMapped(*m_shop); }));
    EXPECT_EQ(takeEvents(), (Events { "shop did load", "shop will disappear, animated" }));
}

TEST_F(ScreensTest, AScreenThatIsStillSeenToBeDismissedIsShownAgain)
{
    showSecondWindow();
    for (auto const& [show, covered] : placesOfTheShop()) {
        m_stack->present(m_shop, Animated::No);
        m_shop->dismiss(Animated::Yes);
        show();
        expectShownOver(*covered);
        hideShop();
    }
}

TEST_F(ScreensTest, AScreenIsShownAgainAsItIsToldOfItsDismissal)
{
    showSecondWindow();
    for (auto const& [show, covered] : placesOfTheShop()) {
        m_stack->present(m_shop, Animated::No);
        m_shop->actOnDisappearance = show;
        m_shop->dismiss(Animated::Yes);
        expectShownOver(*covered);
        hideShop();
    }
}

TEST_F(ScreensTest, AScreenThatIsStillSeenToBePoppedIsShownAgain)
{
    showSecondWindow();
    for (auto const& [show, covered] : placesOfTheShop()) {
        m_stack->pushViewController(m_shop, Animated::No);
        m_stack->popViewController(Animated::Yes);
        show();
        expectShownOver(*covered);
        hideShop();
    }
}

TEST_F(ScreensTest, AScreenThatIsShownElsewhereWhileItIsDraggedStaysThere)
{
    using State = platform::UIGestureRecognizerState;
    showSecondWindow();
    for (auto const last : { State::Ended, State::Cancelled }) {
        m_stack->pushViewController(m_shop, Animated::No);
        m_stack->interactivePopGestureRecognizer()->recognize(State::Began);
        m_secondStack->pushViewController(m_shop, Animated::No);
        m_stack->interactivePopGestureRecognizer()->recognize(last);
        EXPECT_EQ(m_stack->viewControllers().size(), 1U);
        EXPECT_EQ(m_shop->navigationController(), m_secondStack);
        expectShownOver(*m_secondHome);
        hideShop();
    }
}

TEST_F(ScreensTest, AWindowThatIsDestroyedTakesItsScreensWithIt)
{
    auto* other = GTK_WINDOW(gtk_window_new());
    gtk_window_set_child(other, gtk_label_new("other"));
    auto const presenter = gtk::wrapWindow(other);
    gtk_window_present(other);
    presenter->present(m_shop, Animated::No);
    auto pushed = std::make_shared<RecordingScreen>("pushed", m_record);
    m_stack->pushViewController(pushed, Animated::No);
    (void)takeEvents();
    std::weak_ptr<platform::UIViewController> const watched = m_shop;
    m_shop.reset();
    gtk_window_destroy(other);
    EXPECT_EQ(takeEvents(), (Events { "shop will disappear" }));
    EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired(); }));
    // A presenter whose window is destroyed presents nothing.
    auto const late = std::make_shared<RecordingScreen>("late", m_record);
    presenter->present(late, Animated::No);
    presenter->dismiss(Animated::No);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(ScreensTest, AScreenMayEndItsWindowAsItLeaves)
{
    for (auto const animated : { Animated::No, Animated::Yes }) {
        auto* other = GTK_WINDOW(gtk_window_new());
        gtk_window_set_child(other, gtk_label_new("other"));
        gtk_window_present(other);
        auto screen = std::make_shared<RecordingScreen>("screen", m_record);
        screen->actOnDisappearance = [other] { gtk_window_destroy(other); };
        gtk::wrapWindow(other)->present(screen, Animated::No);
        (void)takeEvents();
        screen->dismiss(animated);
        EXPECT_EQ(takeEvents().size(), 1U);
        std::weak_ptr<platform::UIViewController> const watched = std::exchange(screen, nullptr);
        EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired(); }));
    }
}

TEST_F(ScreensTest, AScreenMayEndItsWindowAsItIsCovered)
{
    auto* other = GTK_WINDOW(gtk_window_new());
    auto const covered = std::make_shared<RecordingScreen>("covered", m_record);
    gtk::setRootViewController(other, covered);
    gtk_window_present(other);
    covered->actOnDisappearance = [other] { gtk_window_destroy(other); };
    (void)takeEvents();
    auto screen = std::make_shared<RecordingScreen>("screen", m_record);
    screen->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    covered->present(screen, Animated::No);
    std::weak_ptr<platform::UIViewController> const watched = std::exchange(screen, nullptr);
    EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired(); }));
}

TEST_F(ScreensTest, AScreenMayEndTheWindowThatAloneKeepsItsStack)
{
    std::vector<std::string> complaints;
    auto const record = +[](char const*, GLogLevelFlags, char const* line, gpointer recorded) {
        static_cast<std::vector<std::string>*>(recorded)->emplace_back(line);
    };
    auto const handler = g_log_set_handler("Gtk", G_LOG_LEVEL_CRITICAL, record, &complaints);
    auto const drag = [](platform::UINavigationController& stack, platform::UIGestureRecognizerState last) {
        auto const recognizer = stack.interactivePopGestureRecognizer();
        recognizer->recognize(platform::UIGestureRecognizerState::Began);
        recognizer->recognize(last);
    };
    std::vector<std::function<void(platform::UINavigationController&)>> const ways {
        [](auto& stack) { stack.popViewController(Animated::No); },
        [](auto& stack) { stack.popViewController(Animated::Yes); },
        [drag](auto& stack) { drag(stack, platform::UIGestureRecognizerState::Ended); },
        [drag](auto& stack) { drag(stack, platform::UIGestureRecognizerState::Cancelled); },
        [](auto& stack) { stack.pushViewController(gtk::wrapScreen(gtk_button_new()), Animated::No); },
        [](auto& stack) { stack.pushViewController(gtk::wrapScreen(gtk_button_new()), Animated::Yes); },
    };
    for (auto const& leave : ways) {
        auto* other = GTK_WINDOW(gtk_window_new());
        auto stack = gtk::makeNavigationController(gtk::wrapScreen(gtk_label_new("other")));
        gtk::setRootViewController(other, stack);
        gtk_window_present(other);
        auto screen = std::make_shared<RecordingScreen>("screen", m_record);
        screen->actOnDisappearance = [other] { gtk_window_destroy(other); };
        stack->pushViewController(screen, Animated::No);
        (void)takeEvents();
        std::weak_ptr<platform::UIViewController> const watched = std::exchange(screen, nullptr);
        std::weak_ptr<platform::UINavigationController> const watchedStack = stack;
        auto& keptByTheWindow = *std::exchange(stack, nullptr);
        leave(keptByTheWindow);
        EXPECT_EQ(takeEvents().size(), 1U);
        EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired() && watchedStack.expired(); }));
    }
    g_log_remove_handler("Gtk", handler);
    EXPECT_EQ(complaints, std::vector<std::string> {});
}

TEST_F(ScreensTest, AScreenIsNotToldThatItLeavesAWindowThatTheOneAboveHasEnded)
{
    using State = platform::UIGestureRecognizerState;
    for (auto const last : { State::Possible, State::Ended, State::Cancelled }) {
        auto* other = GTK_WINDOW(gtk_window_new());
        auto const below = std::make_shared<RecordingScreen>("below", m_record);
        auto const above = std::make_shared<RecordingScreen>("above", m_record);
        auto const stack = gtk::makeNavigationController(below);
        gtk::setRootViewController(other, stack);
        gtk_window_present(other);
        stack->pushViewController(above, Animated::No);
        above->actOnDisappearance = [other] { gtk_window_destroy(other); };
        (void)takeEvents();
        if (last == State::Possible) {
            stack->popViewController(Animated::No);
        } else {
            stack->interactivePopGestureRecognizer()->recognize(State::Began);
            stack->interactivePopGestureRecognizer()->recognize(last);
        }
        stack->pushViewController(gtk::wrapScreen(gtk_label_new("next")), Animated::No);
        EXPECT_EQ(takeEvents(),
            (Events { "above will disappear" + std::string(last == State::Possible ? "" : ", animated") }));
    }
}

TEST_F(ScreensTest, AnotherFirstScreenEndsWhatWasPresented)
{
    auto* window = GTK_WINDOW(gtk_window_new());
    auto const first = gtk::wrapScreen(gtk_label_new("first"));
    gtk::setRootViewController(window, first);
    gtk_window_present(window);
    auto screen = std::make_shared<RecordingScreen>("screen", m_record);
    screen->setModalPresentationStyle(platform::UIModalPresentationStyle::FullScreen);
    first->present(screen, Animated::No);
    (void)takeEvents();
    auto* label = gtk_label_new("second");
    gtk::setRootViewController(window, gtk::wrapScreen(label));
    EXPECT_EQ(takeEvents(), (Events { "screen will disappear" }));
    EXPECT_TRUE(m_harness.runUntil([&] { return gtk_widget_get_mapped(label); }));
    std::weak_ptr<platform::UIViewController> const watched = std::exchange(screen, nullptr);
    EXPECT_TRUE(m_harness.runUntil([&] { return watched.expired(); }));
    gtk_window_destroy(window);
}

TEST_F(ScreensTest, AWidgetThatIsAWindowsChildBecomesItsFirstScreen)
{
    auto* window = GTK_WINDOW(gtk_window_new());
    auto* label = gtk_label_new("first");
    gtk_window_set_child(window, label);
    auto const screen = gtk::wrapScreen(label);
    gtk::setRootViewController(window, gtk::makeNavigationController(screen));
    gtk_window_present(window);
    EXPECT_TRUE(m_harness.runUntil([&] { return gtk_widget_get_mapped(label); }));
    EXPECT_EQ(gtk_widget_get_parent(label), gtk::widgetOf(screen->view()));
    gtk_window_destroy(window);
}

TEST_F(ScreensTest, AWindowThatWasGivenAnotherChildPresentsOverThat)
{
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_child(window, gtk_label_new("first"));
    auto const presenter = gtk::wrapWindow(window);
    gtk_window_present(window);
    presenter->present(m_shop, Animated::No);
    auto* label = gtk_label_new("second");
    gtk_window_set_child(window, label);
    auto const other = std::make_shared<RecordingScreen>("other", m_record);
    presenter->present(other, Animated::No);
    EXPECT_TRUE(m_harness.runUntil([&] { return isMapped(*other); }));
    EXPECT_FALSE(isMapped(*m_shop));
    other->dismiss(Animated::No);
    EXPECT_TRUE(m_harness.runUntil([&] { return gtk_widget_get_mapped(label); }));
    gtk_window_destroy(window);
}

}
