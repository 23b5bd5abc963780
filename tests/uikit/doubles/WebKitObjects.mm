#include "tests/uikit/doubles/WebKitObjects.h"

#include "tests/uikit/doubles/Calls.h"

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

@implementation WKUserContentController

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
    for (auto* observer : _observers)
        observer->didAddScript(script);
}

- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)handler name:(NSString*)name
{
    zelvora::doubles::requireMainThread("addScriptMessageHandler");
    if ([_handlers objectForKey:name])
        [NSException raise:NSInvalidArgumentException format:@"A handler named '%@' exists already.", name];
    [_handlers setObject:handler forKey:name];
    for (auto* observer : _observers)
        observer->didAddHandler(name);
}

- (void)removeScriptMessageHandlerForName:(NSString*)name
{
    zelvora::doubles::requireMainThread("removeScriptMessageHandler");
    [_handlers removeObjectForKey:name];
    for (auto* observer : _observers)
        observer->didRemoveHandler(name);
}

- (BOOL)doublePass:(id)body toHandler:(NSString*)name from:(WKWebView*)webView
{
    id<WKScriptMessageHandler> handler = [_handlers objectForKey:name];
    WKScriptMessage* message = [[WKScriptMessage alloc] init];
    message->_body = body;
    message->_name = name;
    message->_webView = webView;
    [handler userContentController:self didReceiveScriptMessage:message];
    return handler != nil;
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

@implementation WKNavigationAction (Double)

+ (WKNavigationAction*)doubleActionTo:(NSURL*)url
{
    WKNavigationAction* action = [[WKNavigationAction alloc] init];
    action->_request = url ? [NSURLRequest requestWithURL:url] : [[NSURLRequest alloc] init];
    return action;
}

@end

@implementation WKWebView (Delegate)

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

- (void)doubleAskAbout:(NSURL*)url then:(std::function<void(bool)>)decided
{
    if (![_delegate respondsToSelector:@selector(webView:decidePolicyForNavigationAction:decisionHandler:)]) {
        decided(true);
        return;
    }
    auto const count = std::make_shared<int>(0);
    [_delegate webView:self
        decidePolicyForNavigationAction:[WKNavigationAction doubleActionTo:url]
                        decisionHandler:^(WKNavigationActionPolicy policy) {
                            zelvora::doubles::requireMainThread("decisionHandler");
                            if (++*count > 1)
                                [NSException raise:NSInternalInconsistencyException format:@"decided twice"];
                            decided(policy == WKNavigationActionPolicyAllow);
                        }];
}

- (void)doubleStartNavigation
{
    if ([_delegate respondsToSelector:@selector(webView:didStartProvisionalNavigation:)])
        [_delegate webView:self didStartProvisionalNavigation:nil];
}

- (void)doubleCommitNavigation
{
    if ([_delegate respondsToSelector:@selector(webView:didCommitNavigation:)])
        [_delegate webView:self didCommitNavigation:nil];
}

- (void)doubleFailNavigation:(NSInteger)code
{
    NSError* error = [NSError errorWithDomain:NSURLErrorDomain code:code userInfo:nil];
    if ([_delegate respondsToSelector:@selector(webView:didFailProvisionalNavigation:withError:)])
        [_delegate webView:self didFailProvisionalNavigation:nil withError:error];
}

- (void)doubleLoseProcess
{
    if ([_delegate respondsToSelector:@selector(webViewWebContentProcessDidTerminate:)])
        [_delegate webViewWebContentProcessDidTerminate:self];
}

@end
