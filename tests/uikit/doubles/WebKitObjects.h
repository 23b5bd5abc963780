#pragma once

#import <WebKit/WebKit.h>

#include <functional>

// What a web view is configured with, holds and passes on: the same with an engine and without one. Main thread.

@interface WKNavigationAction (Double)
/// The URL may be nil.
+ (WKNavigationAction*)doubleActionTo:(NSURL*)url;
@end

@interface WKUserContentController () {
@public
    NSMutableDictionary* _handlers;
    NSMutableArray* _scripts;
    // Called with the name of each handler that is removed. May be empty.
    std::function<void(NSString*)> _didRemoveHandler;
}
/// A page of the view posts an object. False if the name has no handler.
- (BOOL)doublePass:(id)body toHandler:(NSString*)name from:(WKWebView*)webView;
@end

@interface WKWebView () {
@public
    NSURL* _url;
    WKWebViewConfiguration* _configuration;
    __weak id<WKNavigationDelegate> _delegate;
}
@end
