#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

namespace {

using memory::frame;
using memory::IntrinsicSize;
using memory::View;
using platform::CGRect;
using platform::NSLayoutConstraint;
using platform::UIView;
using Sentences = std::vector<std::string>;

/// A screen with a header, a footer and what is between them.
class LayoutTest : public InstalledPlatform {
protected:
    LayoutTest()
    {
        for (auto const& view : { header, footer, content }) {
            view->setTranslatesAutoresizingMaskIntoConstraints(false);
            root.addSubview(view);
            NSLayoutConstraint::activate({
                view->leadingAnchor().constraintEqualTo(root.leadingAnchor()),
                view->trailingAnchor().constraintEqualTo(root.trailingAnchor()),
            });
        }
        NSLayoutConstraint::activate({
            header->topAnchor().constraintEqualTo(root.safeAreaLayoutGuide().topAnchor()),
            footer->bottomAnchor().constraintEqualTo(root.bottomAnchor()),
            content->topAnchor().constraintEqualTo(header->bottomAnchor()),
            toFooter,
        });
    }

    std::shared_ptr<memory::ViewController> controller = std::make_shared<memory::ViewController>();
    UIView& root = controller->view();
    std::shared_ptr<View> header = std::make_shared<View>(IntrinsicSize { .height = 56 });
    std::shared_ptr<View> footer = std::make_shared<View>(IntrinsicSize { .height = 80 });
    std::shared_ptr<View> content = std::make_shared<View>();
    NSLayoutConstraint toFooter = content->bottomAnchor().constraintEqualTo(footer->topAnchor());
    NSLayoutConstraint toBottom = content->bottomAnchor().constraintEqualTo(root.bottomAnchor());
};

}

TEST_F(LayoutTest, EdgesSafeAreaAndIntrinsicHeightsPlaceTheViews)
{
    root.layoutIfNeeded();
    EXPECT_EQ(frame(root), (CGRect { 0, 0, 390, 844 }));
    EXPECT_EQ(frame(*header), (CGRect { 0, 47, 390, 56 }));
    EXPECT_EQ(frame(*content), (CGRect { 0, 103, 390, 661 }));
    EXPECT_EQ(frame(*footer), (CGRect { 0, 764, 390, 80 }));
    EXPECT_EQ(content->bounds(), (CGRect { 0, 0, 390, 661 }));
    EXPECT_EQ(screen.ambiguities(), Sentences {});
}

TEST_F(LayoutTest, AHiddenViewKeepsItsPlace)
{
    footer->setHidden(true);
    platform.layout();
    EXPECT_EQ(frame(*footer), (CGRect { 0, 764, 390, 80 }));
    EXPECT_EQ(frame(*content).height, 661);
}

TEST_F(LayoutTest, AnAnimationRecordsWhatMovesFromWhereToWhere)
{
    platform.layout();
    toFooter.setActive(false);
    toBottom.setActive(true);
    UIView::animate(0.3, [this] { root.layoutIfNeeded(); });

    ASSERT_EQ(screen.animations().size(), 1u);
    auto const& animation = screen.animations().front();
    EXPECT_EQ(animation.duration, 0.3);
    EXPECT_TRUE(animation.laidOut);
    EXPECT_EQ(
        animation.moves, (std::vector<memory::Move> { { content.get(), { 0, 103, 390, 661 }, { 0, 103, 390, 741 } } }));
    EXPECT_EQ(frame(*content), (CGRect { 0, 103, 390, 741 }));
}

TEST_F(LayoutTest, AnAnimationWithoutALayoutPassMovesNothing)
{
    toFooter.setActive(false);
    toBottom.setActive(true);
    UIView::animate(0.3, [] { });
    EXPECT_FALSE(screen.animations().front().laidOut);
    EXPECT_TRUE(screen.animations().front().moves.empty());
}

TEST_F(LayoutTest, AnotherScreenSizeChangesTheLayout)
{
    screen.setSize(320, 568);
    screen.setSafeAreaInsets({ 20, 0 });
    platform.layout();
    EXPECT_EQ(frame(*header), (CGRect { 0, 20, 320, 56 }));
    EXPECT_EQ(frame(*content), (CGRect { 0, 76, 320, 412 }));
}

TEST_F(LayoutTest, AMissingConstraintIsReported)
{
    toFooter.setActive(false);
    platform.layout();
    EXPECT_EQ(screen.ambiguities(), Sentences { "root/2 has no bottom edge" });
    EXPECT_EQ(frame(*content), (CGRect { 0, 103, 390, 0 }));

    toBottom.setActive(true);
    platform.layout();
    EXPECT_EQ(screen.ambiguities(), Sentences {});
}

TEST_F(LayoutTest, AViewThatNobodyHasPlacedLacksNothing)
{
    // Such as the footer of a closed screen, which the test still holds.
    toFooter.setActive(false);
    content->removeFromSuperview();
    footer->removeFromSuperview();
    platform.layout();
    EXPECT_EQ(screen.ambiguities(), Sentences {});

    footer->peer().setFrame({ 0, 0, 390, 48 });
    platform.layout();
    EXPECT_EQ(screen.ambiguities(), Sentences { "root is squeezed below the height of its content: 48 and 80" });
}

TEST_F(LayoutTest, AFrameIsPrintedAsItsMembers)
{
    root.layoutIfNeeded();
    EXPECT_EQ(testing::PrintToString(frame(*header)), "(0, 47, 390, 56)");
}

TEST_F(LayoutTest, AViewInAViewIsPlacedInItsSuperview)
{
    auto const inner = std::make_shared<View>(IntrinsicSize { .width = 20, .height = 10 });
    inner->setTranslatesAutoresizingMaskIntoConstraints(false);
    footer->addSubview(inner);
    NSLayoutConstraint::activate({
        inner->trailingAnchor().constraintEqualTo(footer->trailingAnchor()),
        inner->bottomAnchor().constraintEqualTo(footer->safeAreaLayoutGuide().bottomAnchor()),
    });
    inner->layoutIfNeeded();
    EXPECT_EQ(frame(*inner), (CGRect { 370, 36, 20, 10 }));
}

TEST_F(LayoutTest, AViewThatTranslatesItsMaskStaysWhereItsFrameIs)
{
    auto const fixed = std::make_shared<UIView>(CGRect { 10, 20, 30, 40 });
    content->addSubview(fixed);
    platform.layout();
    EXPECT_EQ(frame(*fixed), (CGRect { 10, 20, 30, 40 }));
    EXPECT_EQ(screen.ambiguities(), Sentences {});

    fixed->topAnchor().constraintEqualTo(content->topAnchor()).setActive(true);
    platform.layout();
    EXPECT_EQ(screen.ambiguities(),
        Sentences { "root/2/0 is placed by its own frame and by constraints that differ: 123 and 103" });
}

TEST_F(LayoutTest, AViewInNoControllerHasNoSafeArea)
{
    auto const loose = std::make_shared<UIView>(CGRect { 5, 5, 100, 100 });
    auto const inner = std::make_shared<View>(IntrinsicSize { .width = 1, .height = 1 });
    inner->setTranslatesAutoresizingMaskIntoConstraints(false);
    loose->addSubview(inner);
    NSLayoutConstraint::activate({
        inner->leadingAnchor().constraintEqualTo(loose->leadingAnchor()),
        inner->topAnchor().constraintEqualTo(loose->safeAreaLayoutGuide().topAnchor()),
    });
    loose->layoutIfNeeded();
    EXPECT_EQ(frame(*loose), (CGRect { 5, 5, 100, 100 }));
    EXPECT_EQ(frame(*inner), (CGRect { 0, 0, 1, 1 }));
}

TEST_F(LayoutTest, TheCallsToAViewAreRecorded)
{
    screen.calls().clear();
    root.setBackgroundColor(platform::UIColor::white());
    footer->setHidden(true);
    root.bringSubviewToFront(*header);
    toFooter.setActive(false);
    EXPECT_EQ(memory::peer(root).backgroundColor(), platform::UIColor::white());
    EXPECT_EQ(screen.calls().of({ &root }),
        (Sentences { "setBackgroundColor", "bringSubviewToFront", "deactivate bottom = top" }));
    EXPECT_EQ(screen.calls().all()[1], (memory::CallRecord::Call { footer.get(), "setHidden true" }));

    footer->removeFromSuperview();
    footer.reset();
    EXPECT_EQ(screen.calls().all()[1], (memory::CallRecord::Call { nullptr, "setHidden true" }));
}

}
