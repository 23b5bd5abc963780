#include "examples/developer/panel/PanelRows.h"

#include <gtest/gtest.h>

namespace zelvora::developer {

TEST(PanelRowsTest, AMessageShowsWhatBecameOfItInBothLanguages)
{
    Records records;
    records.messages.push_back({ .time = {},
        .action = "setItem",
        .body = { { "action", "setItem" }, { "key", "cart" } },
        .outcome = { .verdict = Verdict::Dropped, .explanation = { "까닭", "reason" }, .warning = {} },
        .answer = {} });
    auto const english = messageRows(records, Language::English).front();
    EXPECT_EQ(english.title, "setItem cart");
    EXPECT_EQ(english.mark, "dropped");
    EXPECT_EQ(english.look, Mark::Bad);
    EXPECT_TRUE(english.note.ends_with("reason")) << english.note;
    auto const korean = messageRows(records, Language::Korean).front();
    EXPECT_EQ(korean.mark, "무시됨");
    EXPECT_TRUE(korean.note.ends_with("까닭")) << korean.note;
}

TEST(PanelRowsTest, TheNewestMessagesComeFirstAndTheOldestOfVeryManyAreLeftOut)
{
    Records records;
    for (std::size_t i = 0; i < mostPanelRows + 1; ++i)
        records.messages.push_back(
            { .time = {}, .action = std::to_string(i), .body = Json::object(), .outcome = {}, .answer = {} });
    auto const rows = messageRows(records, Language::English);
    ASSERT_EQ(rows.size(), mostPanelRows);
    EXPECT_EQ(rows.front().title, std::to_string(mostPanelRows));
    EXPECT_EQ(rows.back().title, "1");
}

TEST(PanelRowsTest, AnExpiredValueIsMarked)
{
    StoredValue value { .key = "cart", .value = 7, .expiry = 60, .secondsLeft = -1 };
    EXPECT_EQ(valueRows({ value }, Language::English).front().look, Mark::Bad);
    value.secondsLeft = 59;
    EXPECT_EQ(valueRows({ value }, Language::English).front().mark, "59 s left");
}

TEST(PanelRowsTest, AnUploadShowsTheServicesAnswer)
{
    Records records;
    records.uploads.push_back(
        { .time = {}, .request = 1, .events = Json::parse(R"([{},{}])"), .status = {}, .body = {}, .error = {} });
    EXPECT_EQ(uploadRows(records, Language::English).front().look, Mark::Waiting);
    records.uploads.front().status = 503;
    EXPECT_EQ(uploadRows(records, Language::English).front().look, Mark::Bad);
    records.uploads.front().status = 201;
    EXPECT_EQ(uploadRows(records, Language::Korean).front().look, Mark::Good);
    EXPECT_TRUE(uploadRows(records, Language::Korean).front().title.ends_with("이벤트 2개"));
}

TEST(PanelRowsTest, MoreEventsThanAreShownAreCounted)
{
    auto events = Json::array();
    for (std::size_t i = 0; i < mostPanelRows + 2; ++i)
        events.push_back({ { "eventId", "e" } });
    auto const rows = eventRows(events, Language::English);
    EXPECT_EQ(rows.size(), mostPanelRows + 1);
    EXPECT_EQ(rows.front().title, "1. e");
    EXPECT_EQ(rows.back().title, "and 2 more");
}

TEST(PanelRowsTest, ALongTextIsCutBetweenTwoLetters)
{
    EXPECT_EQ(shortened("달항아리", 7), "달항…");
    EXPECT_EQ(shortened("달항아리", 12), "달항아리");
}

}
