#include "ZelvoraAdapters/shared/Layout/LayoutSolver.h"

#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using platform::CGRect;
using platform::NSLayoutConstraint;
using platform::UIView;
using shared::LayoutDirection;
using Kind = shared::LayoutAmbiguity::Kind;
using Sentences = std::vector<std::string>;
using View = std::shared_ptr<UIView>;

/// The sizes that a test gives its views.
class KnownMetrics final : public shared::LayoutMetrics {
public:
    struct Known {
        std::optional<CGRect> frame {};
        std::optional<double> width {};
        std::function<std::optional<double>(double)> height = [](double) { return std::nullopt; };
    };

    std::map<UIView const*, Known> views;

    // shared::LayoutMetrics
    [[nodiscard]] std::optional<CGRect> fixedFrame(UIView const& view) const override { return views.at(&view).frame; }
    [[nodiscard]] std::optional<double> intrinsicWidth(UIView const& view) const override
    {
        return views.at(&view).width;
    }
    [[nodiscard]] std::optional<double> intrinsicHeight(UIView const& view, double width) const override
    {
        return views.at(&view).height(width);
    }
};

/// A root of 100 by 200 points, whose safe area begins at 20 and ends at 190.
class LayoutSolverTest : public InstalledPlatform {
protected:
    LayoutSolverTest() { metrics.views[root.get()]; }

    /// A view without an intrinsic size.
    View add(View const& parent) { return add(parent, {}); }
    View add(View const& parent, KnownMetrics::Known known)
    {
        auto view = std::make_shared<UIView>();
        metrics.views[view.get()] = std::move(known);
        parent->addSubview(view);
        return view;
    }
    View addContent(double width, double height)
    {
        return add(root, { .width = width, .height = [height](double) { return height; } });
    }
    View addFixed(View const& parent, CGRect frame) { return add(parent, { .frame = frame }); }

    static void pinSides(View const& view, View const& to)
    {
        NSLayoutConstraint::activate({ view->leadingAnchor().constraintEqualTo(to->leadingAnchor()),
            view->trailingAnchor().constraintEqualTo(to->trailingAnchor()) });
    }
    static void pinTopAndBottom(View const& view, View const& to)
    {
        NSLayoutConstraint::activate({ view->topAnchor().constraintEqualTo(to->topAnchor()),
            view->bottomAnchor().constraintEqualTo(to->bottomAnchor()) });
    }

    void solve() { layout = shared::solveLayout(*root, space, metrics); }

    CGRect frameOf(View const& view) const
    {
        auto const found = std::ranges::find(layout.frames, view.get(), &shared::LayoutFrame::view);
        return found == layout.frames.end() ? CGRect { -1, -1, -1, -1 } : found->frame;
    }
    Sentences sentences() const
    {
        Sentences sentences;
        for (auto const& ambiguity : layout.ambiguities)
            sentences.push_back(ambiguity.sentence);
        return sentences;
    }

    View root = std::make_shared<UIView>();
    KnownMetrics metrics;
    shared::LayoutSpace space { .frame = { 0, 0, 100, 200 }, .safeAreaInsets = { 20, 10 } };
    shared::SolvedLayout layout;
};

}

TEST_F(LayoutSolverTest, ListsParentsBeforeTheirChildrenAndTheRootFirst)
{
    auto const outer = addFixed(root, { 1, 2, 30, 40 });
    auto const inner = addFixed(outer, { 3, 4, 5, 6 });
    auto const last = addFixed(root, { 7, 8, 9, 10 });
    solve();
    ASSERT_EQ(layout.frames.size(), 4U);
    EXPECT_EQ(layout.frames[0].view, root.get());
    EXPECT_EQ(layout.frames[1].view, outer.get());
    EXPECT_EQ(layout.frames[2].view, inner.get());
    EXPECT_EQ(layout.frames[3].view, last.get());
    EXPECT_EQ(frameOf(inner), (CGRect { 3, 4, 5, 6 }));
    EXPECT_EQ(sentences(), Sentences {});
}

TEST_F(LayoutSolverTest, PlacesViewsInTheirSuperviewWhereverTheRootIs)
{
    space.frame = { 1000, 2000, 100, 200 };
    auto const outer = add(root);
    pinSides(outer, root);
    NSLayoutConstraint::activate({ outer->topAnchor().constraintEqualTo(root->safeAreaLayoutGuide().topAnchor()),
        outer->bottomAnchor().constraintEqualTo(root->bottomAnchor()) });
    auto const inner = add(outer);
    pinSides(inner, outer);
    pinTopAndBottom(inner, outer);
    solve();
    EXPECT_EQ(frameOf(root), (CGRect { 1000, 2000, 100, 200 }));
    EXPECT_EQ(frameOf(outer), (CGRect { 0, 20, 100, 180 }));
    EXPECT_EQ(frameOf(inner), (CGRect { 0, 0, 100, 180 }));
    EXPECT_EQ(sentences(), Sentences {});
}

TEST_F(LayoutSolverTest, TheSafeAreaOfAViewIsItsPartOfTheScreensSafeArea)
{
    auto const upper = addFixed(root, { 0, 5, 100, 100 });
    auto const lower = addFixed(root, { 0, 105, 100, 95 });
    auto const inUpper = add(upper);
    auto const inLower = add(lower);
    for (auto const& [inner, outer] : { std::pair { inUpper, upper }, { inLower, lower } }) {
        pinSides(inner, outer);
        NSLayoutConstraint::activate({ inner->topAnchor().constraintEqualTo(outer->safeAreaLayoutGuide().topAnchor()),
            inner->bottomAnchor().constraintEqualTo(outer->safeAreaLayoutGuide().bottomAnchor()) });
    }
    solve();
    EXPECT_EQ(frameOf(inUpper), (CGRect { 0, 15, 100, 85 }));
    EXPECT_EQ(frameOf(inLower), (CGRect { 0, 0, 100, 85 }));
    EXPECT_EQ(sentences(), Sentences {});
}

TEST_F(LayoutSolverTest, AConstraintThatMovesASafeAreaIsReported)
{
    auto const outer = addFixed(root, { 0, 100, 100, 100 });
    auto const inner = add(outer);
    pinSides(inner, outer);
    NSLayoutConstraint::activate({ inner->topAnchor().constraintEqualTo(outer->topAnchor()),
        inner->bottomAnchor().constraintEqualTo(outer->bottomAnchor()),
        inner->bottomAnchor().constraintEqualTo(outer->safeAreaLayoutGuide().bottomAnchor()) });
    solve();
    EXPECT_EQ(sentences(), Sentences { "root/0/0.bottom cannot equal root/0.safeArea.bottom: 200 and 190" });
}

TEST_F(LayoutSolverTest, RightToLeftTheLeadingEdgeIsTheRightOne)
{
    space.direction = LayoutDirection::RightToLeft;
    auto const leading = addContent(30, 10);
    auto const next = addContent(20, 10);
    for (auto const& view : { leading, next })
        view->topAnchor().constraintEqualTo(root->topAnchor()).setActive(true);
    NSLayoutConstraint::activate({ leading->leadingAnchor().constraintEqualTo(root->leadingAnchor()),
        next->leadingAnchor().constraintEqualTo(leading->trailingAnchor()) });
    solve();
    EXPECT_EQ(frameOf(leading), (CGRect { 70, 0, 30, 10 }));
    EXPECT_EQ(frameOf(next), (CGRect { 50, 0, 20, 10 }));
    space.direction = LayoutDirection::LeftToRight;
    solve();
    EXPECT_EQ(frameOf(leading), (CGRect { 0, 0, 30, 10 }));
    EXPECT_EQ(frameOf(next), (CGRect { 30, 0, 20, 10 }));
}

TEST_F(LayoutSolverTest, RightToLeftAFixedFrameStaysAndOthersAreBesideIt)
{
    space.direction = LayoutDirection::RightToLeft;
    space.frame.x = 500;
    auto const fixed = addFixed(root, { 10, 20, 30, 40 });
    auto const before = addContent(5, 40);
    auto const after = addContent(5, 40);
    for (auto const& view : { before, after })
        view->topAnchor().constraintEqualTo(fixed->topAnchor()).setActive(true);
    NSLayoutConstraint::activate({ before->trailingAnchor().constraintEqualTo(fixed->leadingAnchor()),
        after->leadingAnchor().constraintEqualTo(fixed->trailingAnchor()) });
    solve();
    EXPECT_EQ(frameOf(fixed), (CGRect { 10, 20, 30, 40 }));
    EXPECT_EQ(frameOf(before), (CGRect { 40, 20, 5, 40 }));
    EXPECT_EQ(frameOf(after), (CGRect { 5, 20, 5, 40 }));
    EXPECT_EQ(sentences(), Sentences {});
}

TEST_F(LayoutSolverTest, AHeightMayDependOnTheWidth)
{
    auto const text = add(root, { .height = [](double width) { return 1200 / width; } });
    pinSides(text, root);
    text->topAnchor().constraintEqualTo(root->topAnchor()).setActive(true);
    solve();
    EXPECT_EQ(frameOf(text), (CGRect { 0, 0, 100, 12 }));
    space.frame.width = 50;
    solve();
    EXPECT_EQ(frameOf(text), (CGRect { 0, 0, 50, 24 }));
}

TEST_F(LayoutSolverTest, ConstraintsOutrankTheIntrinsicSize)
{
    auto const view = addContent(10, 10);
    pinSides(view, root);
    pinTopAndBottom(view, root);
    solve();
    EXPECT_EQ(frameOf(view), (CGRect { 0, 0, 100, 200 }));
    EXPECT_EQ(sentences(), Sentences {});
}

TEST_F(LayoutSolverTest, WhatFollowsFromOneIntrinsicSizeOutranksTheNext)
{
    auto const upper = addContent(100, 50);
    auto const lower = addContent(100, 80);
    pinSides(upper, root);
    pinSides(lower, root);
    // The first decides, and leaves the second less than it wants.
    NSLayoutConstraint::activate({ upper->topAnchor().constraintEqualTo(root->topAnchor()),
        lower->topAnchor().constraintEqualTo(upper->bottomAnchor()),
        lower->bottomAnchor().constraintEqualTo(root->bottomAnchor()) });
    space.frame.height = 120;
    solve();
    EXPECT_EQ(frameOf(upper), (CGRect { 0, 0, 100, 50 }));
    EXPECT_EQ(frameOf(lower), (CGRect { 0, 50, 100, 70 }));
    EXPECT_EQ(sentences(), Sentences { "root/1 is squeezed below the height of its content: 70 and 80" });
}

TEST_F(LayoutSolverTest, TheEarlierOfTwoContradictingConstraintsWins)
{
    auto const view = addContent(10, 10);
    view->leadingAnchor().constraintEqualTo(root->leadingAnchor()).setActive(true);
    view->topAnchor().constraintEqualTo(root->safeAreaLayoutGuide().topAnchor()).setActive(true);
    view->topAnchor().constraintEqualTo(root->topAnchor()).setActive(true);
    solve();
    EXPECT_EQ(frameOf(view), (CGRect { 0, 20, 10, 10 }));
    ASSERT_EQ(layout.ambiguities.size(), 1U);
    EXPECT_EQ(layout.ambiguities[0].kind, Kind::BrokenConstraint);
    EXPECT_EQ(layout.ambiguities[0].sentence, "root/0.top cannot equal root.top: 20 and 0");
}

TEST_F(LayoutSolverTest, TheEarlierConstraintWinsEvenIfItsEdgesAreKnownLater)
{
    auto const first = addContent(10, 10);
    auto const second = addContent(10, 10);
    for (auto const& view : { first, second })
        view->leadingAnchor().constraintEqualTo(root->leadingAnchor()).setActive(true);
    NSLayoutConstraint::activate({ first->topAnchor().constraintEqualTo(second->topAnchor()),
        second->topAnchor().constraintEqualTo(root->topAnchor()),
        first->topAnchor().constraintEqualTo(root->safeAreaLayoutGuide().topAnchor()) });
    solve();
    EXPECT_EQ(frameOf(first).y, 0);
    EXPECT_EQ(sentences(), Sentences { "root/0.top cannot equal root.safeArea.top: 0 and 20" });
}

TEST_F(LayoutSolverTest, AViewWithOneEdgeAndNoSizeIsEmptyAndReported)
{
    auto const view = add(root);
    pinSides(view, root);
    view->bottomAnchor().constraintEqualTo(root->bottomAnchor()).setActive(true);
    solve();
    EXPECT_EQ(frameOf(view), (CGRect { 0, 200, 100, 0 }));
    ASSERT_EQ(layout.ambiguities.size(), 1U);
    EXPECT_EQ(layout.ambiguities[0].kind, Kind::Placement);
    EXPECT_EQ(layout.ambiguities[0].sentence, "root/0 has no top edge");
}

TEST_F(LayoutSolverTest, AViewWithoutEdgesStartsWhereItsSuperviewStarts)
{
    auto const outer = addFixed(root, { 40, 30, 20, 20 });
    auto const inner = add(outer, { .width = 7, .height = [](double) { return 8; } });
    solve();
    EXPECT_EQ(frameOf(inner), (CGRect { 0, 0, 7, 8 }));
    EXPECT_EQ(sentences(),
        (Sentences { "root/0/0 has no top edge", "root/0/0 has no bottom edge", "root/0/0 has no leading edge",
            "root/0/0 has no trailing edge" }));
}

TEST_F(LayoutSolverTest, AViewThatIsPinnedUpsideDownIsEmptyAndReported)
{
    auto const view = add(root);
    pinTopAndBottom(view, root);
    NSLayoutConstraint::activate({ view->leadingAnchor().constraintEqualTo(root->trailingAnchor()),
        view->trailingAnchor().constraintEqualTo(root->leadingAnchor()) });
    solve();
    EXPECT_EQ(frameOf(view), (CGRect { 100, 0, 0, 200 }));
    EXPECT_EQ(sentences(), Sentences { "root/0 has a negative width: -100" });
}

TEST_F(LayoutSolverTest, AFixedFrameThatConstraintsContradictIsReported)
{
    auto const view = addFixed(root, { 10, 20, 30, 40 });
    view->topAnchor().constraintEqualTo(root->topAnchor()).setActive(true);
    solve();
    EXPECT_EQ(frameOf(view), (CGRect { 10, 0, 30, 60 }));
    EXPECT_EQ(sentences(), Sentences { "root/0 is placed by its own frame and by constraints that differ: 20 and 0" });
}

TEST_F(LayoutSolverTest, ArithmeticAloneContradictsNothing)
{
    space.safeAreaInsets = { 0.1 + 0.2, 0 };
    auto const view = addFixed(root, { 0, 0.3, 10, 10 });
    auto const other = addContent(10, 10);
    NSLayoutConstraint::activate({ other->leadingAnchor().constraintEqualTo(root->leadingAnchor()),
        other->topAnchor().constraintEqualTo(view->topAnchor()),
        view->topAnchor().constraintEqualTo(root->safeAreaLayoutGuide().topAnchor()) });
    solve();
    EXPECT_EQ(sentences(), Sentences {});
}

}
