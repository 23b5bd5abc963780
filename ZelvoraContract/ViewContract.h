#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <vector>

namespace zelvora::platform {

inline void PrintTo(CGRect const& rectangle, std::ostream* stream)
{
    *stream << "(" << rectangle.x << ", " << rectangle.y << ", " << rectangle.width << ", " << rectangle.height << ")";
}

}

namespace zelvora::tests {

/// What every adapter's views promise. A harness has a screen with views on it:
///
///     platform::CGRect screenBounds();
///     // What the safe area leaves free at the top and at the bottom of the screen.
///     double safeTop(), safeBottom();
///     // Puts a controller on the screen.
///     void show(std::shared_ptr<platform::UIViewController> controller);
///     // A host's view with this intrinsic height.
///     std::shared_ptr<platform::UIView> makeContentView(double height);
///     // The view's frame in its superview, as drawn.
///     platform::CGRect seenFrame(platform::UIView& view);
///     bool isSeen(platform::UIView& view);
///     // The subviews in drawing order.
///     std::vector<platform::UIView const*> backToFront(platform::UIView& parent);
///     // Runs the adapter until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
template<typename Harness>
class ViewContract : public testing::Test {
protected:
    using CGRect = platform::CGRect;
    using NSLayoutConstraint = platform::NSLayoutConstraint;
    using View = std::shared_ptr<platform::UIView>;

    void SetUp() override
    {
        m_harness.show(m_controller);
        m_screen = m_harness.screenBounds();
    }

    platform::UIView& root() { return m_controller->view(); }

    void add(View const& view, platform::UIView& parent)
    {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        parent.addSubview(view);
    }
    void add(View const& view) { add(view, root()); }

    void pinSides(platform::UIView& view)
    {
        NSLayoutConstraint::activate({ view.leadingAnchor().constraintEqualTo(root().leadingAnchor()),
            view.trailingAnchor().constraintEqualTo(root().trailingAnchor()) });
    }

    /// A host's view at the bottom of the screen, as wide as the screen.
    View addFooter(double height)
    {
        auto footer = m_harness.makeContentView(height);
        add(footer);
        footer->bottomAnchor().constraintEqualTo(root().bottomAnchor()).setActive(true);
        pinSides(*footer);
        return footer;
    }

    void expectFrame(platform::UIView& view, CGRect const& frame)
    {
        EXPECT_TRUE(m_harness.runUntil([&] { return m_harness.seenFrame(view) == frame; }));
        EXPECT_EQ(m_harness.seenFrame(view), frame);
        EXPECT_EQ(view.bounds(), (CGRect { 0, 0, frame.width, frame.height }));
    }

    Harness m_harness;
    std::shared_ptr<platform::UIViewController> m_controller = std::make_shared<platform::UIViewController>();
    CGRect m_screen;
};

TYPED_TEST_SUITE_P(ViewContract);

TYPED_TEST_P(ViewContract, PlacesViewsByTheirConstraints)
{
    auto& harness = this->m_harness;
    auto const& screen = this->m_screen;
    auto& root = this->root();
    auto const header = harness.makeContentView(50);
    this->add(header);
    header->topAnchor().constraintEqualTo(root.safeAreaLayoutGuide().topAnchor()).setActive(true);
    this->pinSides(*header);
    auto const footer = this->addFooter(40);
    auto const middle = std::make_shared<platform::UIView>();
    this->add(middle);
    middle->topAnchor().constraintEqualTo(header->bottomAnchor()).setActive(true);
    middle->bottomAnchor().constraintEqualTo(footer->topAnchor()).setActive(true);
    this->pinSides(*middle);
    auto const inside = std::make_shared<platform::UIView>();
    this->add(inside, *middle);
    inside->topAnchor().constraintEqualTo(middle->topAnchor()).setActive(true);
    inside->bottomAnchor().constraintEqualTo(middle->bottomAnchor()).setActive(true);
    inside->leadingAnchor().constraintEqualTo(middle->leadingAnchor()).setActive(true);
    inside->trailingAnchor().constraintEqualTo(middle->trailingAnchor()).setActive(true);
    root.layoutIfNeeded();

    double const top = harness.safeTop() + 50;
    double const height = screen.height - top - 40;
    this->expectFrame(*header, { 0, harness.safeTop(), screen.width, 50 });
    this->expectFrame(*footer, { 0, screen.height - 40, screen.width, 40 });
    this->expectFrame(*middle, { 0, top, screen.width, height });
    this->expectFrame(*inside, { 0, 0, screen.width, height });
}

TYPED_TEST_P(ViewContract, ReachesTheBottomOfTheSafeArea)
{
    auto& root = this->root();
    auto const view = this->m_harness.makeContentView(30);
    this->add(view);
    view->bottomAnchor().constraintEqualTo(root.safeAreaLayoutGuide().bottomAnchor()).setActive(true);
    this->pinSides(*view);
    root.layoutIfNeeded();
    double const bottom = this->m_screen.height - this->m_harness.safeBottom();
    this->expectFrame(*view, { 0, bottom - 30, this->m_screen.width, 30 });
}

TYPED_TEST_P(ViewContract, KeepsTheFrameOfAViewThatConstraintsDoNotPlace)
{
    auto const view = std::make_shared<platform::UIView>(platform::CGRect { 10, 20, 100, 50 });
    this->root().addSubview(view);
    this->root().layoutIfNeeded();
    this->expectFrame(*view, { 10, 20, 100, 50 });
}

TYPED_TEST_P(ViewContract, AHiddenViewKeepsItsPlace)
{
    auto& harness = this->m_harness;
    auto& root = this->root();
    auto const footer = this->addFooter(40);
    footer->setHidden(true);
    root.layoutIfNeeded();
    platform::CGRect const place { 0, this->m_screen.height - 40, this->m_screen.width, 40 };
    this->expectFrame(*footer, place);
    EXPECT_TRUE(harness.runUntil([&] { return !harness.isSeen(*footer); }));
    footer->setHidden(false);
    EXPECT_TRUE(harness.runUntil([&] { return harness.isSeen(*footer); }));
    this->expectFrame(*footer, place);
}

TYPED_TEST_P(ViewContract, ALaterSubviewLiesInFrontUntilAnotherIsBroughtThere)
{
    auto& harness = this->m_harness;
    auto& root = this->root();
    auto const first = std::make_shared<platform::UIView>();
    auto const second = std::make_shared<platform::UIView>();
    auto const third = std::make_shared<platform::UIView>();
    for (auto const& view : { first, second, third })
        root.addSubview(view);
    using Order = std::vector<platform::UIView const*>;
    EXPECT_EQ(harness.backToFront(root), (Order { first.get(), second.get(), third.get() }));
    root.bringSubviewToFront(*first);
    EXPECT_EQ(harness.backToFront(root), (Order { second.get(), third.get(), first.get() }));
    third->removeFromSuperview();
    EXPECT_EQ(harness.backToFront(root), (Order { second.get(), first.get() }));
}

TYPED_TEST_P(ViewContract, AViewThatMovesToAnotherSuperviewIsPlacedThere)
{
    auto& root = this->root();
    auto const container = std::make_shared<platform::UIView>(platform::CGRect { 30, 40, 200, 100 });
    root.addSubview(container);
    auto const view = this->m_harness.makeContentView(25);
    this->add(view);
    view->topAnchor().constraintEqualTo(root.topAnchor()).setActive(true);
    this->pinSides(*view);
    root.layoutIfNeeded();
    container->addSubview(view);
    EXPECT_TRUE(root.constraints().empty());
    view->bottomAnchor().constraintEqualTo(container->bottomAnchor()).setActive(true);
    view->leadingAnchor().constraintEqualTo(container->leadingAnchor()).setActive(true);
    view->trailingAnchor().constraintEqualTo(container->trailingAnchor()).setActive(true);
    root.layoutIfNeeded();
    this->expectFrame(*view, { 0, 75, 200, 25 });
}

TYPED_TEST_P(ViewContract, AnAnimationEndsAtTheExactFrames)
{
    auto& root = this->root();
    auto const footer = this->addFooter(40);
    auto const page = std::make_shared<platform::UIView>();
    this->add(page);
    page->topAnchor().constraintEqualTo(root.topAnchor()).setActive(true);
    this->pinSides(*page);
    auto const toRoot = page->bottomAnchor().constraintEqualTo(root.bottomAnchor());
    auto const toFooter = page->bottomAnchor().constraintEqualTo(footer->topAnchor());
    toRoot.setActive(true);
    root.layoutIfNeeded();
    platform::CGRect const whole { 0, 0, this->m_screen.width, this->m_screen.height };
    platform::CGRect const shortened { 0, 0, whole.width, whole.height - 40 };
    this->expectFrame(*page, whole);

    bool hasRun = false;
    toRoot.setActive(false);
    toFooter.setActive(true);
    platform::UIView::animate(0.3, [&] {
        hasRun = true;
        root.layoutIfNeeded();
    });
    EXPECT_TRUE(hasRun);
    EXPECT_EQ(page->bounds().height, shortened.height);
    this->expectFrame(*page, shortened);

    toFooter.setActive(false);
    toRoot.setActive(true);
    platform::UIView::animate(0, [&] { root.layoutIfNeeded(); });
    this->expectFrame(*page, whole);
}

// Nobody calls `layoutIfNeeded` on the screens that the SDK opens.
TYPED_TEST_P(ViewContract, ATreeThatChangedIsLaidOutWithoutBeingAsked)
{
    auto& root = this->root();
    auto const footer = this->addFooter(40);
    auto const page = std::make_shared<platform::UIView>();
    this->add(page);
    page->topAnchor().constraintEqualTo(root.topAnchor()).setActive(true);
    this->pinSides(*page);
    auto const toFooter = page->bottomAnchor().constraintEqualTo(footer->topAnchor());
    toFooter.setActive(true);
    this->expectFrame(*page, { 0, 0, this->m_screen.width, this->m_screen.height - 40 });

    toFooter.setActive(false);
    page->bottomAnchor().constraintEqualTo(root.bottomAnchor()).setActive(true);
    this->expectFrame(*page, { 0, 0, this->m_screen.width, this->m_screen.height });
}

TYPED_TEST_P(ViewContract, OwnsItsSubviewsUntilTheyAreRemoved)
{
    auto view = std::make_shared<platform::UIView>();
    std::weak_ptr<platform::UIView> const watched = view;
    this->root().addSubview(view);
    view.reset();
    ASSERT_FALSE(watched.expired());
    watched.lock()->removeFromSuperview();
    EXPECT_TRUE(this->m_harness.runUntil([&] { return watched.expired(); }));
}

REGISTER_TYPED_TEST_SUITE_P(ViewContract, PlacesViewsByTheirConstraints, ReachesTheBottomOfTheSafeArea,
    KeepsTheFrameOfAViewThatConstraintsDoNotPlace, AHiddenViewKeepsItsPlace,
    ALaterSubviewLiesInFrontUntilAnotherIsBroughtThere, AViewThatMovesToAnotherSuperviewIsPlacedThere,
    AnAnimationEndsAtTheExactFrames, ATreeThatChangedIsLaidOutWithoutBeingAsked, OwnsItsSubviewsUntilTheyAreRemoved);

}
