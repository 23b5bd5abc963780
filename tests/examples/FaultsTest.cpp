#include "tests/examples/ServiceFixture.h"

#include <chrono>
#include <string_view>

namespace zelvora::tests {

class FaultsTest : public ServiceFixture {
protected:
    static constexpr std::string_view intact = R"({"data":{"shopId":"hanok"}})";
    static constexpr auto batch = R"({"profile":"prd","data":[{"eventId":"a"}]})";
};

TEST_F(FaultsTest, AFailureStatusIsAnsweredAndTheRequestIsNotCarriedOut)
{
    setFault(R"({"target":"collector","status":500})");
    auto const answer = collect(batch);
    EXPECT_EQ(answer.status, 500U);
    EXPECT_EQ(answer.body, R"({"error":"told to fail"})");
    EXPECT_TRUE(m_service->collected().batches().empty());
}

TEST_F(FaultsTest, AnotherSuccessStatusStillCarriesTheRequestOut)
{
    setFault(R"({"target":"collector","status":201})");
    EXPECT_EQ(collect(batch).status, 201U);
    EXPECT_EQ(m_service->collected().batches().size(), 1U);
    setFault(R"({"target":"lookup","status":204})");
    EXPECT_EQ(lookUp("demo-key").status, 204U);
}

TEST_F(FaultsTest, AFailureMayHaveATextOfItsOwn)
{
    setFault(R"({"target":"lookup","status":500,"body":"text","text":"oops"})");
    auto const answer = lookUp("demo-key");
    EXPECT_EQ(answer.status, 500U);
    EXPECT_EQ(answer.body, "oops");
}

TEST_F(FaultsTest, AFaultEndsAfterItsNumberOfRequests)
{
    setFault(R"({"target":"lookup","status":503,"requests":2})");
    EXPECT_EQ(lookUp("demo-key").status, 503U);
    EXPECT_EQ(lookUp("demo-key").status, 503U);
    EXPECT_EQ(lookUp("demo-key").status, 200U);
}

TEST_F(FaultsTest, AFaultAffectsItsTargetOnly)
{
    setFault(R"({"target":"lookup","status":503})");
    EXPECT_EQ(collect(batch).status, 200U);
    EXPECT_EQ(get("hanok.shop", "/v1/").status, 200U);
    setFault(R"({"target":"site","status":418})");
    EXPECT_EQ(get("hanok.shop", "/v1/").status, 418U);
    EXPECT_EQ(get("hanok.dev", "/v1/").status, 418U);
    EXPECT_EQ(get("frames", "/frame.html").status, 200U);
}

TEST_F(FaultsTest, ADelayedAnswerComesLateAndComplete)
{
    setFault(R"({"target":"lookup","delay":300})");
    auto const start = std::chrono::steady_clock::now();
    auto const answer = lookUp("demo-key");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.body, intact);
}

TEST_F(FaultsTest, AConnectionCutBeforeTheAnswerGivesNoAnswerAndDoesNothing)
{
    setFault(R"({"target":"collector","cut":"before-answer"})");
    auto const answer = collect(batch);
    EXPECT_EQ(answer.status, 0U);
    EXPECT_FALSE(answer.error.empty());
    EXPECT_TRUE(m_service->collected().batches().empty());
}

TEST_F(FaultsTest, AConnectionIsCutInTheBodyAfterTheRequestWasCarriedOut)
{
    setFault(R"({"target":"collector","cut":"mid-body"})");
    auto const answer = collect(batch);
    EXPECT_EQ(answer.status, 200U);
    EXPECT_FALSE(answer.error.empty());
    EXPECT_EQ(m_service->collected().batches().size(), 1U);
}

TEST_F(FaultsTest, ACutAlsoEndsAnEmptyBodyAndADelayedOne)
{
    setFault(R"({"target":"lookup","cut":"mid-body","body":"empty"})");
    EXPECT_FALSE(lookUp("demo-key").error.empty());
    setFault(R"({"target":"lookup","cut":"mid-body","delay":50})");
    EXPECT_FALSE(lookUp("demo-key").error.empty());
    setFault(R"({"target":"lookup","cut":"before-answer","delay":50})");
    EXPECT_FALSE(lookUp("demo-key").error.empty());
}

TEST_F(FaultsTest, TheServiceAnswersOthersAfterACut)
{
    setFault(R"({"target":"lookup","cut":"before-answer","requests":1})");
    EXPECT_EQ(lookUp("demo-key").status, 0U);
    EXPECT_EQ(lookUp("demo-key").body, intact);
}

TEST_F(FaultsTest, ABrokenBodyIsNotJson)
{
    setFault(R"({"target":"lookup","body":"broken-json"})");
    auto const answer = lookUp("demo-key");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_TRUE(Json::parse(answer.body, nullptr, false).is_discarded()) << answer.body;
}

TEST_F(FaultsTest, AWrongShapeHasANumberForTheShopId)
{
    setFault(R"({"target":"lookup","body":"wrong-shape"})");
    EXPECT_EQ(lookUp("demo-key").body, R"({"data":{"shopId":42}})");
}

TEST_F(FaultsTest, AnEmptyBodyIsAnsweredWithSuccess)
{
    setFault(R"({"target":"lookup","body":"empty"})");
    auto const answer = lookUp("demo-key");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.body, "");
    EXPECT_EQ(answer.error, "");
}

TEST_F(FaultsTest, AHugeBodyHasExactlyTheGivenLengthAndIsJson)
{
    setFault(R"({"target":"lookup","body":"huge","bytes":5000000})");
    auto const answer = lookUp("demo-key");
    EXPECT_EQ(answer.body.size(), 5'000'000U);
    EXPECT_TRUE(Json::parse(answer.body, nullptr, false).is_object());
}

TEST_F(FaultsTest, TheLargestBodyArrivesWhole)
{
    setFault(R"({"target":"site","body":"huge","bytes":104857600})");
    EXPECT_EQ(get("hanok.shop", "/v1/").body.size(), 104'857'600U);
}

TEST_F(FaultsTest, ResettingEndsFaultsAndKeepsWhatWasCollected)
{
    collect(batch);
    setFault(R"({"target":"lookup","status":500})");
    EXPECT_EQ(post("control", "/reset", "").status, 200U);
    EXPECT_EQ(lookUp("demo-key").status, 200U);
    EXPECT_EQ(m_service->collected().batches().size(), 1U);
}

TEST_F(FaultsTest, ResettingRemovesWhatWasCollectedIfAsked)
{
    collect(batch);
    EXPECT_EQ(post("control", "/reset", R"({"collected":true})").status, 200U);
    EXPECT_TRUE(m_service->collected().batches().empty());
}

TEST_F(FaultsTest, TheFaultsInForceAndTheRequestsAreShown)
{
    lookUp("demo-key");
    setFault(R"({"target":"lookup","status":500,"delay":5,"cut":"mid-body","body":"huge","bytes":7,"requests":3})");
    lookUp("demo-key");
    auto const shown = Json::parse(get("control", "/faults").body);
    EXPECT_EQ(shown["lookup"]["requests"], 2);
    EXPECT_EQ(shown["lookup"]["fault"],
        Json::parse(R"({"status":500,"delay":5,"cut":"mid-body","body":"huge","bytes":7,"requests":2})"));
    EXPECT_EQ(shown["collector"], Json::parse(R"({"requests":0,"fault":null})"));
}

TEST_F(FaultsTest, AnInvalidFaultIsRefusedAndChangesNothing)
{
    for (auto const* fault : { "", "[]", "{}", R"({"target":"moon"})", R"({"target":"lookup","status":99})",
             R"({"target":"lookup","status":"500"})", R"({"target":"lookup","delay":-1})",
             R"({"target":"lookup","cut":"later"})", R"({"target":"lookup","body":"odd"})",
             R"({"target":"lookup","bytes":104857601})", R"({"target":"lookup","requests":0})",
             R"({"target":"lookup","text":5})", R"({"target":"lookup","colour":"red"})" }) {
        EXPECT_EQ(post("control", "/faults", fault).status, 400U) << fault;
    }
    EXPECT_EQ(lookUp("demo-key").body, intact);
}

}
