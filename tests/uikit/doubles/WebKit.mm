#include "tests/uikit/doubles/WebKit.h"

#include "tests/uikit/doubles/Calls.h"

#import <dispatch/dispatch.h>

#include <cstddef>
#include <functional>
#include <memory>

// GNUstep's has no context.
@implementation NSObject (ZelvoraKVO)

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context
{
    [self removeObserver:observer forKeyPath:keyPath];
}

@end

@implementation WKScriptMessage {
@public
    id _body;
    NSString* _name;
    __weak WKWebView* _webView;
}

- (id)body
{
    return _body;
}

- (NSString*)name
{
    return _name;
}

- (WKWebView*)webView
{
    return _webView;
}

@end

@implementation WKUserScript

@synthesize source = _source;
@synthesize injectionTime = _injectionTime;
@synthesize forMainFrameOnly = _forMainFrameOnly;

- (instancetype)initWithSource:(NSString*)source
                 injectionTime:(WKUserScriptInjectionTime)time
              forMainFrameOnly:(BOOL)isForMainFrameOnly
{
    if ((self = [super init])) {
        _source = [source copy];
        _injectionTime = time;
        _forMainFrameOnly = isForMainFrameOnly;
    }
    return self;
}

- (id)copyWithZone:(NSZone*)zone
{
    return self;
}

@end

@implementation WKUserContentController {
@public
    NSMutableDictionary* _handlers;
    NSMutableArray* _scripts;
}

- (instancetype)init
{
    if ((self = [super init])) {
        _handlers = [[NSMutableDictionary alloc] init];
        _scripts = [[NSMutableArray alloc] init];
    }
    return self;
}

- (NSArray*)userScripts
{
    return [_scripts copy];
}

- (void)addUserScript:(WKUserScript*)script
{
    zelvora::doubles::requireMainThread("addUserScript");
    [_scripts addObject:script];
}

- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)handler name:(NSString*)name
{
    zelvora::doubles::requireMainThread("addScriptMessageHandler");
    if ([_handlers objectForKey:name])
        [NSException raise:NSInvalidArgumentException format:@"A handler named '%@' exists already.", name];
    [_handlers setObject:handler forKey:name];
}

- (void)removeScriptMessageHandlerForName:(NSString*)name
{
    zelvora::doubles::requireMainThread("removeScriptMessageHandler");
    [_handlers removeObjectForKey:name];
}

- (NSUInteger)doubleHandlerCount
{
    return [_handlers count];
}

@end

@implementation WKWebViewConfiguration

@synthesize userContentController = _userContentController;

- (instancetype)init
{
    if ((self = [super init]))
        _userContentController = [[WKUserContentController alloc] init];
    return self;
}

- (id)copyWithZone:(NSZone*)zone
{
    WKWebViewConfiguration* copy = [[WKWebViewConfiguration alloc] init];
    copy.userContentController = self.userContentController;
    return copy;
}

@end

@implementation WKNavigation
@end

@implementation WKNavigationAction {
@public
    NSURLRequest* _request;
}

- (NSURLRequest*)request
{
    return _request;
}

@end

@implementation WKWebView {
@public
    NSURL* _url;
    WKWebViewConfiguration* _configuration;
    __weak id<WKNavigationDelegate> _delegate;
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

- (WKWebViewConfiguration*)configuration
{
    return [_configuration copy];
}

- (id<WKNavigationDelegate>)navigationDelegate
{
    return _delegate;
}

- (void)setNavigationDelegate:(id<WKNavigationDelegate>)delegate
{
    _delegate = delegate;
}

- (NSURL*)URL
{
    return _url;
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
    if ([_delegate respondsToSelector:@selector(webView:didStartProvisionalNavigation:)])
        [_delegate webView:self didStartProvisionalNavigation:nil];
    _history.resize(_place);
    _history.push_back(url);
    ++_place;
    [self setDoubleURL:url];
}

/// The engine stops the process where a decision is made twice, and waits forever where none is made.
- (void)askAbout:(NSURL*)url orElse:(std::function<void()>)refused then:(std::function<void()>)allowed
{
    if (![_delegate respondsToSelector:@selector(webView:decidePolicyForNavigationAction:decisionHandler:)]) {
        allowed();
        return;
    }
    WKNavigationAction* action = [[WKNavigationAction alloc] init];
    action->_request = url ? [NSURLRequest requestWithURL:url] : [[NSURLRequest alloc] init];
    auto const count = std::make_shared<int>(0);
    [_delegate webView:self
        decidePolicyForNavigationAction:action
                        decisionHandler:^(WKNavigationActionPolicy policy) {
                            zelvora::doubles::requireMainThread("decisionHandler");
                            if (++*count > 1)
                                [NSException raise:NSInternalInconsistencyException format:@"decided twice"];
                            bool const isAllowed = policy == WKNavigationActionPolicyAllow;
                            char const* const text = url ? url.absoluteString.UTF8String : "none";
                            self->_decisions.push_back((isAllowed ? "allow " : "cancel ") + std::string(text));
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
    WKUserContentController* content = _configuration.userContentController;
    id<WKScriptMessageHandler> handler = [content->_handlers objectForKey:name];
    WKScriptMessage* message = [[WKScriptMessage alloc] init];
    message->_body = body;
    message->_name = name;
    message->_webView = self;
    [handler userContentController:content didReceiveScriptMessage:message];
    return handler != nil;
}

- (void)doubleTerminateProcess
{
    if ([_delegate respondsToSelector:@selector(webViewWebContentProcessDidTerminate:)])
        [_delegate webViewWebContentProcessDidTerminate:self];
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
