// The shared session: it asks the test what the network does, and completes on its delegate queue.
#import "tests/uikit/doubles/URLSession.h"

#import <dispatch/dispatch.h>

#include <algorithm>
#include <cctype>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>

using zelvora::doubles::HTTPAnswer;
using zelvora::doubles::LoaderError;
using zelvora::doubles::Outcome;
using zelvora::doubles::SentRequest;

using DataTaskHandler = void (^)(NSData*, NSURLResponse*, NSError*);

namespace {

struct State {
    std::mutex mutex;
    std::function<Outcome(SentRequest const&)> server;
    std::vector<SentRequest> requests;
    std::deque<NSURLSessionDataTask*> waiting;
};

State& state()
{
    static auto* const s_state = new State;
    return *s_state;
}

std::string textOf(NSString* text)
{
    return text ? std::string(text.UTF8String) : std::string();
}

SentRequest sent(NSURLRequest* request)
{
    SentRequest sent { textOf(request.URL.absoluteString), textOf(request.HTTPMethod), {}, {},
        request.timeoutInterval };
    NSDictionary* fields = [request allHTTPHeaderFields];
    for (NSString* field in fields) {
        auto name = textOf(field);
        std::ranges::transform(name, name.begin(), [](unsigned char byte) { return std::tolower(byte); });
        sent.headers[name] = textOf(fields[field]);
    }
    if (NSData* body = request.HTTPBody)
        sent.body.assign(static_cast<char const*>(body.bytes), body.length);
    return sent;
}

}

@implementation NSURLSessionTask
- (void)resume
{
}
@end

@implementation NSURLSessionDataTask {
    NSURLRequest* _request;
    DataTaskHandler _handler;
}

- (instancetype)initWithRequest:(NSURLRequest*)request handler:(DataTaskHandler)handler
{
    if ((self = [super init])) {
        _request = [request copy];
        _handler = [handler copy];
    }
    return self;
}

- (void)resume
{
    auto& network = state();
    auto const request = sent(_request);
    std::function<Outcome(SentRequest const&)> server;
    {
        std::scoped_lock const lock(network.mutex);
        network.requests.push_back(request);
        network.waiting.push_back(self);
        server = network.server;
    }
    auto const outcome = server ? server(request) : Outcome {};
    if (!std::holds_alternative<zelvora::doubles::NoAnswer>(outcome)) {
        [self end:outcome];
        return;
    }
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(request.timeout * NSEC_PER_SEC)),
        dispatch_get_global_queue(0, 0), (__bridge_retained void*)self, [](void* context) {
            @autoreleasepool {
                auto* const task = (__bridge_transfer NSURLSessionDataTask*)context;
                [task end:LoaderError { NSURLErrorTimedOut }];
            }
        });
}

/// At the first call only.
- (void)end:(Outcome)outcome
{
    auto& network = state();
    {
        std::scoped_lock const lock(network.mutex);
        if (std::erase(network.waiting, self) == 0)
            return;
    }
    [[NSURLSession sharedSession].delegateQueue addOperationWithBlock:^{ [self complete:outcome]; }];
}

- (void)complete:(Outcome const&)outcome
{
    DataTaskHandler const handler = std::exchange(_handler, nil);
    if (auto const* const error = std::get_if<LoaderError>(&outcome)) {
        handler(nil, nil, [NSError errorWithDomain:NSURLErrorDomain code:error->code userInfo:nil]);
        return;
    }
    auto const& answer = std::get<HTTPAnswer>(outcome);
    NSHTTPURLResponse* response = [[NSHTTPURLResponse alloc] initWithURL:_request.URL
                                                              statusCode:answer.status
                                                             HTTPVersion:@"HTTP/1.1"
                                                            headerFields:@{}];
    handler([NSData dataWithBytes:answer.body.data() length:answer.body.size()], response, nil);
}

@end

@implementation NSURLSession {
    NSOperationQueue* _delegateQueue;
}

+ (NSURLSession*)sharedSession
{
    static NSURLSession* s_session = [[NSURLSession alloc] init];
    return s_session;
}

- (instancetype)init
{
    if ((self = [super init])) {
        _delegateQueue = [[NSOperationQueue alloc] init];
        _delegateQueue.maxConcurrentOperationCount = 1;
    }
    return self;
}

- (NSOperationQueue*)delegateQueue
{
    return _delegateQueue;
}

- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request completionHandler:(DataTaskHandler)handler
{
    return [[NSURLSessionDataTask alloc] initWithRequest:request handler:handler];
}

@end

namespace zelvora::doubles {

Network& network()
{
    static Network s_network;
    return s_network;
}

void Network::setServer(std::function<Outcome(SentRequest const&)> server)
{
    std::scoped_lock const lock(state().mutex);
    state().server = std::move(server);
}

std::vector<SentRequest> Network::requests() const
{
    std::scoped_lock const lock(state().mutex);
    return state().requests;
}

std::size_t Network::waiting() const
{
    std::scoped_lock const lock(state().mutex);
    return state().waiting.size();
}

bool Network::answer(Outcome const& outcome)
{
    NSURLSessionDataTask* task = nil;
    {
        std::scoped_lock const lock(state().mutex);
        if (state().waiting.empty())
            return false;
        task = state().waiting.front();
    }
    [task end:outcome];
    return true;
}

}
