#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"

#include <gtest/gtest.h>

#include <vector>

namespace zelvora::platform {

namespace {

using State = UIGestureRecognizerState;

class Delegate final : public UIGestureRecognizerDelegate {
public:
    bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) override
    {
        asked.push_back(&recognizer);
        return answer;
    }
    bool gestureRecognizerShouldRecognizeSimultaneouslyWith(UIGestureRecognizer&, UIGestureRecognizer&) override
    {
        return true;
    }

    bool answer = true;
    std::vector<UIGestureRecognizer*> asked;
};

class UIGestureRecognizerTest : public ::testing::Test {
protected:
    std::vector<State> m_states;
    UIScreenEdgePanGestureRecognizer m_recognizer { UIRectEdge::Right,
        [this](UIScreenEdgePanGestureRecognizer& recognizer) { m_states.push_back(recognizer.state()); } };
};

TEST_F(UIGestureRecognizerTest, ANewRecognizerIsEnabledAndPossible)
{
    EXPECT_TRUE(m_recognizer.isEnabled());
    EXPECT_EQ(m_recognizer.state(), State::Possible);
    EXPECT_EQ(m_recognizer.delegate(), nullptr);
}

TEST_F(UIGestureRecognizerTest, ARecognizerHasTheEdgesThatItWasMadeFor)
{
    EXPECT_EQ(m_recognizer.edges(), UIRectEdge::Right);
}

TEST_F(UIGestureRecognizerTest, TheActionIsCalledAtEveryChangeOfState)
{
    for (auto const state : { State::Began, State::Changed, State::Changed, State::Ended })
        m_recognizer.recognize(state);
    EXPECT_EQ(m_states, (std::vector<State> { State::Began, State::Changed, State::Changed, State::Ended }));
}

TEST_F(UIGestureRecognizerTest, WithoutADelegateItMayBegin)
{
    EXPECT_TRUE(m_recognizer.shouldBegin());
}

TEST_F(UIGestureRecognizerTest, TheDelegateDecidesWhetherItBegins)
{
    auto const delegate = std::make_shared<Delegate>();
    m_recognizer.setDelegate(delegate);
    EXPECT_TRUE(m_recognizer.shouldBegin());
    delegate->answer = false;
    EXPECT_FALSE(m_recognizer.shouldBegin());
    EXPECT_EQ(delegate->asked, (std::vector<UIGestureRecognizer*> { &m_recognizer, &m_recognizer }));
}

TEST_F(UIGestureRecognizerTest, ADisabledRecognizerNeverBeginsAndDoesNotAsk)
{
    auto const delegate = std::make_shared<Delegate>();
    m_recognizer.setDelegate(delegate);
    m_recognizer.setEnabled(false);
    EXPECT_FALSE(m_recognizer.shouldBegin());
    EXPECT_TRUE(delegate->asked.empty());
}

TEST_F(UIGestureRecognizerTest, TheDelegateIsReferencedWeakly)
{
    auto delegate = std::make_shared<Delegate>();
    delegate->answer = false;
    m_recognizer.setDelegate(delegate);
    delegate.reset();
    EXPECT_EQ(m_recognizer.delegate(), nullptr);
    EXPECT_TRUE(m_recognizer.shouldBegin());
}

TEST_F(UIGestureRecognizerTest, StatesAndEdgesHaveThePhonesRawValues)
{
    EXPECT_EQ(static_cast<int>(State::Ended), 3);
    EXPECT_EQ(static_cast<int>(UIRectEdge::Left), 2);
}

}

}
