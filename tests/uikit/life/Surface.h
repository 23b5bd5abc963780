#pragma once

#include "ZelvoraAdapters/uikit/Host.h"

#import <UIKit/UIKit.h>

/// The least of a surface for hosts: native classes for the SDK's view and controller, made by the SDK or by the host,
/// that count how many of them there are.
@interface ZelvoraWebView : UIView <ZLVView>
+ (int)liveCount;
- (instancetype)initForHostWithURL:(NSString*)url;
@end

@interface ZelvoraIOSViewController : UIViewController <ZLVViewController>
+ (int)liveCount;
- (instancetype)initForHostWithURL:(NSString*)url;
@end
