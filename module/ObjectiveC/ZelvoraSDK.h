#pragma once

#import "ZelvoraExport.h"
#import "ZelvoraSDKDelegate.h"
#import "ZelvoraSDKError.h"
#import "ZelvoraWebView.h"

#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

/// Creates a view for a container, once for each container, when that loads its view. nil means no view. A view that is
/// elsewhere at that moment moves. Main thread.
typedef UIView* _Nullable(NS_SWIFT_UI_ACTOR ^ ZelvoraViewProvider)(UIViewController* viewController);
/// Called with an error each time something fails, never on success. Errors of the shop-id lookup arrive on a
/// background thread, those of a call on the caller's thread.
typedef void(NS_SWIFT_SENDABLE ^ ZelvoraCompletionHandler)(NSError* _Nullable error);
/// Called on the main thread with every new URL of a page, in every web view of the SDK.
typedef void (^ZelvoraPageNavigationHandler)(NSString* url);
/// Called on the main thread with the text that the page passed, if any.
typedef void (^ZelvoraCustomAction)(NSString* _Nullable data);

/// The SDK's facade: a host configures it once and then asks it to show the shopping site.
///
/// Call on the main thread unless stated otherwise. The properties may be read and set on any thread; a getter returns
/// the very block that was set. Every callback may call the SDK.
///
/// nil for an argument that must not be nil is treated as empty text, or as no view controller.
ZELVORA_EXPORT NS_SWIFT_SENDABLE __attribute__((objc_subclassing_restricted))
@interface ZelvoraSDK : NSObject

/// The only instance, created on first use and never destroyed. Any thread.
@property (class, nonatomic, readonly, strong) ZelvoraSDK* sharedInstance NS_SWIFT_NAME(shared);
/// `ZelvoraIOSVersionString` for Swift, which does not see an array without a length. Any thread.
@property (class, nonatomic, readonly, copy) NSString* versionString NS_REFINED_FOR_SWIFT;
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;

/// Stores the configuration and starts initialization, without waiting for it: in parallel, the SDK finds the shop id
/// (stored for a day, else looked up with `apiKey`) and, as soon as the app is active, asks the user for permission to
/// track, once per install and whatever `isTrackingEnabled` is. Then it uploads queued events and carries out a
/// `startFromViewController:` that was called in the meantime.
///
/// Fails with `ZelvoraSDKErrorInitializing` while an earlier call's initialization is running; nothing changes then,
/// and the earlier call's handler receives the error, or this call's if the earlier one passed none. Afterwards it may
/// be called again and replaces every argument of the earlier call, with nil too. Keys are not validated here: a wrong
/// API key surfaces as a `ZelvoraSDKErrorInternalApiError` of the lookup. `isDev` selects the development environment.
///
/// Returns nil on success.
- (nullable NSError*)initializeWithUserKey:(NSString*)userKey
                                    apiKey:(NSString*)apiKey
                         isTrackingEnabled:(BOOL)isTrackingEnabled
                                     isDev:(BOOL)isDev
                           allowsSwipeBack:(BOOL)allowsSwipeBack
                        headerViewProvider:(nullable ZelvoraViewProvider)headerViewProvider
                        footerViewProvider:(nullable ZelvoraViewProvider)footerViewProvider
                                  delegate:(nullable id<ZelvoraSDKDelegate>)delegate
                        completion_handler:(nullable ZelvoraCompletionHandler)completion_handler NS_REFINED_FOR_SWIFT
    NS_SWIFT_UI_ACTOR;

/// Shows the site full screen: pushed onto the presenter's navigation stack if it is one or is on one, else presented
/// modally. Any thread; the container appears later, on the main thread, and the presenter is kept alive until then.
///
/// During initialization the call succeeds and the launch is deferred; the latest presenter is used once initialization
/// ends. Otherwise it fails with `ZelvoraSDKErrorShopIdNotInitialized`, `ZelvoraSDKErrorMediaKeyNotInitialized` or
/// `ZelvoraSDKErrorUserKeyNotInitialized` if one of these is missing. Without a presenter it always fails with
/// `ZelvoraSDKErrorOtherError`. The completion handler receives the error as well. Returns nil on success.
- (nullable NSError*)startFromViewController:(UIViewController*)viewController NS_REFINED_FOR_SWIFT;

/// A web view on the site, for the host to size and place; the host owns it. nil, with an error line in the log, if the
/// shop id, the API key or the user key is missing.
- (nullable ZelvoraWebView*)createWebView NS_SWIFT_UI_ACTOR;
/// The address of the page in the active web view; nil if there is none.
- (nullable NSString*)getCurrentUrl NS_SWIFT_UI_ACTOR;

/// Shows or hides the footer, with an animation in the open container, and from the start in later ones.
- (void)setFooterVisible:(BOOL)visible NS_SWIFT_UI_ACTOR;

/// Uploads the oldest queued events, up to 500, and removes them once the server has accepted them. The SDK calls this
/// at the end of initialization, when a page calls `close` and when a container disappears. The outcome is only logged.
/// Any thread. Overlapping calls upload the same events twice, and may remove later events that were never sent.
- (void)sendTrackingData;

/// Registers an action that pages call as `window.ZelvoraSDKBridge.NAME(data)`, on the main thread. A later action of
/// the same name replaces it; nil changes nothing. Web views that already exist do not get a function for a new name.
/// Any thread.
- (void)addCustomActionWithFunctionName:(NSString*)functionName
                                 action:(ZelvoraCustomAction)action
    NS_SWIFT_NAME(addCustomAction(functionName:action:));
/// A copy of the table. Any thread.
- (NSDictionary<NSString*, ZelvoraCustomAction>*)getCustomActions NS_REFINED_FOR_SWIFT;

@property (nullable, copy) ZelvoraViewProvider headerViewProvider;
@property (nullable, copy) ZelvoraViewProvider footerViewProvider;
@property BOOL allowsSwipeBack;
/// nil if the host has released its delegate.
@property (nullable, weak) id<ZelvoraSDKDelegate> delegate NS_REFINED_FOR_SWIFT;
/// The delegate, kept by the SDK until another is set: for a delegate that stands for a weakly referenced object of the
/// host's. nil if the delegate was set otherwise.
@property (nullable, strong) id<ZelvoraSDKDelegate> delegateHolder NS_REFINED_FOR_SWIFT;
@property (nullable, copy) ZelvoraPageNavigationHandler onPageNavigation;
/// Whether containers show their footer; YES until `setFooterVisible:` is called.
@property (readonly, getter=isFooterVisible) BOOL footerVisible;
/// The web view that was created last, by a container or by `createWebView`; nil once that view no longer exists. Use
/// the view itself, and let go of it, on the main thread.
@property (nullable, weak) ZelvoraWebView* activeWebView;

@end

NS_ASSUME_NONNULL_END
