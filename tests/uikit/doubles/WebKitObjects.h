#pragma once

#import <WebKit/WebKit.h>

#include <functional>
#include <vector>

// What a web view is configured with, holds and passes on: the same with an engine and without one. Main thread.

@interface WKNavigationAction (Double)
/// The URL may be nil.
+ (WKNavigationAction*)doubleActionTo:(NSURL*)url;
@end

namespace zelvora::doubles {

/// A web view that hears of what its content controller is given and loses.
class ContentObserver {
public:
    virtual ~ContentObserver() = default;

    virtual void didAddScript(WKUserScript* script) = 0;
    virtual void didAddHandler(NSString* name) = 0;
    virtual void didRemoveHandler(NSString* name) = 0;
};

}

@interface WKUserContentController () {
@public
    NSMutableDictionary* _handlers;
    NSMutableArray* _scripts;
    // Not owned: each takes itself out before it ends.
    std::vector<zelvora::doubles::ContentObserver*> _observers;
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

@interface WKWebView (Delegate)
/// Asks the delegate, which answers now or later; without one every navigation is allowed. The URL may be nil. The
/// process stops where a decision is made twice, and nothing ever happens where none is made.
- (void)doubleAskAbout:(NSURL*)url then:(std::function<void(bool isAllowed)>)decided;
/// These tell the delegate. The code is one of NSURLErrorDomain.
- (void)doubleStartNavigation;
- (void)doubleCommitNavigation;
- (void)doubleFailNavigation:(NSInteger)code;
- (void)doubleLoseProcess;
@end
