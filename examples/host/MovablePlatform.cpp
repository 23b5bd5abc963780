#include "examples/host/MovablePlatform.h"

#include "ZelvoraAdapters/gtk/Platform.h"

#include <utility>

namespace zelvora::examples {

using platform::ATTrackingAuthorizationStatus;

MovablePlatform::MovablePlatform(gtk::HostOptions options)
    : ForwardingPlatform(std::make_unique<gtk::Platform>(std::move(options)))
{
}

platform::Date MovablePlatform::MovedClock::now() const
{
    return { owner.target().clock().now().timeIntervalSince1970 + ahead };
}

ATTrackingAuthorizationStatus MovablePlatform::RefusedTracking::trackingAuthorizationStatus() const
{
    return ATTrackingAuthorizationStatus::Denied;
}

void MovablePlatform::RefusedTracking::requestTrackingAuthorization(
    platform::CompletionHandler<void(ATTrackingAuthorizationStatus)> completion)
{
    completion(ATTrackingAuthorizationStatus::Denied);
}

}
