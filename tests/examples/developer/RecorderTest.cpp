#include "ZelvoraAdapters/memory/Foundation/URLSession.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/examples/developer/ObservedSDK.h"

#include <thread>

namespace zelvora::developer {

using platform::Dictionary;

using RecorderTest = ObservedSDK;

TEST_F(RecorderTest, NoQuestionAboutTrackingIsAskedAndTheEntryAddressHasTheSameIdentifierEverywhere)
{
    open();
    EXPECT_TRUE(memory.webViews().front()->url()->absoluteString().contains(
        std::string("adid=") + ObservedPlatform::advertisingIdentifier));
}

TEST_F(RecorderTest, AnUploadIsKeptWithItsEventsAndTheServicesAnswer)
{
    open();
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "a" } });
    ZelvoraSDK::shared().sendTrackingData();
    ASSERT_EQ(records().uploads.size(), 1U) << "the lookup is no upload";
    EXPECT_FALSE(records().uploads.front().isOver());
    EXPECT_EQ(records().uploads.front().events,
        Json::parse(R"([{"eventId":"a","adid":"11111111-2222-4333-8444-555555555555"}])"));

    memory.urlSession().answer(503, "busy");
    runUntilIdle();
    EXPECT_EQ(records().uploads.front().status, 503);
    EXPECT_EQ(records().uploads.front().body, "busy");

    ZelvoraSDK::shared().sendTrackingData();
    memory.urlSession().fail(memory::URLSession::notConnected());
    runUntilIdle();
    ASSERT_EQ(records().uploads.size(), 2U);
    EXPECT_EQ(records().uploads.back().error, memory::URLSession::notConnected().localizedDescription);
    EXPECT_EQ(records().uploads.front().status, 503);
}

TEST_F(RecorderTest, TheSDKsComplaintsOutsideOfMessagesAreKept)
{
    open();
    ZelvoraStorage::saveEventTrackingData({ { "at", platform::Date {} } });
    ZelvoraSDK::shared().sendTrackingData();
    EXPECT_EQ(records().complaints, std::vector<std::string> { "sendTrackingData JSON Encoding Error" });
}

TEST_F(RecorderTest, WhatOtherThreadsDoIsToldLaterOnTheMainThreadAndIsNoPartOfAMessage)
{
    open();
    std::thread([] { ZelvoraStorage::set("v", "k"); }).join();
    int changes = 0;
    recorder.setOnChange([&changes] { ++changes; });
    post(Dictionary { { "action", "setItem" } });
    EXPECT_EQ(outcome().verdict, Verdict::Dropped);
    EXPECT_GT(changes, 1);
}

TEST_F(RecorderTest, ACallbackCanBeLookedForBeforeItIsCalled)
{
    open();
    std::vector<std::string> asked;
    recorder.setOnAnswer([&](std::size_t message, std::string const& callback) {
        asked.push_back(callback);
        EXPECT_TRUE(memory.webViews().front()->evaluated().empty());
        recorder.didLoseAnswer(message, callback);
    });
    post(Dictionary { { "action", "getItem" }, { "key", "k" }, { "callback", "onCrat" } });
    EXPECT_EQ(asked, std::vector<std::string> { "onCrat" });
    EXPECT_TRUE(records().messages.front().isAnswerLost);
    EXPECT_EQ(outcome().verdict, Verdict::Answered);
    EXPECT_EQ(outcome().warning->english, "nobody received the answer: the main frame has no function onCrat");
}

TEST_F(RecorderTest, AClosedShopLeavesNoHandlerBehind)
{
    open();
    post(Dictionary { { "action", "close" } });
    runUntilIdle();
    EXPECT_TRUE(memory.webViews().empty());
    EXPECT_EQ(records().messages.size(), 1U);
}

TEST_F(RecorderTest, WithoutANetworkTheRequestsGoWhereNobodyListens)
{
    open();
    observed.setOffline(true);
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "a" } });
    ZelvoraSDK::shared().sendTrackingData();
    EXPECT_EQ(memory.urlSession().requests().back().url.absoluteString(), "https://127.0.0.1:1/");
    EXPECT_EQ(records().uploads.size(), 1U) << "it is an upload all the same";
}

}
