#include "tests/uikit/doubles/Application.h"

#include "tests/uikit/doubles/Calls.h"

#include <utility>

NSString* const UIApplicationDidBecomeActiveNotification = @"UIApplicationDidBecomeActiveNotification";
NSString* const UIApplicationDidEnterBackgroundNotification = @"UIApplicationDidEnterBackgroundNotification";
NSString* const UIApplicationWillEnterForegroundNotification = @"UIApplicationWillEnterForegroundNotification";

namespace zelvora::doubles {

namespace {

UIApplicationState s_state = UIApplicationStateActive;
std::set<std::string> s_schemes;
std::vector<std::string> s_opened;

}

void setApplicationState(UIApplicationState state)
{
    if (std::exchange(s_state, state) != state && state == UIApplicationStateActive) {
        [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification
                                                            object:[UIApplication sharedApplication]];
    }
}

void setOpenableSchemes(std::set<std::string> schemes)
{
    s_schemes = std::move(schemes);
}

std::vector<std::string> openedURLs()
{
    return s_opened;
}

}

@implementation UIApplication

+ (UIApplication*)sharedApplication
{
    static UIApplication* s_shared = [[UIApplication alloc] init];
    return s_shared;
}

- (UIApplicationState)applicationState
{
    zelvora::doubles::requireMainThread("applicationState");
    return zelvora::doubles::s_state;
}

- (BOOL)canOpenURL:(NSURL*)url
{
    zelvora::doubles::requireMainThread("canOpenURL");
    NSString* scheme = [url.scheme lowercaseString];
    return scheme && zelvora::doubles::s_schemes.contains(scheme.UTF8String);
}

- (void)openURL:(NSURL*)url options:(NSDictionary*)options completionHandler:(void (^)(BOOL))completion
{
    zelvora::doubles::requireMainThread("openURL");
    bool const isOpened = [self canOpenURL:url];
    if (isOpened)
        zelvora::doubles::s_opened.emplace_back(url.absoluteString.UTF8String);
    if (completion)
        completion(isOpened);
}

@end
