#include "ZelvoraIOS/ZelvoraSDK/internal/CustomActions.h"

#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <optional>

namespace zelvora::tests {

namespace {

class CustomActionsTest : public SDKTest { };

TEST_F(CustomActionsTest, ACustomActionIsKeptUnderItsName)
{
    std::vector<std::optional<std::string>> received;
    sdk().addCustomAction("share", [&received](std::optional<std::string> const& data) { received.push_back(data); });
    auto const actions = sdk().getCustomActions();
    ASSERT_TRUE(actions.contains("share"));
    actions.at("share")("data");
    actions.at("share")(std::nullopt);
    EXPECT_EQ(received, (std::vector<std::optional<std::string>> { "data", std::nullopt }));
}

TEST_F(CustomActionsTest, OfTwoActionsOfOneNameTheLastStays)
{
    std::vector<std::string> called;
    sdk().addCustomAction("share", [&called](auto const&) { called.emplace_back("first"); });
    sdk().addCustomAction("share", [&called](auto const&) { called.emplace_back("second"); });
    auto const actions = sdk().getCustomActions();
    EXPECT_EQ(actions.size(), 1U);
    actions.at("share")(std::nullopt);
    EXPECT_EQ(called, (std::vector<std::string> { "second" }));
    EXPECT_TRUE(platform.log().lines().empty());
}

TEST_F(CustomActionsTest, ActionNamesAreComparedExactlyAndMayBeEmpty)
{
    for (auto const* name : { "share", "Share", "", " share", "공유" })
        sdk().addCustomAction(name, [](auto const&) { });
    auto const actions = sdk().getCustomActions();
    EXPECT_EQ(actions.size(), 5U);
    EXPECT_TRUE(actions.contains(""));
}

TEST_F(CustomActionsTest, TheTableOfActionsIsACopy)
{
    sdk().addCustomAction("one", [](auto const&) { });
    auto actions = sdk().getCustomActions();
    actions.clear();
    EXPECT_EQ(sdk().getCustomActions().size(), 1U);
    auto const before = sdk().getCustomActions();
    sdk().addCustomAction("two", [](auto const&) { });
    EXPECT_EQ(before.size(), 1U);
}

TEST_F(CustomActionsTest, WhatAReplacedActionCapturedMayCallTheSDKWhenItIsDestroyed)
{
    struct CallsOnItsWayOut {
        ~CallsOnItsWayOut() { *count = sdk().getCustomActions().size(); }
        std::size_t* count;
    };
    std::size_t count = 0;
    sdk().addCustomAction("share", [held = std::make_shared<CallsOnItsWayOut>(&count)](auto const&) { (void)held; });
    sdk().addCustomAction("share", [](auto const&) { });
    EXPECT_EQ(count, 1U);
}

TEST_F(CustomActionsTest, AnActionIsFoundUnderItsNameOnly)
{
    internal::CustomActions actions;
    EXPECT_FALSE(actions.find("share"));
    int calls = 0;
    actions.add("share", [&calls](auto const&) { ++calls; });
    actions.add("pay", [](auto const&) { });
    EXPECT_FALSE(actions.find("Share"));
    ASSERT_TRUE(actions.find("share"));
    actions.find("share")(std::nullopt);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(actions.names(), (platform::Array { "pay", "share" }));
}

TEST_F(CustomActionsTest, AnEmptyActionKeepsItsName)
{
    sdk().addCustomAction("share", nullptr);
    auto const actions = sdk().getCustomActions();
    ASSERT_TRUE(actions.contains("share"));
    EXPECT_FALSE(actions.at("share"));
}

TEST_F(CustomActionsTest, AnActionKeepsItsStateFromCallToCall)
{
    std::vector<int> counts;
    sdk().addCustomAction("share", [&counts, count = 0](auto const&) mutable { counts.push_back(++count); });
    auto const actions = sdk().getCustomActions();
    actions.at("share")(std::nullopt);
    sdk().getCustomActions().at("share")(std::nullopt);
    actions.at("share")(std::nullopt);
    EXPECT_EQ(counts, (std::vector { 1, 2, 3 }));
}

TEST_F(CustomActionsTest, AnActionIsNeverCopiedOnceItIsAdded)
{
    struct CountsCopies {
        explicit CountsCopies(int& count) : copies(&count) { }
        CountsCopies(CountsCopies const& other) : copies(other.copies) { ++*copies; }
        int* copies;
    };
    int copies = 0;
    sdk().addCustomAction("share", [captured = CountsCopies(copies)](auto const&) { (void)captured; });
    copies = 0;
    auto const actions = sdk().getCustomActions();
    actions.at("share")(std::nullopt);
    EXPECT_EQ(copies, 0);
}

}

}
