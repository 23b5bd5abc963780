#include "ZelvoraAdapters/uikit/Tracking/ATTrackingManager.h"

#import <AppTrackingTransparency/AppTrackingTransparency.h>

#include <utility>

using NativeTrackingManager = ATTrackingManager;

namespace zelvora::uikit {

using Status = platform::ATTrackingAuthorizationStatus;

ATTrackingManager::~ATTrackingManager()
{
    m_pending->completeAll(Status::NotDetermined);
}

Status ATTrackingManager::trackingAuthorizationStatus() const
{
    return static_cast<Status>([NativeTrackingManager trackingAuthorizationStatus]);
}

void ATTrackingManager::requestTrackingAuthorization(platform::CompletionHandler<void(Status)> completion)
{
    auto const pending = m_pending;
    auto const number = pending->add(std::move(completion));
    [NativeTrackingManager requestTrackingAuthorizationWithCompletionHandler:^(
        ATTrackingManagerAuthorizationStatus status) { pending->complete(number, static_cast<Status>(status)); }];
}

}
