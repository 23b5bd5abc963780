#include "tests/uikit/doubles/Tracking.h"

#import <dispatch/dispatch.h>

#include <mutex>
#include <utility>
#include <vector>

namespace zelvora::doubles {

namespace {

using Status = ATTrackingManagerAuthorizationStatus;
typedef void (^Completion)(Status);

std::mutex s_mutex;
Status s_status = ATTrackingManagerAuthorizationStatusNotDetermined;
std::string s_identifier = "00000000-0000-0000-0000-000000000000";

std::vector<Completion>& pending()
{
    static auto& completions = *new std::vector<Completion>;
    return completions;
}

void complete(Completion completion, Status status)
{
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0), ^{ completion(status); });
}

}

void setTrackingStatus(Status status)
{
    std::scoped_lock const lock(s_mutex);
    s_status = status;
}

bool isAskingToTrack()
{
    std::scoped_lock const lock(s_mutex);
    return !pending().empty();
}

void answerTracking(bool allow)
{
    std::unique_lock lock(s_mutex);
    s_status = allow ? ATTrackingManagerAuthorizationStatusAuthorized : ATTrackingManagerAuthorizationStatusDenied;
    auto const status = s_status;
    auto const completions = std::exchange(pending(), {});
    lock.unlock();
    for (Completion completion : completions)
        complete(completion, status);
}

void setAdvertisingIdentifier(std::string const& identifier)
{
    std::scoped_lock const lock(s_mutex);
    s_identifier = identifier;
}

}

@implementation ATTrackingManager

+ (ATTrackingManagerAuthorizationStatus)trackingAuthorizationStatus
{
    std::scoped_lock const lock(zelvora::doubles::s_mutex);
    return zelvora::doubles::s_status;
}

+ (void)requestTrackingAuthorizationWithCompletionHandler:(void (^)(ATTrackingManagerAuthorizationStatus))completion
{
    zelvora::doubles::Completion const kept = [completion copy];
    std::unique_lock lock(zelvora::doubles::s_mutex);
    auto const status = zelvora::doubles::s_status;
    if (status == ATTrackingManagerAuthorizationStatusNotDetermined) {
        zelvora::doubles::pending().push_back(kept);
        return;
    }
    lock.unlock();
    zelvora::doubles::complete(kept, status);
}

@end

@implementation ASIdentifierManager

+ (ASIdentifierManager*)sharedManager
{
    static ASIdentifierManager* s_shared = [[ASIdentifierManager alloc] init];
    return s_shared;
}

- (NSUUID*)advertisingIdentifier
{
    std::scoped_lock const lock(zelvora::doubles::s_mutex);
    return [[NSUUID alloc] initWithUUIDString:[NSString stringWithUTF8String:zelvora::doubles::s_identifier.c_str()]];
}

@end
