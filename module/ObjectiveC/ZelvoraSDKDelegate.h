#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class ZelvoraWebView;

/// The host's side of the container. The SDK refers to it weakly. Swift hosts see the protocol
/// `ZelvoraSDK.ZelvoraSDKDelegate` instead, which any class may adopt. Main thread.
NS_SWIFT_UI_ACTOR NS_REFINED_FOR_SWIFT @protocol ZelvoraSDKDelegate<NSObject>

/// The user completed a back swipe. Return YES to let the container handle it, by going back in the page's history or
/// else leaving the screen; return NO if the host has handled it.
- (BOOL)zelvoraSDKShouldHandleBackAction:(ZelvoraWebView*)webView;
/// The container is about to disappear, for good or because another screen will cover it.
- (void)zelvoraSDKWillDismiss;

@end

NS_ASSUME_NONNULL_END
