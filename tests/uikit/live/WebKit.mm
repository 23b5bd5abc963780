#import "tests/uikit/live/WebKit.h"

#import "tests/uikit/doubles/Calls.h"
#import "tests/uikit/doubles/Dispatch.h"
#import "tests/uikit/doubles/WebKitObjects.h"
#import "tests/uikit/live/Engine.h"
#import "tests/uikit/live/Objects.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

using zelvora::live::Engine;
using zelvora::live::objectOf;
using zelvora::live::stringOf;
using zelvora::platform::Value;

using Completion = void (^)(id, NSError*);

namespace {

NSURL* urlOf(std::string const& text)
{
    return text.empty() ? nil : [NSURL URLWithString:stringOf(text)];
}

/// Gives an engine what a content controller has, and what it is given and loses from now on.
class Content final : public zelvora::doubles::ContentObserver {
public:
    Content(WKUserContentController* controller, Engine& engine) : m_controller(controller), m_engine(engine)
    {
        for (WKUserScript* script in m_controller->_scripts)
            didAddScript(script);
        for (NSString* name in m_controller->_handlers)
            didAddHandler(name);
        m_controller->_observers.push_back(this);
    }
    Content(Content const&) = delete;
    Content& operator=(Content const&) = delete;
    ~Content() override { std::erase(m_controller->_observers, this); }

    // zelvora::doubles::ContentObserver
    void didAddScript(WKUserScript* script) override
    {
        m_engine.addScript(script.source.UTF8String, script.injectionTime == WKUserScriptInjectionTimeAtDocumentStart,
            script.forMainFrameOnly);
    }
    void didAddHandler(NSString* name) override { m_engine.addHandler(name.UTF8String); }
    void didRemoveHandler(NSString* name) override { m_engine.removeHandler(name.UTF8String); }

private:
    WKUserContentController* m_controller;
    Engine& m_engine;
};

}

@implementation WKWebView {
@public
    std::unique_ptr<Engine> _engine;
    std::unique_ptr<Content> _content;
    int _deaths;
}

@synthesize allowsBackForwardNavigationGestures = _allowsBackForwardNavigationGestures;
@synthesize inspectable = _inspectable;

- (instancetype)initWithFrame:(CGRect)frame configuration:(WKWebViewConfiguration*)configuration
{
    zelvora::doubles::requireMainThread("WKWebView init");
    if ((self = [super initWithFrame:frame])) {
        _configuration = [configuration copy];
        _engine = zelvora::live::makeEngine([self callbacks]);
        _content = std::make_unique<Content>(_configuration.userContentController, *_engine);
    }
    return self;
}

- (void)dealloc
{
    _content.reset();
}

- (Engine::Callbacks)callbacks
{
    __weak WKWebView* weak = self;
    // What the engine says is said to the view that there still is.
    auto const tell = [weak](auto const& call) {
        @autoreleasepool {
            if (WKWebView* view = weak)
                call(view);
        }
    };
    return {
        .didReceive =
            [tell](std::string const& handler, Value const& body) {
                tell([&](WKWebView* view) {
                    [view->_configuration.userContentController doublePass:objectOf(body)
                                                                 toHandler:stringOf(handler)
                                                                      from:view];
                });
            },
        .decideNavigation =
            [tell](std::string const& url, std::function<void(bool)> const& decide) {
                tell([&](WKWebView* view) { [view doubleAskAbout:urlOf(url) then:decide]; });
            },
        .didStart = [tell] { tell([](WKWebView* view) { [view doubleStartNavigation]; }); },
        .didCommit = [tell] { tell([](WKWebView* view) { [view doubleCommitNavigation]; }); },
        .didFail =
            [tell](bool isCancelled) {
                auto const code = isCancelled ? NSURLErrorCancelled : NSURLErrorCannotConnectToHost;
                tell([&](WKWebView* view) { [view doubleFailNavigation:code]; });
            },
        .urlDidChange = [tell](std::string const& url) { tell([&](WKWebView* view) { [view changeURL:urlOf(url)]; }); },
        .processDidDie =
            [tell] {
                tell([](WKWebView* view) {
                    ++view->_deaths;
                    [view doubleLoseProcess];
                });
            },
    };
}

- (void)changeURL:(NSURL*)url
{
    [self willChangeValueForKey:@"URL"];
    _url = url;
    [self didChangeValueForKey:@"URL"];
}

- (BOOL)canGoBack
{
    return _engine->canGoBack();
}

- (WKNavigation*)goBack
{
    zelvora::doubles::requireMainThread("goBack");
    if (!self.canGoBack)
        return nil;
    _engine->goBack();
    return [[WKNavigation alloc] init];
}

- (WKNavigation*)reload
{
    zelvora::doubles::requireMainThread("reload");
    _engine->reload();
    return [[WKNavigation alloc] init];
}

- (WKNavigation*)loadRequest:(NSURLRequest*)request
{
    zelvora::doubles::requireMainThread("loadRequest");
    std::map<std::string, std::string> headers;
    NSDictionary* fields = request.allHTTPHeaderFields;
    for (NSString* name in fields)
        headers[name.UTF8String] = static_cast<NSString*>([fields objectForKey:name]).UTF8String;
    _engine->load(request.URL.absoluteString.UTF8String, headers);
    return [[WKNavigation alloc] init];
}

- (void)evaluateJavaScript:(NSString*)script completionHandler:(void (^)(id, NSError*))completion
{
    zelvora::doubles::requireMainThread("evaluateJavaScript");
    Completion const done = [completion copy];
    _engine->evaluate(script.UTF8String, [done](auto const& result, std::string const& error) {
        @autoreleasepool {
            if (!done)
                return;
            done(result ? objectOf(*result) : nil,
                error.empty() ? nil : [NSError errorWithDomain:@"WKErrorDomain" code:4 userInfo:nil]);
        }
    });
}

@end

namespace zelvora::live {

bool runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([&done] {
        while (iterate()) { }
        @autoreleasepool {
            return done();
        }
    });
}

id evaluate(WKWebView* view, NSString* script)
{
    struct Answer {
        id value = nil;
        bool isThere = false;
    };
    auto const answer = std::make_shared<Answer>();
    [view evaluateJavaScript:script completionHandler:^(id value, NSError*) { *answer = { value, true }; }];
    return runUntil([&] { return answer->isThere; }) ? answer->value : nil;
}

void killProcess(WKWebView* view)
{
    int const deaths = view->_deaths;
    view->_engine->killProcess();
    if (!runUntil([&] { return view->_deaths > deaths; }))
        [NSException raise:NSInternalInconsistencyException format:@"the process lives"];
}

bool isLoading(WKWebView* view)
{
    return view->_engine->isLoading();
}

}
