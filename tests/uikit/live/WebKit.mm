#import "tests/uikit/live/WebKit.h"

#import "tests/uikit/doubles/Dispatch.h"
#import "tests/uikit/doubles/WebKitObjects.h"
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

@interface WKUserContentController (Engine)
/// Gives an engine the scripts and the names of the handlers, and takes those that are removed later from it. It must
/// live until `detach`.
- (void)attachTo:(Engine*)engine;
- (void)detach;
@end

@implementation WKUserContentController (Engine)

- (void)attachTo:(Engine*)engine
{
    for (WKUserScript* script in _scripts) {
        engine->addScript(script.source.UTF8String, script.injectionTime == WKUserScriptInjectionTimeAtDocumentStart,
            script.forMainFrameOnly);
    }
    for (NSString* name in _handlers)
        engine->addHandler(name.UTF8String);
    _didRemoveHandler = [engine](NSString* name) { engine->removeHandler(name.UTF8String); };
}

- (void)detach
{
    _didRemoveHandler = nullptr;
}

@end

@implementation WKWebView {
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
    [_configuration.userContentController detach];
}

- (Engine::Callbacks)callbacks
{
    __weak WKWebView* weak = self;
    return {
        .didReceive =
            [weak](std::string const& handler, std::string const& json) {
                @autoreleasepool {
                    WKWebView* view = weak;
                    [view.configuration.userContentController doublePass:objectOf(json)
                                                               toHandler:stringOf(handler)
                                                                    from:view];
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
    auto const answer = std::make_shared<BOOL>(YES);
    [_delegate webView:self
        decidePolicyForNavigationAction:[WKNavigationAction doubleActionTo:url]
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
