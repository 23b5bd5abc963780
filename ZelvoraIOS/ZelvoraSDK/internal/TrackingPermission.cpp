#include "ZelvoraIOS/ZelvoraSDK/internal/TrackingPermission.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Concurrency/completion.h"
#include "ZelvoraPlatform/Concurrency/resumeOn.h"
#include "ZelvoraPlatform/Platform.h"

#include <memory>
#include <string>
#include <utility>

namespace zelvora::internal {

using platform::ATTrackingAuthorizationStatus;
using platform::completion;
using platform::Platform;
using platform::resumeOn;
using platform::Task;

namespace {

using StatusHandler = platform::CompletionHandler<void(ATTrackingAuthorizationStatus)>;

// The system drops a prompt that is requested at the very moment the app becomes active.
constexpr platform::TimeInterval promptDelay = 0.1;

void requestAuthorizationSoon(StatusHandler handler)
{
    Platform::current().mainQueue().asyncAfter(promptDelay, [handler = std::move(handler)]() mutable {
        Platform::current().trackingManager().requestTrackingAuthorization(std::move(handler));
    });
}

using ActivationHandler = platform::CompletionHandler<void(platform::Notification)>;

// Stays registered until the first notification.
struct ActivationObserver {
    ActivationHandler handler;
    platform::NotificationCenter::Token token = 0;
};

void observeActivation(ActivationHandler handler)
{
    auto& center = Platform::current().notificationCenter();
    auto const observer = std::make_shared<ActivationObserver>(std::move(handler));
    observer->token = center.addObserver(platform::UIApplication::didBecomeActiveNotification,
        Platform::current().mainQueue(), [&center, observer](platform::Notification const& notification) {
            center.removeObserver(observer->token);
            observer->handler(notification);
        });
}

}

Task<void> TrackingPermission::fetchIDFA()
{
    auto& platform = Platform::current();
    co_await resumeOn(platform.mainQueue());
    auto status = platform.trackingManager().trackingAuthorizationStatus();
    if (status == ATTrackingAuthorizationStatus::NotDetermined) {
        auto active = waitForAppActive();
        co_await active;
        auto answer = completion<ATTrackingAuthorizationStatus>(&requestAuthorizationSoon);
        status = co_await answer;
    }
    co_await resumeOn(platform.globalQueue());
    updateAdId(status);
}

Task<void> TrackingPermission::waitForAppActive()
{
    co_await resumeOn(Platform::current().mainQueue());
    if (Platform::current().application().applicationState() == platform::UIApplicationState::Active)
        co_return;
    auto activation = completion<platform::Notification>(&observeActivation);
    co_await activation;
}

void TrackingPermission::updateAdId(ATTrackingAuthorizationStatus status)
{
    if (status != ATTrackingAuthorizationStatus::Authorized) {
        m_properties.set(&Properties::adId, "unknown");
        ZelvoraLogger::d("ADID: unknown (Status: " + std::to_string(static_cast<int>(status)) + ")");
        return;
    }
    auto const identifier = Platform::current().identifierManager().advertisingIdentifier();
    m_properties.set(&Properties::adId, identifier);
    ZelvoraStorage::set(identifier, "adid");
    ZelvoraLogger::d("ADID: " + identifier);
}

}
