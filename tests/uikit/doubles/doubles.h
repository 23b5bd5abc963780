// What tests may see of the doubles: recorders and levers. Test-only.
#pragma once
#import <AppTrackingTransparency/AppTrackingTransparency.h>
#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>

#include <functional>
#include <string>
#include <vector>
namespace doubles {
void reset();
size_t run_main_queue(); // runs what dispatch_async put on the main queue; returns how many blocks ran
std::vector<std::string>& calls(); // every recorded call, in order
std::vector<std::string>& logs();
ATTrackingManagerAuthorizationStatus& att_answer();
}
@interface UIViewController (Double)
- (void)double_finishDismissal;
@end
@interface WKUserContentController (Double)
- (void)double_post:(id)body name:(NSString*)name;
- (NSUInteger)double_handlerCount;
@end
@interface WKWebView (Double)
- (WKNavigationActionPolicy)double_navigateTo:(NSString*)url;
@end
@interface UIView (Double)
- (NSArray*)double_gestures;
@end
@interface UIGestureRecognizer (Double)
- (BOOL)double_recognize;
@end
@interface WKWebView (DoubleURL)
- (void)double_setURL:(NSString*)url;
@end
