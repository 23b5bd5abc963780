// The cost of the bridge without an engine: writing an upload, and memory after many calls.

#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Platform.h"
#include "bench/Comparison.h"
#include "bench/JournalPlatform.h"
#include "bench/makeEvent.h"
#include "tests/support/TemporaryDirectory.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using namespace zelvora;
using bench::makeEvent;
using platform::Dictionary;

constexpr std::size_t batch = 500;

std::size_t residentBytes()
{
    std::ifstream statistics("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    statistics >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void post(Dictionary const& body)
{
    ZelvoraJavascriptInterface::handle({ "zelvora", body }, nullptr, nullptr);
}

// One step of a long session: the page stores, reads and queues; now and then the queue is emptied as by an upload.
void call(std::size_t number, bench::JournalPlatform& platform)
{
    post({ { "action", "setItem" }, { "key", "cart" }, { "value", makeEvent(number) }, { "expire", 60 } });
    post({ { "action", "getItem" }, { "key", "cart" }, { "callback", "onCart" } });
    post({ { "action", "saveEvent" }, { "data", makeEvent(number) } });
    if (number % batch == 0)
        ZelvoraStorage::removeEventTrackingData(batch);
    platform.memory().runUntilIdle();
}

void measureMemory(bench::JournalPlatform& platform)
{
    constexpr std::size_t early = 20'000;
    constexpr std::size_t late = 100'000;
    std::size_t before = 0;
    for (std::size_t number = 1; number <= late; ++number) {
        call(number, platform);
        if (number == early)
            before = residentBytes();
    }
    std::fprintf(stderr, "  %-58s %7.2f times that after 20,000\n", "resident memory after 100,000 steps",
        static_cast<double>(residentBytes()) / static_cast<double>(before));
    ZelvoraStorage::clearEventTrackingData();
}

void measureUpload()
{
    nlohmann::json events = nlohmann::json::array();
    for (std::size_t number = 0; number < batch; ++number) {
        ZelvoraStorage::saveEventTrackingData(makeEvent(number));
        events.push_back({ { "eventId", "product_view" }, { "adid", "" }, { "productId", "moon-jar" },
            { "price", 89000 }, { "page", "/v1/product.html" }, { "number", number } });
    }
    nlohmann::json const body = { { "data", events }, { "profile", "prd" } };
    std::string written;
    bench::Comparison const comparison(31, 1);
    comparison.print(
        "500 queued events to an upload, log included", [] { ZelvoraSDK::shared().sendTrackingData(); },
        "writing the finished body twice", [&] { written = body.dump(4) + body.dump(); });
}

}

int main()
{
    tests::TemporaryDirectory const folder;
    auto owned = std::make_unique<bench::JournalPlatform>((folder.path() / "bridge.journal").string());
    auto& platform = *owned;
    platform::Platform::install(std::move(owned));
    std::fprintf(stderr, "Bridge and upload, without an engine\n");
    measureMemory(platform);
    measureUpload();
    return EXIT_SUCCESS;
}
