#pragma once

#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// What every adapter's gesture recognizers promise. A harness has a screen and a finger:
///
///     void show(std::shared_ptr<platform::UIViewController> controller);
///     // Drags a finger from the view's left edge across the view and lifts it.
///     void dragFromLeftEdge(platform::UIView& view);
template<typename Harness>
class GestureContract : public testing::Test {
protected:
    using State = platform::UIGestureRecognizerState;

    class Delegate final : public platform::UIGestureRecognizerDelegate {
    public:
        bool gestureRecognizerShouldBegin(platform::UIGestureRecognizer&) override
        {
            questions.emplace_back("begin");
            return mayBegin;
        }
        bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
            platform::UIGestureRecognizer&, platform::UIGestureRecognizer&) override
        {
            questions.emplace_back("both");
            return mayShare;
        }

        bool mayBegin = true;
        bool mayShare = true;
        std::vector<std::string> questions;
    };

    void SetUp() override
    {
        m_harness.show(m_controller);
        m_first = addRecognizer(m_firstStates);
    }

    std::shared_ptr<platform::UIScreenEdgePanGestureRecognizer> addRecognizer(
        std::vector<State>& states, platform::UIRectEdge edge = platform::UIRectEdge::Left)
    {
        auto recognizer = std::make_shared<platform::UIScreenEdgePanGestureRecognizer>(
            edge, [&states](platform::UIScreenEdgePanGestureRecognizer& told) { states.push_back(told.state()); });
        recognizer->setDelegate(m_delegate);
        (m_inner ? *m_inner : m_controller->view()).addGestureRecognizer(recognizer);
        return recognizer;
    }

    /// Shows a screen of which a view inside covers all; the next recognizer is that view's.
    void showInnerView()
    {
        m_inner = std::make_shared<platform::UIView>();
        m_inner->setTranslatesAutoresizingMaskIntoConstraints(false);
        auto const screen = std::make_shared<platform::UIViewController>();
        auto& root = screen->view();
        root.addSubview(m_inner);
        platform::NSLayoutConstraint::activate({ m_inner->topAnchor().constraintEqualTo(root.topAnchor()),
            m_inner->bottomAnchor().constraintEqualTo(root.bottomAnchor()),
            m_inner->leadingAnchor().constraintEqualTo(root.leadingAnchor()),
            m_inner->trailingAnchor().constraintEqualTo(root.trailingAnchor()) });
        root.addGestureRecognizer(m_first);
        m_controller = screen;
        m_harness.show(m_controller);
    }

    void drag() { m_harness.dragFromLeftEdge(m_inner ? *m_inner : m_controller->view()); }

    static void expectWholeGesture(std::vector<State> const& states)
    {
        ASSERT_GE(states.size(), 2U);
        EXPECT_EQ(states.front(), State::Began);
        EXPECT_EQ(states.back(), State::Ended);
        for (std::size_t index = 1; index + 1 < states.size(); ++index)
            EXPECT_EQ(states[index], State::Changed);
    }

    Harness m_harness;
    std::shared_ptr<platform::UIViewController> m_controller = std::make_shared<platform::UIViewController>();
    std::shared_ptr<Delegate> m_delegate = std::make_shared<Delegate>();
    std::vector<State> m_firstStates;
    std::vector<State> m_secondStates;
    std::shared_ptr<platform::UIScreenEdgePanGestureRecognizer> m_first;
    std::shared_ptr<platform::UIView> m_inner;
};

TYPED_TEST_SUITE_P(GestureContract);

TYPED_TEST_P(GestureContract, ADragFromTheLeftEdgeBeginsChangesAndEnds)
{
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
    this->m_firstStates.clear();
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
}

TYPED_TEST_P(GestureContract, ARecognizerForAnotherEdgeIsNotCalled)
{
    auto const other = this->addRecognizer(this->m_secondStates, platform::UIRectEdge::Right);
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
    EXPECT_TRUE(this->m_secondStates.empty());
}

TYPED_TEST_P(GestureContract, TheDelegateMayPreventTheGesture)
{
    this->m_delegate->mayBegin = false;
    this->drag();
    EXPECT_TRUE(this->m_firstStates.empty());
}

TYPED_TEST_P(GestureContract, ADisabledRecognizerIsNotCalled)
{
    this->m_first->setEnabled(false);
    this->drag();
    EXPECT_TRUE(this->m_firstStates.empty());
}

TYPED_TEST_P(GestureContract, WithoutADelegateARecognizerMayBegin)
{
    this->m_delegate.reset();
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
}

TYPED_TEST_P(GestureContract, TwoRecognizersShareAGestureIfADelegateAllowsIt)
{
    auto const second = this->addRecognizer(this->m_secondStates);
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
    EXPECT_EQ(this->m_secondStates, this->m_firstStates);
}

TYPED_TEST_P(GestureContract, OnlyOneOfTwoRecognizersIsCalledUnlessADelegateAllowsBoth)
{
    auto const second = this->addRecognizer(this->m_secondStates);
    this->m_delegate->mayShare = false;
    this->drag();
    EXPECT_NE(this->m_firstStates.empty(), this->m_secondStates.empty());
}

TYPED_TEST_P(GestureContract, TheViewsAroundTheDraggedOneAreAskedToo)
{
    this->showInnerView();
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
}

TYPED_TEST_P(GestureContract, AViewIsAskedBeforeThoseAroundIt)
{
    this->showInnerView();
    auto const inner = this->addRecognizer(this->m_secondStates);
    this->m_delegate->mayShare = false;
    this->drag();
    this->expectWholeGesture(this->m_secondStates);
    EXPECT_TRUE(this->m_firstStates.empty());
    this->m_delegate->mayShare = true;
    this->m_secondStates.clear();
    this->drag();
    this->expectWholeGesture(this->m_secondStates);
    EXPECT_EQ(this->m_firstStates, this->m_secondStates);
}

TYPED_TEST_P(GestureContract, ADelegateIsAskedToBeginBeforeItIsAskedToShare)
{
    auto const second = this->addRecognizer(this->m_secondStates);
    this->drag();
    EXPECT_EQ(this->m_delegate->questions, (std::vector<std::string> { "begin", "begin", "both" }));
}

TYPED_TEST_P(GestureContract, ADelegateIsNotAskedToShareWithARecognizerThatMayNotBegin)
{
    auto const second = this->addRecognizer(this->m_secondStates);
    auto const strict = std::make_shared<typename TestFixture::Delegate>();
    strict->mayBegin = false;
    second->setDelegate(strict);
    this->drag();
    this->expectWholeGesture(this->m_firstStates);
    EXPECT_EQ(this->m_delegate->questions, std::vector<std::string> { "begin" });
    EXPECT_EQ(strict->questions, std::vector<std::string> { "begin" });
}

REGISTER_TYPED_TEST_SUITE_P(GestureContract, ADragFromTheLeftEdgeBeginsChangesAndEnds,
    ARecognizerForAnotherEdgeIsNotCalled, TheDelegateMayPreventTheGesture, ADisabledRecognizerIsNotCalled,
    WithoutADelegateARecognizerMayBegin, TwoRecognizersShareAGestureIfADelegateAllowsIt,
    OnlyOneOfTwoRecognizersIsCalledUnlessADelegateAllowsBoth, TheViewsAroundTheDraggedOneAreAskedToo,
    AViewIsAskedBeforeThoseAroundIt, ADelegateIsAskedToBeginBeforeItIsAskedToShare,
    ADelegateIsNotAskedToShareWithARecognizerThatMayNotBegin);

}
