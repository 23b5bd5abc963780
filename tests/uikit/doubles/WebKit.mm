#include "tests/uikit/doubles/WebKit.h"

#include "tests/uikit/doubles/Calls.h"
#include "tests/uikit/doubles/WebKitObjects.h"

#import <dispatch/dispatch.h>

#include <cstddef>
#include <functional>

@implementation WKUserContentController (Double)

- (NSUInteger)doubleHandlerCount
{
    return [_handlers count];
}

@end

@implementation WKWebView {
@public
    std::vector<NSURL*> _history;
    // The number of pages up to the one that is shown.
    std::size_t _place;
    NSURL* _pendingLoad;
    std::vector<std::string> _scripts;
    std::vector<NSURLRequest*> _requests;
    std::vector<std::string> _decisions;
    int _reloads;
}

@synthesize allowsBackForwardNavigationGestures = _allowsBackForwardNavigationGestures;
@synthesize inspectable = _inspectable;

- (instancetype)initWithFrame:(CGRect)frame configuration:(WKWebViewConfiguration*)configuration
{
    zelvora::doubles::requireMainThread("WKWebView init");
    if ((self = [super initWithFrame:frame]))
        _configuration = [configuration copy];
    return self;
}

- (void)setDoubleURL:(NSURL*)url
{
    if (url == _url || [url isEqual:_url])
        return;
    [self willChangeValueForKey:@"URL"];
    _url = url;
    [self didChangeValueForKey:@"URL"];
}

- (void)doubleTellURLAgain
{
    [self willChangeValueForKey:@"URL"];
    [self didChangeValueForKey:@"URL"];
}

- (BOOL)canGoBack
{
    return _place > 1;
}

- (WKNavigation*)goBack
{
    zelvora::doubles::requireMainThread("goBack");
    if (!self.canGoBack)
        return nil;
    NSURL* url = _history[_place - 2];
    [self askAbout:url
        orElse:[] {}
        then:[self, url] {
            --_place;
            [self setDoubleURL:url];
        }];
    return [[WKNavigation alloc] init];
}

- (WKNavigation*)reload
{
    zelvora::doubles::requireMainThread("reload");
    ++_reloads;
    return [[WKNavigation alloc] init];
}

- (WKNavigation*)loadRequest:(NSURLRequest*)request
{
    zelvora::doubles::requireMainThread("loadRequest");
    _requests.push_back(request);
    NSURL* url = request.URL;
    NSURL* previous = _url;
    _pendingLoad = url;
    [self setDoubleURL:url];
    __weak WKWebView* weak = self;
    dispatch_async(dispatch_get_main_queue(), ^{
        WKWebView* view = weak;
        if (view && view->_pendingLoad == url)
            [view startLoad:url insteadOf:previous];
    });
    return [[WKNavigation alloc] init];
}

- (void)startLoad:(NSURL*)url insteadOf:(NSURL*)previous
{
    _pendingLoad = nil;
    [self askAbout:url
        orElse:[self, previous] { [self setDoubleURL:previous]; }
        then:[self, url] { [self commit:url]; }];
}

- (void)commit:(NSURL*)url
{
    [self doubleStartNavigation];
    _history.resize(_place);
    _history.push_back(url);
    ++_place;
    [self setDoubleURL:url];
    [self doubleCommitNavigation];
}

- (void)askAbout:(NSURL*)url orElse:(std::function<void()>)refused then:(std::function<void()>)allowed
{
    [self doubleAskAbout:url
                    then:[self, url, refused, allowed](bool isAllowed) {
                        char const* const text = url ? url.absoluteString.UTF8String : "none";
                        _decisions.push_back((isAllowed ? "allow " : "cancel ") + std::string(text));
                        isAllowed ? allowed() : refused();
                    }];
}

- (void)evaluateJavaScript:(NSString*)script completionHandler:(void (^)(id, NSError*))completion
{
    zelvora::doubles::requireMainThread("evaluateJavaScript");
    _scripts.emplace_back(script.UTF8String);
    if (completion)
        dispatch_async(dispatch_get_main_queue(), ^{ completion(nil, nil); });
}

- (void)doubleNavigateTo:(NSURL*)url
{
    if (NSURL* pending = _pendingLoad)
        [self startLoad:pending insteadOf:nil];
    [self askAbout:url orElse:[] {} then:[self, url] { [self commit:url]; }];
}

- (void)doubleNavigateFrameTo:(NSURL*)url
{
    [self askAbout:url orElse:[] { } then:[] { }];
}

- (BOOL)doublePost:(id)body toHandler:(NSString*)name
{
    return [_configuration.userContentController doublePass:body toHandler:name from:self];
}

- (void)doubleFailLoad:(NSInteger)code
{
    _pendingLoad = nil;
    [self doubleFailNavigation:code];
}

- (void)doubleTerminateProcess
{
    [self doubleLoseProcess];
}

@end

namespace zelvora::doubles {

std::vector<std::string> evaluatedScripts(WKWebView* view)
{
    return view->_scripts;
}

std::vector<NSURLRequest*> loadedRequests(WKWebView* view)
{
    return view->_requests;
}

int reloadCount(WKWebView* view)
{
    return view->_reloads;
}

std::vector<std::string> decisions(WKWebView* view)
{
    return view->_decisions;
}

}
