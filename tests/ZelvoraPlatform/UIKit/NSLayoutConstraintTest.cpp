#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <gtest/gtest.h>

namespace zelvora::platform {

namespace {

using Constraints = std::vector<NSLayoutConstraint>;

class NSLayoutConstraintTest : public ::testing::Test {
protected:
    NSLayoutConstraintTest()
    {
        m_root->addSubview(m_middle);
        m_middle->addSubview(m_leaf);
        m_root->addSubview(m_sibling);
    }

    memory::Platform& m_platform = memory::install();
    std::shared_ptr<UIView> m_root = std::make_shared<UIView>();
    std::shared_ptr<UIView> m_middle = std::make_shared<UIView>();
    std::shared_ptr<UIView> m_leaf = std::make_shared<UIView>();
    std::shared_ptr<UIView> m_sibling = std::make_shared<UIView>();
};

TEST_F(NSLayoutConstraintTest, AConstraintSaysWhichEdgesAreEqual)
{
    auto const constraint = m_middle->topAnchor().constraintEqualTo(m_root->safeAreaLayoutGuide().topAnchor());
    EXPECT_EQ(constraint.firstAnchor(),
        (NSLayoutAnchor { m_middle.get(), NSLayoutAnchor::Item::View, NSLayoutAttribute::Top }));
    EXPECT_EQ(constraint.secondAnchor(),
        (NSLayoutAnchor { m_root.get(), NSLayoutAnchor::Item::SafeArea, NSLayoutAttribute::Top }));
}

TEST_F(NSLayoutConstraintTest, TheAnchorsNameTheirEdges)
{
    EXPECT_EQ(m_root->topAnchor().attribute, NSLayoutAttribute::Top);
    EXPECT_EQ(m_root->leadingAnchor().attribute, NSLayoutAttribute::Leading);
    EXPECT_EQ(m_root->trailingAnchor().attribute, NSLayoutAttribute::Trailing);
    EXPECT_EQ(m_root->bottomAnchor().attribute, NSLayoutAttribute::Bottom);
    EXPECT_EQ(m_root->safeAreaLayoutGuide().bottomAnchor(),
        (NSLayoutAnchor { m_root.get(), NSLayoutAnchor::Item::SafeArea, NSLayoutAttribute::Bottom }));
}

TEST_F(NSLayoutConstraintTest, ConstraintsOnTheSameEdgesAreEqual)
{
    EXPECT_EQ(m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor()),
        m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor()));
    EXPECT_NE(m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor()),
        m_leaf->topAnchor().constraintEqualTo(m_root->safeAreaLayoutGuide().topAnchor()));
}

TEST_F(NSLayoutConstraintTest, MakingAConstraintActivatesNothing)
{
    (void)m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor());
    EXPECT_TRUE(m_root->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, AnActiveConstraintIsKeptByTheNearestCommonAncestor)
{
    auto const toParent = m_leaf->topAnchor().constraintEqualTo(m_middle->topAnchor());
    auto const toSibling = m_leaf->bottomAnchor().constraintEqualTo(m_sibling->topAnchor());
    NSLayoutConstraint::activate({ toParent, toSibling });
    EXPECT_EQ(m_middle->constraints(), (Constraints { toParent }));
    EXPECT_EQ(m_root->constraints(), (Constraints { toSibling }));
    EXPECT_TRUE(m_leaf->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, ConstraintsAreActivatedInTheOrderGiven)
{
    Constraints const given { m_middle->topAnchor().constraintEqualTo(m_root->topAnchor()),
        m_middle->bottomAnchor().constraintEqualTo(m_root->bottomAnchor()),
        m_middle->leadingAnchor().constraintEqualTo(m_root->leadingAnchor()) };
    NSLayoutConstraint::activate({ given[0], given[1], given[2] });
    EXPECT_EQ(m_root->constraints(), given);
}

TEST_F(NSLayoutConstraintTest, ActivatingTwiceActivatesOnce)
{
    auto const constraint = m_middle->topAnchor().constraintEqualTo(m_root->topAnchor());
    constraint.setActive(true);
    constraint.setActive(true);
    EXPECT_EQ(m_root->constraints().size(), 1U);
    constraint.setActive(false);
    EXPECT_TRUE(m_root->constraints().empty());
    EXPECT_EQ(m_platform.screen().calls().of({ m_root.get() }).size(), 4U) << "two subviews, one on, one off";
}

TEST_F(NSLayoutConstraintTest, DeactivatingAnInactiveConstraintDoesNothing)
{
    m_middle->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(false);
    auto const stranger = std::make_shared<UIView>();
    m_middle->topAnchor().constraintEqualTo(stranger->topAnchor()).setActive(false);
    EXPECT_TRUE(m_root->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, AConstraintEndsWhenOneOfItsViewsLeaves)
{
    m_middle->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(true);
    m_sibling->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(true);
    m_middle->removeFromSuperview();
    ASSERT_EQ(m_root->constraints().size(), 1U);
    EXPECT_EQ(m_root->constraints().front().firstAnchor().view, m_sibling.get());
}

TEST_F(NSLayoutConstraintTest, AConstraintEndsWhenAViewAroundOneOfItsViewsLeaves)
{
    m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(true);
    m_sibling->topAnchor().constraintEqualTo(m_leaf->bottomAnchor()).setActive(true);
    m_middle->removeFromSuperview();
    EXPECT_TRUE(m_root->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, AConstraintKeptByAViewFurtherUpEndsToo)
{
    m_leaf->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(true);
    m_sibling->topAnchor().constraintEqualTo(m_leaf->bottomAnchor()).setActive(true);
    m_leaf->removeFromSuperview();
    EXPECT_TRUE(m_root->constraints().empty());
}

TEST_F(NSLayoutConstraintTest, AConstraintInsideALeavingViewStays)
{
    m_leaf->topAnchor().constraintEqualTo(m_middle->topAnchor()).setActive(true);
    m_middle->removeFromSuperview();
    EXPECT_EQ(m_middle->constraints().size(), 1U);
}

TEST_F(NSLayoutConstraintTest, AConstraintEndsBeforeThePeerRemovesItsView)
{
    m_middle->topAnchor().constraintEqualTo(m_root->topAnchor()).setActive(true);
    m_platform.screen().calls().clear();
    m_middle->removeFromSuperview();
    auto const calls = m_platform.screen().calls().of({ m_root.get() });
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_TRUE(calls[0].starts_with("deactivate")) << calls[0];
    EXPECT_TRUE(calls[1].starts_with("removeSubview")) << calls[1];
}

using NSLayoutConstraintDeathTest = NSLayoutConstraintTest;

TEST_F(NSLayoutConstraintDeathTest, ActivatingBetweenViewsWithNoCommonAncestorStopsTheProcess)
{
    auto const stranger = std::make_shared<UIView>();
    EXPECT_DEATH(m_leaf->topAnchor().constraintEqualTo(stranger->topAnchor()).setActive(true),
        "Fatal error: a constraint was activated between views that have no common ancestor");
}

}

}
