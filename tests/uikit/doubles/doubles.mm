// Small recording stand-ins for the UIKit / WebKit / ATT classes the adapter touches. Ownership follows the documented
// behaviour (a content controller retains its handlers, a presenter retains the presented controller, ...).
#import "tests/uikit/doubles/doubles.h"

#import "tests/uikit/doubles/Calls.h"

#import <AdSupport/AdSupport.h>
#import <os/log.h>

#include <cstdarg>
#include <cstdio>
namespace doubles {
std::vector<std::string>& logs()
{
    static auto* v = new std::vector<std::string>;
    return *v;
}
ATTrackingManagerAuthorizationStatus& att_answer()
{
    static auto s = ATTrackingManagerAuthorizationStatusDenied;
    return s;
}
void reset()
{
    zelvora::doubles::calls().clear();
    logs().clear();
    att_answer() = ATTrackingManagerAuthorizationStatusDenied;
}
}
using zelvora::doubles::note;
extern "C" {
os_log_t os_log_create(char const*, char const*)
{
    static int x;
    return reinterpret_cast<os_log_t>(&x);
}
bool os_log_type_enabled(os_log_t, os_log_type_t)
{
    return true;
}
void zelvora_double_os_log(os_log_t, os_log_type_t, char const* f, ...)
{
    va_list a;
    va_start(a, f);
    char b[512];
    std::string g(f);
    if (auto p = g.find("{public}"); p != g.npos)
        g.erase(p, 8);
    vsnprintf(b, sizeof b, g.c_str(), a);
    va_end(a);
    doubles::logs().push_back(b);
}
}
NSString* const UIApplicationDidBecomeActiveNotification = @"UIApplicationDidBecomeActiveNotification";
NSString* const UIApplicationDidEnterBackgroundNotification = @"UIApplicationDidEnterBackgroundNotification";
NSString* const UIApplicationWillEnterForegroundNotification = @"UIApplicationWillEnterForegroundNotification";
@implementation NSObject (ZelvoraKVO)
- (void)removeObserver:(NSObject*)o forKeyPath:(NSString*)k context:(void*)c
{
    [self removeObserver:o forKeyPath:k];
}
@end
@implementation UIApplication
+ (UIApplication*)sharedApplication
{
    static UIApplication* a = [UIApplication new];
    return a;
}
- (UIApplicationState)applicationState
{
    return UIApplicationStateActive;
}
- (BOOL)canOpenURL:(NSURL*)u
{
    return [u.scheme isEqualToString:@"tel"];
}
- (void)openURL:(NSURL*)u options:(NSDictionary*)o completionHandler:(void (^)(BOOL))c
{
    note([NSString stringWithFormat:@"open %@", u.absoluteString]);
}
@end
@implementation ATTrackingManager
+ (ATTrackingManagerAuthorizationStatus)trackingAuthorizationStatus
{
    return doubles::att_answer();
}
+ (void)requestTrackingAuthorizationWithCompletionHandler:(void (^)(ATTrackingManagerAuthorizationStatus))c
{
    note(@"att");
    c(doubles::att_answer());
}
@end
@implementation ASIdentifierManager
+ (ASIdentifierManager*)sharedManager
{
    static ASIdentifierManager* m = [ASIdentifierManager new];
    return m;
}
- (NSUUID*)advertisingIdentifier
{
    return [[NSUUID alloc] initWithUUIDString:@"00000000-0000-0000-0000-000000000000"];
}
@end
