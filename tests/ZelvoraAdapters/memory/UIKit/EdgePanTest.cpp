#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"

#include "tests/ZelvoraAdapters/memory/InstalledPlatform.h"

#include <memory>
#include <vector>

namespace zelvora::tests {

namespace {

using enum platform::UIGestureRecognizerState;
using platform::UIGestureRecognizer;
using platform::UIRectEdge;
using platform::UIScreenEdgePanGestureRecognizer;

class Delegate final : public platform::UIGestureRecognizerDelegate {
public:
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override { return mayBegin; }
    bool gestureRecognizerShouldRecognizeSimultaneouslyWith(UIGestureRecognizer&, UIGestureRecognizer&) override
    {
        return maySimultaneously;
    }

    bool mayBegin = true;
    bool maySimultaneously = true;
};

class EdgePanTest : public InstalledPlatform {
protected:
    std::shared_ptr<UIScreenEdgePanGestureRecognizer> addPan(UIRectEdge edge)
    {
        auto pan = std::make_shared<UIScreenEdgePanGestureRecognizer>(
            edge, [this](auto& recognizer) { states.push_back(recognizer.state()); });
        pan->setDelegate(delegate);
        view->addGestureRecognizer(pan);
        return pan;
    }

    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    std::shared_ptr<platform::UIView> view = std::make_shared<platform::UIView>();
    memory::GestureStates states;
};

}

TEST_F(EdgePanTest, AnEdgePanGoesThroughItsStates)
{
    addPan(UIRectEdge::Left);
    EXPECT_EQ(memory::edgePan(*view), 1u);
    EXPECT_EQ(memory::edgePan(*view, UIRectEdge::Left, memory::brokenOff()), 1u);
    EXPECT_EQ(states, (memory::GestureStates { Began, Changed, Ended, Began, Changed, Cancelled }));
}

TEST_F(EdgePanTest, OnlyRecognizersOfTheEdgeThatMayBeginTakePart)
{
    auto const pan = addPan(UIRectEdge::Left);
    EXPECT_EQ(memory::edgePan(*view, UIRectEdge::Right), 0u);
    pan->setEnabled(false);
    EXPECT_EQ(memory::edgePan(*view), 0u);
    pan->setEnabled(true);
    delegate->mayBegin = false;
    EXPECT_EQ(memory::edgePan(*view), 0u);
    EXPECT_TRUE(states.empty());
}

TEST_F(EdgePanTest, TwoRecognizeTogetherOnlyIfTheyMay)
{
    addPan(UIRectEdge::Left);
    addPan(UIRectEdge::Left);
    EXPECT_EQ(memory::edgePan(*view), 2u);
    delegate->maySimultaneously = false;
    EXPECT_EQ(memory::edgePan(*view), 1u);
}

TEST_F(EdgePanTest, TheActionMayTakeTheViewAway)
{
    auto const pan =
        std::make_shared<UIScreenEdgePanGestureRecognizer>(UIRectEdge::Left, [this](auto&) { view.reset(); });
    view->addGestureRecognizer(pan);
    EXPECT_EQ(memory::edgePan(*view), 1u);
    EXPECT_EQ(view, nullptr);
}

}
