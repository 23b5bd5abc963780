#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

namespace {

using platform::UIGestureRecognizer;
using platform::UIRectEdge;
using platform::UIScreenEdgePanGestureRecognizer;
using Questions = std::vector<std::string>;

class GestureArbitrationTest : public testing::Test {
protected:
    /// Answers for one recognizer and records what it was asked.
    class Delegate final : public platform::UIGestureRecognizerDelegate {
    public:
        Delegate(GestureArbitrationTest& test, std::string name) : m_test(test), m_name(std::move(name)) { }

        bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override
        {
            m_test.questions.push_back("begin " + m_name);
            return mayBegin;
        }
        bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
            UIGestureRecognizer&, UIGestureRecognizer& other) override
        {
            m_test.questions.push_back(m_name + " with " + m_test.names.at(&other));
            return mayShare;
        }

        bool mayBegin = true;
        bool mayShare = false;

    private:
        GestureArbitrationTest& m_test;
        std::string m_name;
    };

    struct Participant {
        std::shared_ptr<UIGestureRecognizer> recognizer;
        std::shared_ptr<Delegate> delegate;
    };

    Participant make(std::string const& name)
    {
        Participant made { std::make_shared<UIGestureRecognizer>(), std::make_shared<Delegate>(*this, name) };
        made.recognizer->setDelegate(made.delegate);
        names[made.recognizer.get()] = name;
        return made;
    }

    Questions questions;
    std::map<UIGestureRecognizer*, std::string> names;
    shared::GestureArbitration arbitration;
};

}

TEST_F(GestureArbitrationTest, TheFirstIsAskedOnlyWhetherItBegins)
{
    auto const first = make("first");
    EXPECT_TRUE(arbitration.begin(first.recognizer));
    EXPECT_EQ(questions, Questions { "begin first" });
    EXPECT_EQ(arbitration.begun(), std::vector { first.recognizer });
}

TEST_F(GestureArbitrationTest, TheNextIsAskedAboutItsBeginBeforeAnyoneIsAskedAboutBoth)
{
    auto const first = make("first");
    auto const second = make("second");
    EXPECT_TRUE(arbitration.begin(first.recognizer));
    EXPECT_FALSE(arbitration.begin(second.recognizer));
    EXPECT_EQ(questions, (Questions { "begin first", "begin second", "second with first", "first with second" }));
    EXPECT_EQ(arbitration.begun(), std::vector { first.recognizer });
}

TEST_F(GestureArbitrationTest, NobodyIsAskedAboutBothForARecognizerThatMayNotBegin)
{
    auto const first = make("first");
    auto const second = make("second");
    auto const third = make("third");
    second.delegate->mayBegin = false;
    third.recognizer->setEnabled(false);
    EXPECT_TRUE(arbitration.begin(first.recognizer));
    EXPECT_FALSE(arbitration.begin(second.recognizer));
    EXPECT_FALSE(arbitration.begin(third.recognizer));
    EXPECT_EQ(questions, (Questions { "begin first", "begin second" }));
}

TEST_F(GestureArbitrationTest, EitherDelegateMayAllowBoth)
{
    auto const first = make("first");
    auto const second = make("second");
    first.delegate->mayShare = true;
    EXPECT_TRUE(arbitration.begin(first.recognizer));
    EXPECT_TRUE(arbitration.begin(second.recognizer));
    EXPECT_EQ(arbitration.begun(), (std::vector { first.recognizer, second.recognizer }));
}

TEST_F(GestureArbitrationTest, AThirdNeedsTheConsentOfEachThatHasBegun)
{
    auto const first = make("first");
    auto const second = make("second");
    auto const third = make("third");
    second.delegate->mayShare = true;
    EXPECT_TRUE(arbitration.begin(first.recognizer));
    EXPECT_TRUE(arbitration.begin(second.recognizer));
    EXPECT_FALSE(arbitration.begin(third.recognizer));
    EXPECT_EQ(arbitration.begun().size(), 2U);
}

TEST_F(GestureArbitrationTest, WithoutDelegatesOnlyTheFirstBegins)
{
    EXPECT_TRUE(arbitration.begin(std::make_shared<UIGestureRecognizer>()));
    EXPECT_FALSE(arbitration.begin(std::make_shared<UIGestureRecognizer>()));
}

TEST_F(GestureArbitrationTest, ARecognizerWatchesEachOfItsEdges)
{
    auto const leftAndRight =
        static_cast<UIRectEdge>(static_cast<unsigned>(UIRectEdge::Left) | static_cast<unsigned>(UIRectEdge::Right));
    UIScreenEdgePanGestureRecognizer const pan(leftAndRight, [](auto&) { });
    UIScreenEdgePanGestureRecognizer const none(UIRectEdge::None, [](auto&) { });
    EXPECT_FALSE(shared::watchesEdge(none, UIRectEdge::Left));
    EXPECT_TRUE(shared::watchesEdge(pan, UIRectEdge::Left));
    EXPECT_TRUE(shared::watchesEdge(pan, UIRectEdge::Right));
    EXPECT_FALSE(shared::watchesEdge(pan, UIRectEdge::Top));
    EXPECT_FALSE(shared::watchesEdge(UIGestureRecognizer(), UIRectEdge::Left));
}

}
