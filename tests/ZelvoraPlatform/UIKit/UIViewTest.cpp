#include "ZelvoraPlatform/UIKit/UIView.h"

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"

#include <gtest/gtest.h>

namespace zelvora::platform {

namespace {

using Views = std::vector<std::shared_ptr<UIView>>;
using Calls = std::vector<std::string>;

class UIViewTest : public ::testing::Test {
protected:
    [[nodiscard]] Calls calls(std::initializer_list<void const*> objects)
    {
        return m_platform.screen().calls().of(objects);
    }

    memory::Platform& m_platform = memory::install();
    std::shared_ptr<UIView> m_root = std::make_shared<UIView>();
    std::shared_ptr<UIView> m_first = std::make_shared<UIView>();
    std::shared_ptr<UIView> m_second = std::make_shared<UIView>();
};

TEST_F(UIViewTest, ANewViewIsInNoOtherAndIsShown)
{
    EXPECT_EQ(m_root->superview(), nullptr);
    EXPECT_TRUE(m_root->subviews().empty());
    EXPECT_TRUE(m_root->constraints().empty());
    EXPECT_TRUE(m_root->gestureRecognizers().empty());
    EXPECT_FALSE(m_root->isHidden());
}

TEST_F(UIViewTest, AViewIsMadeWithItsFrame)
{
    UIView const view({ 1, 2, 30, 40 });
    EXPECT_EQ(memory::frame(view), (CGRect { 1, 2, 30, 40 }));
    EXPECT_EQ(view.bounds(), (CGRect { 0, 0, 30, 40 }));
}

TEST_F(UIViewTest, SubviewsAreOrderedBackToFrontAndOwned)
{
    m_root->addSubview(m_first);
    m_root->addSubview(m_second);
    EXPECT_EQ(m_root->subviews(), (Views { m_first, m_second }));
    EXPECT_EQ(m_first->superview(), m_root.get());
    std::weak_ptr<UIView> const watched = m_first;
    m_first.reset();
    EXPECT_FALSE(watched.expired());
}

TEST_F(UIViewTest, AViewContainsItselfAndAllViewsInside)
{
    m_root->addSubview(m_first);
    m_first->addSubview(m_second);
    EXPECT_TRUE(m_root->contains(*m_root));
    EXPECT_TRUE(m_root->contains(*m_second));
    EXPECT_FALSE(m_second->contains(*m_root));
    EXPECT_FALSE(m_first->contains(*m_root));
}

TEST_F(UIViewTest, ThePeerIsToldAfterTheTreeHasChanged)
{
    m_root->addSubview(m_first);
    m_first->removeFromSuperview();
    EXPECT_EQ(calls({ m_root.get() }).size(), 2U);
    EXPECT_TRUE(calls({ m_root.get() })[0].starts_with("addSubview"));
    EXPECT_TRUE(calls({ m_root.get() })[1].starts_with("removeSubview"));
}

TEST_F(UIViewTest, AViewThatIsAddedElsewhereFirstLeavesItsSuperview)
{
    m_root->addSubview(m_first);
    m_second->addSubview(m_first);
    EXPECT_TRUE(m_root->subviews().empty());
    EXPECT_EQ(m_second->subviews(), (Views { m_first }));
    EXPECT_EQ(m_first->superview(), m_second.get());
}

TEST_F(UIViewTest, AViewThatIsAddedAgainComesToTheFront)
{
    m_root->addSubview(m_first);
    m_root->addSubview(m_second);
    m_root->addSubview(m_first);
    EXPECT_EQ(m_root->subviews(), (Views { m_second, m_first }));
}

TEST_F(UIViewTest, AViewMayBeAddedAgainThroughTheListOfSubviews)
{
    m_root->addSubview(std::make_shared<UIView>());
    m_root->addSubview(m_second);
    m_root->addSubview(m_root->subviews().front());
    ASSERT_EQ(m_root->subviews().size(), 2U);
    EXPECT_EQ(m_root->subviews().front(), m_second);
    EXPECT_EQ(m_root->subviews().back()->superview(), m_root.get());

    m_second->addSubview(m_root->subviews().back());
    EXPECT_EQ(m_root->subviews().size(), 1U);
    EXPECT_EQ(m_second->subviews().size(), 1U);
}

TEST_F(UIViewTest, RemovingAViewThatIsInNoOtherDoesNothing)
{
    m_first->removeFromSuperview();
    EXPECT_EQ(m_first->superview(), nullptr);
    EXPECT_TRUE(calls({ m_first.get() }).empty());
}

TEST_F(UIViewTest, RemovingAViewThatOnlyItsSuperviewOwnsDestroysIt)
{
    m_root->addSubview(m_first);
    std::weak_ptr<UIView> const watched = m_first;
    auto* const view = m_first.get();
    m_first.reset();
    view->removeFromSuperview();
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(m_root->subviews().empty());
}

TEST_F(UIViewTest, SubviewsOfADestroyedViewAreInNoOther)
{
    m_root->addSubview(m_first);
    m_root.reset();
    EXPECT_EQ(m_first->superview(), nullptr);
}

TEST_F(UIViewTest, BringingASubviewToTheFrontKeepsTheOrderOfTheOthers)
{
    auto const third = std::make_shared<UIView>();
    for (auto const& view : { m_first, m_second, third })
        m_root->addSubview(view);
    m_root->bringSubviewToFront(*m_first);
    EXPECT_EQ(m_root->subviews(), (Views { m_second, third, m_first }));
    m_root->bringSubviewToFront(*m_first);
    EXPECT_EQ(m_root->subviews(), (Views { m_second, third, m_first }));
}

TEST_F(UIViewTest, BringingAViewThatIsNoSubviewToTheFrontDoesNothing)
{
    m_root->addSubview(m_first);
    m_first->addSubview(m_second);
    auto const before = calls({ m_root.get() });
    m_root->bringSubviewToFront(*m_second);
    EXPECT_EQ(m_root->subviews(), (Views { m_first }));
    EXPECT_EQ(calls({ m_root.get() }), before);
}

TEST_F(UIViewTest, HidingIsRememberedAndPassedToThePeer)
{
    m_root->setHidden(true);
    EXPECT_TRUE(m_root->isHidden());
    m_root->setHidden(false);
    EXPECT_FALSE(m_root->isHidden());
    EXPECT_EQ(calls({ m_root.get() }), (Calls { "setHidden true", "setHidden false" }));
}

TEST_F(UIViewTest, ColorAndAutoresizingArePassedToThePeer)
{
    m_root->setBackgroundColor(UIColor::white());
    m_root->setTranslatesAutoresizingMaskIntoConstraints(false);
    EXPECT_EQ(memory::peer(*m_root).backgroundColor(), (UIColor { 1, 1, 1, 1 }));
    EXPECT_FALSE(memory::peer(*m_root).translatesAutoresizingMaskIntoConstraints());
}

TEST_F(UIViewTest, GestureRecognizersAreKept)
{
    auto recognizer =
        std::make_shared<UIScreenEdgePanGestureRecognizer>(UIRectEdge::Left, [](UIScreenEdgePanGestureRecognizer&) { });
    std::weak_ptr<UIGestureRecognizer> const watched = recognizer;
    m_root->addGestureRecognizer(recognizer);
    recognizer.reset();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(m_root->gestureRecognizers().size(), 1U);
    m_root.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(UIViewTest, AnimationsRunAtOnce)
{
    bool ran = false;
    UIView::animate(0.3, [&ran] { ran = true; });
    EXPECT_TRUE(ran);
    ASSERT_EQ(m_platform.screen().animations().size(), 1U);
    EXPECT_EQ(m_platform.screen().animations().front().duration, 0.3);
}

using UIViewDeathTest = UIViewTest;

TEST_F(UIViewDeathTest, AddingAViewToItselfStopsTheProcess)
{
    EXPECT_DEATH(m_root->addSubview(m_root), "Fatal error: a view was added to itself or to a view in it");
}

TEST_F(UIViewDeathTest, AddingAViewToAViewInsideItStopsTheProcess)
{
    m_root->addSubview(m_first);
    m_first->addSubview(m_second);
    EXPECT_DEATH(m_second->addSubview(m_root), "Fatal error: a view was added to itself or to a view in it");
}

}

}
