#pragma once

#import "ZelvoraExport.h"

#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

/// The full-screen container: the host's header, the site and the host's footer, from top to bottom. The SDK's `start`
/// creates one; a host may also present or push one itself. Header and footer come from the SDK's view providers when
/// the view loads. If the SDK allows swiping back, a swipe from the left edge goes back in the page's history, or
/// leaves the screen if there is none. Queued events are uploaded whenever the container disappears. Main thread.
ZELVORA_EXPORT NS_SWIFT_UI_ACTOR __attribute__((objc_subclassing_restricted))
@interface ZelvoraIOSViewController : UIViewController<UIGestureRecognizerDelegate>

/// The screen stays blank if the address is not a URL.
- (instancetype)initWithUrlString:(NSString*)urlString NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
/// Not supported: stops the process if it is called all the same.
- (instancetype)initWithNibName:(nullable NSString*)nibName bundle:(nullable NSBundle*)bundle NS_UNAVAILABLE;
/// Not supported: stops the process, as a controller that an archive contains is made so.
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

// What the system calls. A host need not call it.
- (void)viewDidLoad;
- (void)viewWillDisappear:(BOOL)animated;
- (BOOL)gestureRecognizerShouldBegin:(UIGestureRecognizer*)gestureRecognizer;
- (BOOL)gestureRecognizer:(UIGestureRecognizer*)gestureRecognizer
    shouldRecognizeSimultaneouslyWithGestureRecognizer:(UIGestureRecognizer*)otherGestureRecognizer;

@end

NS_ASSUME_NONNULL_END
