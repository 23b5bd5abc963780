#include "tests/examples/ServiceFixture.h"

#include <fstream>

namespace zelvora::tests {

using CollectorTest = ServiceFixture;

TEST_F(CollectorTest, EventsAreListedInTheOrderOfTheirArrival)
{
    EXPECT_EQ(collect(R"({"profile":"prd","data":[{"eventId":"a"},{"eventId":"b"}]})").body, R"({"received":2})");
    EXPECT_EQ(collect(R"({"data":[{"eventId":"c"}],"profile":"dev"})").body, R"({"received":1})");

    auto const batches = collected();
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[0]["profile"], "prd");
    EXPECT_EQ(batches[0]["events"], Json::parse(R"([{"eventId":"a"},{"eventId":"b"}])"));
    EXPECT_EQ(batches[1]["profile"], "dev");
    EXPECT_EQ(batches[1]["events"], Json::parse(R"([{"eventId":"c"}])"));
    EXPECT_FALSE(batches[0]["receivedAt"].get<std::string>().empty());
}

TEST_F(CollectorTest, AFullBatchKeepsItsOrder)
{
    auto events = Json::array();
    for (int i = 0; i < 500; ++i)
        events.push_back({ { "eventId", std::to_string(i) } });
    collect(Json({ { "profile", "prd" }, { "data", events } }).dump());
    ASSERT_EQ(collected().size(), 1U);
    EXPECT_EQ(collected()[0]["events"], events);
}

TEST_F(CollectorTest, AnEventKeepsTheOrderOfItsMembersItsIntegersAndItsTexts)
{
    std::string const event = R"({"b":1700000000000000,"a":18446744073709551615,"c":-9223372036854775808,"d":0.1,)"
                              R"("text":"한 } ] \" \\"})";
    collect(R"( { "data" : [ )" + event + R"( , {} ] , "profile" : "prd" } )");
    EXPECT_NE(get("collector", "/events.json").body.find("[" + event + ",{}]"), std::string::npos);
    restart();
    EXPECT_NE(get("collector", "/events.json").body.find("[" + event + ",{}]"), std::string::npos);
}

TEST_F(CollectorTest, AnUploadThatACrashCutShortIsRemoved)
{
    collect(R"({"profile":"prd","data":[{"eventId":"before"}]})");
    m_service.reset();
    auto const file = m_directory.path() / "data" / "collected.jsonl";
    std::ofstream(file, std::ios::app) << R"({"number":2,"rece)";
    restart();
    collect(R"({"profile":"prd","data":[{"eventId":"after"}]})");
    restart();
    auto const batches = collected();
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[1]["events"][0]["eventId"], "after");
}

TEST(CollectorStoreTest, AFileOfSomethingElseIsReportedAndLeftAsItIs)
{
    TemporaryDirectory const directory;
    auto const file = directory.write("notes", "not ours\n");
    EXPECT_FALSE(examples::CollectorStore::open(file));
    EXPECT_EQ(directory.read("notes"), "not ours\n");
}

TEST(CollectorStoreTest, AFileWithALineThatIsNoBatchIsReportedAndLeftAsItIs)
{
    auto const deep = R"({"number":1,"receivedAt":"now","profile":"prd","events":[{"a":)" + std::string(100'000, '[')
        + std::string(100'000, ']') + "}]}";
    for (auto const& line : { std::string("{}"), std::string(R"({"number":1,"receivedAt":"now","profile":"prd"})"),
             std::string(R"({"number":"1","receivedAt":"now","profile":"prd","events":[]})"),
             std::string(R"({"number":1,"receivedAt":0,"profile":"prd","events":[]})"),
             std::string(R"({"number":1,"receivedAt":"now","profile":null,"events":[]})"),
             std::string(R"({"number":1,"receivedAt":"now","profile":"prd","events":{}})"),
             std::string(R"({"number":1,"receivedAt":"now","profile":"prd","events":[7]})"), deep }) {
        TemporaryDirectory const directory;
        auto const file = directory.write("collected.jsonl", line + "\n");
        auto const store = examples::CollectorStore::open(file);
        ASSERT_FALSE(store) << line.substr(0, 80);
        EXPECT_EQ(store.error(), "cannot use " + file.string());
        EXPECT_EQ(directory.read("collected.jsonl"), line + "\n");
    }
}

TEST_F(CollectorTest, WhatWasCollectedSurvivesARestart)
{
    collect(R"({"profile":"prd","data":[{"eventId":"before"}]})");
    restart();
    collect(R"({"profile":"prd","data":[{"eventId":"after"}]})");
    auto const batches = collected();
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[0]["events"][0]["eventId"], "before");
    EXPECT_EQ(batches[1]["events"][0]["eventId"], "after");
    EXPECT_LT(batches[0]["number"], batches[1]["number"]);
}

TEST_F(CollectorTest, ABatchOfAnotherShapeIsRefusedAsAWhole)
{
    for (auto const* body : { "", "{", "[]", R"({"data":[]})", R"({"profile":"prd","data":{}})",
             R"({"profile":"prd","data":[{"eventId":"a"},7]})", R"({"profile":"other","data":[]})",
             R"({"profile":"prd","data":[],"key":"secret"})" }) {
        EXPECT_EQ(collect(body).status, 400U) << body;
    }
    EXPECT_EQ(collected().size(), 0U);
}

TEST_F(CollectorTest, ATooDeeplyNestedEventIsRefused)
{
    std::string const deep(100'000, '[');
    EXPECT_EQ(collect(R"({"profile":"prd","data":[{"a":)" + deep + std::string(100'000, ']') + "}]}").status, 400U);
    EXPECT_EQ(collected().size(), 0U);
}

TEST_F(CollectorTest, EventsMustBePostedAsJson)
{
    auto const body = R"({"profile":"prd","data":[]})";
    EXPECT_EQ(post("collector", "/v1/events", body, "text/plain").status, 415U);
    EXPECT_EQ(get("collector", "/v1/events").status, 405U);
    EXPECT_EQ(post("collector", "/", body).status, 405U);
    EXPECT_EQ(get("collector", "/elsewhere").status, 404U);
}

TEST_F(CollectorTest, ThePageShowsWhatWasCollectedInBothLanguages)
{
    EXPECT_NE(get("collector", "/").body.find("아직 받은 이벤트가 없습니다."), std::string::npos);
    collect(R"({"profile":"dev","data":[{"eventId":"<script>","memo":"달항아리"}]})");

    auto const korean = get("collector", "/");
    EXPECT_EQ(korean.contentType, "text/html; charset=utf-8");
    EXPECT_NE(korean.body.find("수집된 이벤트"), std::string::npos);
    EXPECT_NE(korean.body.find("달항아리"), std::string::npos);
    EXPECT_NE(get("collector", "/?lang=en").body.find("Collected events"), std::string::npos);
}

TEST_F(CollectorTest, ThePageShowsTheNewestEventsAndSaysWhenThereAreOlderOnes)
{
    auto const more = std::string("Older events are listed at /events.json.");
    auto events = Json::array();
    for (int i = 0; i < 200; ++i)
        events.push_back({ { "eventId", "newer" } });
    auto const newer = Json({ { "profile", "prd" }, { "data", events } }).dump();

    collect(newer);
    EXPECT_EQ(get("collector", "/?lang=en").body.find(more), std::string::npos);
    post("control", "/reset", R"({"collected":true})");
    collect(R"({"profile":"prd","data":[{"eventId":"older"}]})");
    collect(newer);
    auto const page = get("collector", "/?lang=en").body;
    EXPECT_NE(page.find(more), std::string::npos);
    EXPECT_NE(page.find("newer"), std::string::npos);
    EXPECT_EQ(page.find("older"), std::string::npos);
}

TEST_F(CollectorTest, ThePageShowsMarkupInAnEventAsText)
{
    collect(R"({"profile":"dev","data":[{"eventId":"<script>alert(1)</script>"}]})");
    auto const page = get("collector", "/").body;
    EXPECT_EQ(page.find("<script"), std::string::npos);
    EXPECT_NE(page.find("&lt;script&gt;"), std::string::npos);
}

}
