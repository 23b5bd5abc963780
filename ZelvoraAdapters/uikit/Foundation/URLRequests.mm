#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

namespace zelvora::uikit {

NSURL* nativeURL(platform::URL const& url)
{
    NSString* text = stringOf(url.absoluteString());
    return text ? [NSURL URLWithString:text] : nil;
}

std::optional<platform::URL> urlOf(NSURL* url)
{
    return platform::URL::verbatim(textOf(url.absoluteString));
}

NSURLRequest* nativeRequest(platform::URLRequest const& request)
{
    NSURL* url = nativeURL(request.url);
    if (!url)
        return nil;
    NSMutableURLRequest* made = [NSMutableURLRequest requestWithURL:url];
    made.timeoutInterval = request.timeoutInterval;
    if (NSString* method = stringOf(request.httpMethod))
        made.HTTPMethod = method;
    for (auto const& [name, value] : request.httpHeaderFields) {
        if (NSString* field = stringOf(name))
            [made setValue:stringOf(value) forHTTPHeaderField:field];
    }
    auto const& body = request.httpBody.bytes;
    if (!body.empty())
        made.HTTPBody = [NSData dataWithBytes:body.data() length:body.size()];
    return made;
}

}
