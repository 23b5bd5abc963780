#pragma once

#import <WebKit/WebKit.h>

#include <string>
#include <vector>

// A web view without an engine: tests act as its pages. Main thread.

@interface WKWebView (Double)
/// The page navigates, after asking the delegate.
- (void)doubleNavigateTo:(NSURL*)url;
/// A frame of the page navigates. The URL may be nil.
- (void)doubleNavigateFrameTo:(NSURL*)url;
/// The page posts an object. False if the name has no handler.
- (BOOL)doublePost:(id)body toHandler:(NSString*)name;
/// A navigation fails before there is a page, with a code of NSURLErrorDomain.
- (void)doubleFailLoad:(NSInteger)code;
/// The process of the page dies.
- (void)doubleTerminateProcess;
/// Tells the observers of the URL although it is the same.
- (void)doubleTellURLAgain;
@end

@interface WKUserContentController (Double)
@property (readonly) NSUInteger doubleHandlerCount;
@end

namespace zelvora::doubles {

/// The scripts that were evaluated in the view, and the requests that it was told to load, in order.
[[nodiscard]] std::vector<std::string> evaluatedScripts(WKWebView* view);
[[nodiscard]] std::vector<NSURLRequest*> loadedRequests(WKWebView* view);
/// How often the view was told to reload.
[[nodiscard]] int reloadCount(WKWebView* view);
/// The answers of the view's delegates: "allow https://...", "cancel tel:1".
[[nodiscard]] std::vector<std::string> decisions(WKWebView* view);

}
