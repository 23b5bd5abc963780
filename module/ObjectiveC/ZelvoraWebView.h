#pragma once

#import "ZelvoraExport.h"

#import <UIKit/UIKit.h>
#import <WebKit/WebKit.h>

NS_ASSUME_NONNULL_BEGIN

/// A view that shows the site: it is filled by a web view of the system's, with the bridge in every page and frame. It
/// loads its address when it is created, and only pages can navigate away from that. Links of other schemes than http,
/// https and about are opened by the system. Every change of the page's URL is passed to the SDK's `onPageNavigation`.
/// Main thread.
ZELVORA_EXPORT NS_SWIFT_UI_ACTOR __attribute__((objc_subclassing_restricted))
@interface ZelvoraWebView : UIView<WKNavigationDelegate, WKScriptMessageHandler>

/// The view stays blank if the address is not a URL. `allowsSwipeBack` enables the system's own swipes back and forward
/// through the page's history. The frame is in points, in the superview.
- (instancetype)initWithFrame:(CGRect)frame
                    urlString:(NSString*)urlString
              allowsSwipeBack:(BOOL)allowsSwipeBack NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
/// Not supported: stops the process if it is called all the same.
- (instancetype)initWithFrame:(CGRect)frame NS_UNAVAILABLE;
/// Not supported: stops the process, as a view that an archive contains is made so.
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// The address of the page that is shown or being loaded; nil if there is none.
@property (nullable, nonatomic, readonly, copy) NSString* currentUrl;
@property (nonatomic, readonly) BOOL canGoBack;
/// One step back in the page's history; does nothing if there is none.
- (void)goBack;

/// The screen that the page's "close" dismisses; nil if the host placed the view itself.
@property (nullable, nonatomic, weak) UIViewController* parentViewController;

// What the system calls. A host need not call it.
- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(NS_SWIFT_UI_ACTOR void (^)(WKNavigationActionPolicy))decisionHandler;
- (void)webView:(WKWebView*)webView didStartProvisionalNavigation:(null_unspecified WKNavigation*)navigation;
- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message;

@end

NS_ASSUME_NONNULL_END
