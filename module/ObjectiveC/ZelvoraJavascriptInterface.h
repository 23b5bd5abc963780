#pragma once

#import "ZelvoraExport.h"

#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>

NS_ASSUME_NONNULL_BEGIN

/// The bridge between a page and the SDK: the script that gives every page `window.ZelvoraSDKBridge`, and the handling
/// of the messages that it posts. `ZelvoraWebView` uses both; a host needs them only for a web view of its own.
ZELVORA_EXPORT __attribute__((objc_subclassing_restricted))
@interface ZelvoraJavascriptInterface : NSObject

/// The name under which the script posts its messages. Any thread.
@property (class, nonatomic, readonly, copy) NSString* handlerName;
/// The script, to be run at document start in every frame. It has a function for each custom action that is registered
/// at this moment. Any thread.
@property (class, nonatomic, readonly, copy) NSString* scriptSource;

/// Carries out a page's message. Untrusted input: a message under another name, or without a required argument of the
/// right type, is ignored. Main thread.
///
/// Storage, footer and custom actions are done when this returns. Closing the screen and answers to the page follow on
/// the main queue, in order, and keep the view controller or the web view alive until then. Either may be nil: then
/// nothing is closed or answered.
+ (void)handleMessage:(WKScriptMessage*)message
              webView:(nullable WKWebView*)webView
       viewController:(nullable UIViewController*)viewController
    NS_SWIFT_NAME(handle(message:webView:viewController:))NS_SWIFT_UI_ACTOR;

@end

NS_ASSUME_NONNULL_END
