// One launch of an app: life LIFE DATA CERTIFICATES PORT. The exit status says whether everything went as expected.

#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/live/LiveShop.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace zelvora;
using gtk::runMainLoopUntil;
using tests::LiveShop;

std::size_t queued()
{
    return ZelvoraStorage::getEventTrackingData().size();
}

bool becomesQueued(std::size_t count)
{
    return runMainLoopUntil([count] { return queued() == count; });
}

bool queueEvents()
{
    for (int i = 0; i < 1200; ++i)
        ZelvoraStorage::saveEventTrackingData({ { "eventId", "event " + std::to_string(i) }, { "n", i } });
    return queued() == 1200;
}

bool getReady(LiveShop& shop)
{
    if (queued() != 1200)
        return false;
    shop.initialize();
    return becomesQueued(700);
}

bool uploadTheRest()
{
    if (queued() != 700)
        return false;
    ZelvoraSDK::shared().sendTrackingData();
    if (!becomesQueued(200))
        return false;
    ZelvoraSDK::shared().sendTrackingData();
    return becomesQueued(0);
}

bool live(std::string_view life, LiveShop& shop)
{
    if (life == "queue-events")
        return queueEvents();
    if (life == "get-ready")
        return getReady(shop);
    return life == "upload-the-rest" && uploadTheRest();
}

}

int main(int count, char** arguments)
{
    if (count != 5)
        return EXIT_FAILURE;
    LiveShop shop(arguments[2], arguments[3], static_cast<std::uint16_t>(std::stoi(arguments[4])));
    return live(arguments[1], shop) ? EXIT_SUCCESS : EXIT_FAILURE;
}
