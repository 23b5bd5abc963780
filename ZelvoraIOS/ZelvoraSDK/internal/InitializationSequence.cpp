#include "ZelvoraIOS/ZelvoraSDK/internal/InitializationSequence.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraPlatform/Concurrency/resumeOn.h"
#include "ZelvoraPlatform/Concurrency/whenAll.h"
#include "ZelvoraPlatform/Platform.h"

#include <utility>

namespace zelvora::internal {

using platform::Platform;
using platform::resumeOn;

platform::Task<void> InitializationSequence::runInitialization(std::string apiKey)
{
    auto bothLookups =
        platform::whenAll(m_shopIdLookup.fetchShopId(std::move(apiKey)), m_trackingPermission.fetchIDFA());
    co_await bothLookups;
    co_await resumeOn(Platform::current().globalQueue());
    m_trackingUpload.sendTrackingData();
    m_properties.set(&Properties::isInitializing, false);
    co_await resumeOn(Platform::current().mainQueue());
    startDeferred();
}

void InitializationSequence::startDeferred()
{
    if (auto const presenter = m_properties.get(&Properties::pendingViewController)) {
        ZelvoraLogger::d("Executing deferred start after initialization");
        (void)m_launch.start(presenter);
    }
    m_properties.set(&Properties::pendingViewController, nullptr);
}

}
