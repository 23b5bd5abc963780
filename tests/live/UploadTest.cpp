#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace zelvora::tests {

namespace {

using gtk::runMainLoopUntil;

std::size_t queued()
{
    return ZelvoraStorage::getEventTrackingData().size();
}

// Launches the app in another process and waits for its end.
void live(std::string const& life, LiveShop& shop)
{
    auto const port = std::to_string(shop.port());
    auto const data = shop.data().string();
    auto const certificates = shop.certificates().string();
    std::array const arguments { ZELVORA_LIFE_PROGRAM, life.c_str(), data.c_str(), certificates.c_str(), port.c_str(),
        static_cast<char const*>(nullptr) };
    int status = -1;
    EXPECT_TRUE(g_spawn_sync(nullptr, const_cast<char**>(arguments.data()), nullptr, G_SPAWN_STDOUT_TO_DEV_NULL,
        nullptr, nullptr, nullptr, nullptr, &status, nullptr));
    EXPECT_EQ(status, 0) << life;
}

}

TEST(UploadTest, TwelveHundredEventsReachTheCollectorInOrderInThreeCallsWithRestartsBetween)
{
    LiveShop shop;
    live("queue-events", shop);
    live("get-ready", shop);
    live("upload-the-rest", shop);

    auto const batches = shop.service().collected().batches();
    ASSERT_EQ(batches.size(), 3U);
    EXPECT_EQ(batches.at(0).at("events").size(), 500U);
    EXPECT_EQ(batches.at(1).at("events").size(), 500U);
    EXPECT_EQ(batches.at(2).at("events").size(), 200U);
    auto expected = 0;
    for (auto const& batch : batches) {
        EXPECT_EQ(batch.at("profile"), "prd");
        for (auto const& event : batch.at("events")) {
            EXPECT_EQ(event.at("n"), expected);
            EXPECT_EQ(event.at("eventId"), "event " + std::to_string(expected));
            EXPECT_EQ(event.at("adid"), expected < 500 ? "unknown" : "");
            ++expected;
        }
    }
}

TEST(UploadTest, EventsThatTheCollectorRefusesStayQueuedForTheNextUpload)
{
    LiveShop shop;
    ZelvoraStorage::saveEventTrackingData({ { "eventId", "kept" }, { "memo", platform::Null {} } });
    testing::internal::CaptureStdout();
    shop.service().faults().set(examples::Target::Collector, { .status = 300, .requests = 1 });
    ZelvoraSDK::shared().sendTrackingData();
    auto const asked = [&shop](unsigned times) {
        return shop.service().faults().requests(examples::Target::Collector) == times;
    };
    ASSERT_TRUE(runMainLoopUntil([&] { return asked(1); }));
    shop.service().faults().set(examples::Target::Collector, { .cut = examples::Cut::BeforeAnswer, .requests = 1 });
    ZelvoraSDK::shared().sendTrackingData();
    ASSERT_TRUE(runMainLoopUntil([&] { return asked(2); }));
    EXPECT_EQ(queued(), 1U);
    ZelvoraSDK::shared().sendTrackingData();
    EXPECT_TRUE(runMainLoopUntil([] { return queued() == 0; }));
    std::fflush(stdout);
    auto const output = testing::internal::GetCapturedStdout();
    EXPECT_NE(output.find("sendTrackingData Failed (Status: 300, Body: "), std::string::npos);
    EXPECT_NE(output.find("sendTrackingData Network Error: "), std::string::npos);
    EXPECT_NE(output.find("sendTrackingData Success - Sent 1 events"), std::string::npos);
    auto const batches = shop.service().collected().batches();
    ASSERT_EQ(batches.size(), 1U);
    EXPECT_EQ(batches.front().at("events").front().at("memo"), "");
}

}
