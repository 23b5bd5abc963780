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
std::vector<std::string>& logs();
ATTrackingManagerAuthorizationStatus& att_answer();
}
@interface WKUserContentController (Double)
- (void)double_post:(id)body name:(NSString*)name;
- (NSUInteger)double_handlerCount;
@end
@interface WKWebView (Double)
- (WKNavigationActionPolicy)double_navigateTo:(NSString*)url;
@end
@interface WKWebView (DoubleURL)
- (void)double_setURL:(NSString*)url;
@end
