#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>

#include <memory>

/// Adopted by a native class that shows a view of the SDK's. The SDK makes the native view with this initializer,
/// because those inherited from the superclass stop the process.
@protocol ZLVView
- (instancetype)initForOwnerWithFrame:(CGRect)frame;
@end

/// Adopted by a native class that shows a controller of the SDK's; see `ZLVView`. The class also calls `viewDidLoad`
/// and `viewWillDisappear` below from its methods of these names, after those of its superclass.
@protocol ZLVViewController
- (instancetype)initForOwner;
@end

// What the surface that hosts see is made of. Main thread, unless stated otherwise. A nil gives a null pointer.
namespace zelvora::uikit {

/// Makes the platform and installs it, at the first call. Any thread.
void install();

/// The view that the native one stands for. For a view of the host's it is a new one, which keeps the native view.
[[nodiscard]] std::shared_ptr<platform::UIView> wrap(UIView* native);
[[nodiscard]] std::shared_ptr<platform::WKWebView> wrap(WKWebView* native);
/// The controller that the native one stands for. For one of the host's it is kept by the native controller and does
/// not keep it. Any thread.
[[nodiscard]] std::shared_ptr<platform::UIViewController> wrap(UIViewController* native);

/// As `wrap`, and keeps the native controller while the pointer or a copy of it lives. It is let go of on the main
/// thread, on whichever thread the last of them ends.
[[nodiscard]] std::shared_ptr<platform::UIViewController> retain(UIViewController* native);

/// The object of the SDK's that the native one stands for, or nullptr if it stands for none, or not any more. Any
/// thread.
[[nodiscard]] std::shared_ptr<platform::UIView> ownerOf(UIView* native);
[[nodiscard]] std::shared_ptr<platform::UIViewController> ownerOf(UIViewController* native);

/// The next view or controller that the SDK makes for a class of this native object's stands for this one, which the
/// host is making itself:
///
///     self = [super initWithFrame:frame];
///     uikit::adoptNext(self);
///     auto const owner = std::make_shared<ZelvoraWebView>(...);
///     uikit::nativeOf(*owner);
void adoptNext(UIView* native);
void adoptNext(UIViewController* native);

/// The native object of a view or controller, to give it to the host, which keeps it; it keeps the view or controller
/// from now on. Nil once the native object is gone. Any thread.
UIView* nativeOf(platform::UIView& view);
UIViewController* nativeOf(platform::UIViewController& controller);

/// What happens to a native controller that a controller of the SDK's is shown by. Does nothing if none is any more.
void viewDidLoad(UIViewController* native);
void viewWillDisappear(UIViewController* native, bool animated);

}
