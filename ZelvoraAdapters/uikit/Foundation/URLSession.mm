#include "ZelvoraAdapters/uikit/Foundation/URLSession.h"

#include "ZelvoraAdapters/uikit/Foundation/Errors.h"
#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace zelvora::uikit {

namespace {

platform::Error failure(NSInteger code)
{
    return errorOf([NSError errorWithDomain:NSURLErrorDomain code:code userInfo:nil]);
}

std::expected<platform::URLSession::Answer, platform::Error> resultOf(
    NSData* data, NSURLResponse* response, NSError* error)
{
    if (error)
        return std::unexpected(errorOf(error));
    // The loader answers for files and data in an address, too.
    if (![response isKindOfClass:[NSHTTPURLResponse class]])
        return std::unexpected(failure(NSURLErrorUnsupportedURL));
    auto const status = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
    return platform::URLSession::Answer { { { static_cast<char const*>(data.bytes), data.length } }, { status } };
}

}

URLSession::~URLSession()
{
    m_isEnding = true;
    m_pending->completeAll(std::unexpected(failure(NSURLErrorCancelled)));
}

void URLSession::dataTask(platform::URLRequest request, Completion completion)
{
    auto const number = m_pending->add(std::move(completion));
    // The destructor completes it.
    if (m_isEnding)
        return;
    @autoreleasepool {
        auto const pending = m_pending;
        NSURLSession* session = [NSURLSession sharedSession];
        NSURLRequest* native = nativeRequest(request);
        if (!native) {
            [session.delegateQueue
                addOperationWithBlock:^{ pending->complete(number, std::unexpected(failure(NSURLErrorBadURL))); }];
            return;
        }
        [[session dataTaskWithRequest:native
                    completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
                        pending->complete(number, resultOf(data, response, error));
                    }] resume];
    }
}

}
