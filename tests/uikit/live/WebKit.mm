#import "tests/uikit/live/WebKit.h"

#import "tests/uikit/doubles/Dispatch.h"
#import "tests/uikit/live/Engine.h"

#include <memory>
#include <utility>

using zelvora::live::Engine;

using Completion = void (^)(id, NSError*);

namespace {

std::function<std::string(std::string const&)>& pages()
{
    static std::function<std::string(std::string const&)> s_pages;
    return s_pages;
}

NSString* stringOf(std::string const& text)
{
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

id objectOf(std::string const& json)
{
    // The reader takes no bare values.
    NSData* data = [stringOf("[" + json + "]") dataUsingEncoding:NSUTF8StringEncoding];
    return [[NSJSONSerialization JSONObjectWithData:data options:0 error:nil] lastObject];
}

}

@implementation NSObject (ZelvoraKVO)

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context
{
    [self removeObserver:observer forKeyPath:keyPath];
}

@end

@interface WKScriptMessage () {
@public
    id _body;
    NSString* _name;
}
@end

@implementation WKScriptMessage

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
    return nil;
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

@interface WKUserContentController () {
@public
    NSMutableDictionary* _handlers;
    NSMutableArray* _scripts;
    // Reset by the web view.
    Engine* _engine;
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
    [_scripts addObject:script];
}

- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)handler name:(NSString*)name
{
    [_handlers setObject:handler forKey:name];
}

- (void)removeScriptMessageHandlerForName:(NSString*)name
{
    [_handlers removeObjectForKey:name];
    if (_engine)
        _engine->removeHandler(name.UTF8String);
}

- (void)attachTo:(Engine*)engine
{
    _engine = engine;
    if (!engine)
        return;
    for (WKUserScript* script in _scripts) {
        engine->addScript(script.source.UTF8String, script.injectionTime == WKUserScriptInjectionTimeAtDocumentStart,
            script.forMainFrameOnly);
    }
    for (NSString* name in _handlers)
        engine->addHandler(name.UTF8String);
}

- (void)receive:(std::string const&)json for:(NSString*)name
{
    WKScriptMessage* message = [[WKScriptMessage alloc] init];
    message->_name = name;
    message->_body = objectOf(json);
    [[_handlers objectForKey:name] userContentController:self didReceiveScriptMessage:message];
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

@interface WKNavigationAction () {
@public
    NSURLRequest* _request;
}
@end

@implementation WKNavigationAction

- (NSURLRequest*)request
{
    return _request;
}

@end

@implementation WKWebView {
    NSURL* _url;
    WKWebViewConfiguration* _configuration;
    __weak id<WKNavigationDelegate> _delegate;
    std::unique_ptr<Engine> _engine;
}

@synthesize allowsBackForwardNavigationGestures = _allowsBackForwardNavigationGestures;
@synthesize inspectable = _inspectable;

- (instancetype)initWithFrame:(CGRect)frame configuration:(WKWebViewConfiguration*)configuration
{
    if ((self = [super initWithFrame:frame])) {
        _configuration = [configuration copy];
        _engine = zelvora::live::makeEngine([self callbacks]);
        [_configuration.userContentController attachTo:_engine.get()];
    }
    return self;
}

- (void)dealloc
{
    [_configuration.userContentController attachTo:nullptr];
}

- (Engine::Callbacks)callbacks
{
    __weak WKWebView* weak = self;
    return {
        .didReceive =
            [weak](std::string const& handler, std::string const& json) {
                @autoreleasepool {
                    WKWebView* view = weak;
                    [view.configuration.userContentController receive:json for:stringOf(handler)];
                }
            },
        .mayNavigate =
            [weak](std::string const& url) {
                @autoreleasepool {
                    WKWebView* view = weak;
                    return view && [view mayNavigateTo:[NSURL URLWithString:stringOf(url)]];
                }
            },
        .didStart =
            [weak] {
                @autoreleasepool {
                    WKWebView* view = weak;
                    [view.navigationDelegate webView:view didStartProvisionalNavigation:nil];
                }
            },
        .urlDidChange =
            [weak](std::string const& url) {
                @autoreleasepool {
                    WKWebView* view = weak;
                    [view changeURL:[NSURL URLWithString:stringOf(url)]];
                }
            },
    };
}

/// The engine asks at once, and takes the answer at once.
- (BOOL)mayNavigateTo:(NSURL*)url
{
    WKNavigationAction* action = [[WKNavigationAction alloc] init];
    action->_request = [NSURLRequest requestWithURL:url];
    auto const answer = std::make_shared<BOOL>(YES);
    [_delegate webView:self
        decidePolicyForNavigationAction:action
                        decisionHandler:^(
                            WKNavigationActionPolicy policy) { *answer = policy == WKNavigationActionPolicyAllow; }];
    return *answer;
}

- (void)changeURL:(NSURL*)url
{
    [self willChangeValueForKey:@"URL"];
    _url = url;
    [self didChangeValueForKey:@"URL"];
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

- (BOOL)canGoBack
{
    return NO;
}

- (WKNavigation*)goBack
{
    return nil;
}

- (WKNavigation*)reload
{
    return nil;
}

- (WKNavigation*)loadRequest:(NSURLRequest*)request
{
    std::string const url = request.URL.absoluteString.UTF8String;
    _engine->load(pages()(url), url);
    return [[WKNavigation alloc] init];
}

- (void)evaluateJavaScript:(NSString*)script completionHandler:(void (^)(id, NSError*))completion
{
    Completion const done = [completion copy];
    _engine->evaluate(script.UTF8String, [done](std::string const& json, std::string const& error) {
        @autoreleasepool {
            if (!done)
                return;
            done(json.empty() ? nil : objectOf(json),
                error.empty() ? nil : [NSError errorWithDomain:@"WKErrorDomain" code:4 userInfo:nil]);
        }
    });
}

@end

namespace zelvora::live {

void setPages(std::function<std::string(std::string const& url)> made)
{
    pages() = std::move(made);
}

bool runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([&done] {
        while (iterate()) { }
        @autoreleasepool {
            return done();
        }
    });
}

}
