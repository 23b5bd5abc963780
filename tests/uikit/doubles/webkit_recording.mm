// Recording WebKit double.
#import "tests/uikit/doubles/Calls.h"
#import "tests/uikit/doubles/doubles.h"
using zelvora::doubles::note;

@implementation WKScriptMessage {
@public
    id _b;
    NSString* _n;
}
- (id)body
{
    return _b;
}
- (NSString*)name
{
    return _n;
}
- (WKWebView*)webView
{
    return nil;
}
@end
@implementation WKUserScript
@synthesize source = _source, injectionTime = _injectionTime, forMainFrameOnly = _forMainFrameOnly;
- (instancetype)initWithSource:(NSString*)s injectionTime:(WKUserScriptInjectionTime)t forMainFrameOnly:(BOOL)m
{
    if ((self = [super init])) {
        _source = [s copy];
        _injectionTime = t;
        _forMainFrameOnly = m;
    }
    return self;
}
- (id)copyWithZone:(NSZone*)z
{
    return self;
}
@end
@implementation WKUserContentController {
    NSMutableDictionary* _h;
    NSMutableArray* _s;
}
- (instancetype)init
{
    if ((self = [super init])) {
        _h = [NSMutableDictionary new];
        _s = [NSMutableArray new];
    }
    return self;
}
- (NSArray*)userScripts
{
    return [_s copy];
}
- (void)addUserScript:(WKUserScript*)s
{
    [_s addObject:s];
}
- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)h name:(NSString*)n
{
    if (_h[n])
        [NSException raise:NSInvalidArgumentException
                    format:@"Attempt to add script message handler with name '%@' when one already exists.",
            n]; // as documented by WebKit
    _h[n] = h;
}
- (void)removeScriptMessageHandlerForName:(NSString*)n
{
    note([NSString stringWithFormat:@"removeHandler %@", n]);
    [_h removeObjectForKey:n];
}
- (void)double_post:(id)body name:(NSString*)n
{
    WKScriptMessage* m = [WKScriptMessage new];
    m->_b = body;
    m->_n = n;
    [_h[n] userContentController:self didReceiveScriptMessage:m];
}
- (NSUInteger)double_handlerCount
{
    return [_h count];
}
@end
@implementation WKWebViewConfiguration
@synthesize userContentController = _userContentController;
- (instancetype)init
{
    if ((self = [super init]))
        _userContentController = [WKUserContentController new];
    return self;
}
- (id)copyWithZone:(NSZone*)z
{
    WKWebViewConfiguration* c = [[WKWebViewConfiguration alloc] init];
    c.userContentController = self.userContentController;
    return c;
}
@end
@implementation WKNavigation
@end
@implementation WKNavigationAction {
@public
    NSURLRequest* _r;
}
- (NSURLRequest*)request
{
    return _r;
}
@end
@implementation WKWebView {
    NSURL* _url;
    WKWebViewConfiguration* _c;
    __weak id<WKNavigationDelegate> _d;
}
@synthesize allowsBackForwardNavigationGestures = _gestures, inspectable = _inspectable;
- (NSURL*)URL
{
    return _url;
}
- (BOOL)canGoBack
{
    return NO;
}
- (WKNavigation*)goBack
{
    note(@"goBack");
    return nil;
}
- (WKNavigation*)reload
{
    note(@"reload");
    return nil;
}
- (void)double_setURL:(NSString*)u
{
    [self willChangeValueForKey:@"URL"];
    _url = [NSURL URLWithString:u];
    [self didChangeValueForKey:@"URL"];
}
- (instancetype)initWithFrame:(CGRect)f configuration:(WKWebViewConfiguration*)c
{
    if ((self = [super initWithFrame:f]))
        _c = [c copy];
    return self;
}
- (WKWebViewConfiguration*)configuration
{
    return [_c copy];
}
- (id<WKNavigationDelegate>)navigationDelegate
{
    return _d;
}
- (void)setNavigationDelegate:(id<WKNavigationDelegate>)d
{
    _d = d;
}
- (WKNavigation*)loadRequest:(NSURLRequest*)r
{
    note([NSString stringWithFormat:@"load %@", r.URL.absoluteString]);
    return [WKNavigation new];
}
- (void)evaluateJavaScript:(NSString*)js completionHandler:(void (^)(id, NSError*))c
{
    note([NSString stringWithFormat:@"js %@", js]);
    if (c)
        c(nil, nil);
}
- (WKNavigationActionPolicy)double_navigateTo:(NSString*)u
{
    WKNavigationAction* a = [WKNavigationAction new];
    a->_r = [NSURLRequest requestWithURL:[NSURL URLWithString:u]];
    __block int calls = 0;
    __block WKNavigationActionPolicy r = WKNavigationActionPolicyCancel;
    [_d webView:self
        decidePolicyForNavigationAction:a
                        decisionHandler:^(WKNavigationActionPolicy p) {
                            r = p;
                            ++calls;
                        }];
    if (calls != 1)
        [NSException raise:NSInternalInconsistencyException
                    format:@"Completion handler passed to decidePolicyForNavigationAction was called %d times", calls];
    return r;
}
@end
