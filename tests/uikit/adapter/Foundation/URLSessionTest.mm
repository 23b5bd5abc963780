#include "ZelvoraAdapters/uikit/Foundation/URLSession.h"

#include "ZelvoraAdapters/uikit/Foundation/Errors.h"
#include "ZelvoraAdapters/uikit/Foundation/URLRequests.h"
#include "ZelvoraContract/support/Record.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/doubles/URLSession.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

namespace zelvora::tests {

TEST(URLSessionTest, AURLThatTheSystemDoesNotTakeIsAnErrorLaterAndOnce)
{
    uikit::URLSession session;
    Record<int> codes;
    auto const hasReturned = std::make_shared<std::atomic<bool>>(false);
    std::atomic<bool> wasLater = false;
    // Held back on the loader's own queue, so that only a completion inside the call could come first.
    [[NSURLSession sharedSession].delegateQueue addOperationWithBlock:^{
        while (!*hasReturned)
            std::this_thread::yield();
    }];
    session.dataTask({ .url = *platform::URL::verbatim("https://\xff") }, [&](auto const& result) {
        wasLater = hasReturned->load();
        codes.add(result ? 0 : result.error().code);
    });
    *hasReturned = true;
    ASSERT_TRUE(doubles::runMainUntil([&] { return codes.size() > 0; }));
    EXPECT_EQ(codes.all(), std::vector<int> { NSURLErrorBadURL });
    EXPECT_TRUE(wasLater);
    EXPECT_TRUE(doubles::network().requests().empty());
}

TEST(URLSessionTest, AnErrorWithoutAReasonSaysSo)
{
    EXPECT_NE(uikit::errorOf(nil).localizedDescription, "");
    auto const error = uikit::errorOf([NSError errorWithDomain:@"domain" code:-5 userInfo:nil]);
    EXPECT_EQ(error.domain, "domain");
    EXPECT_EQ(error.code, -5);
}

TEST(URLRequestsTest, ARequestIsTranslatedWhole)
{
    platform::URLRequest const request { .url = *platform::URL::parse("https://shop.example/가?q=a b"),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Accept", "text/plain" } },
        .httpBody = { "body" },
        .timeoutInterval = 7 };
    NSURLRequest* native = uikit::nativeRequest(request);
    EXPECT_EQ(uikit::urlOf(native.URL), request.url);
    EXPECT_TRUE([native.HTTPMethod isEqualToString:@"POST"]);
    EXPECT_TRUE([[native valueForHTTPHeaderField:@"Accept"] isEqualToString:@"text/plain"]);
    EXPECT_TRUE([native.HTTPBody isEqual:[NSData dataWithBytes:"body" length:4]]);
    EXPECT_EQ(native.timeoutInterval, 7);
    EXPECT_TRUE(uikit::nativeRequest({ .url = request.url }).HTTPBody == nil);
    EXPECT_EQ(uikit::urlOf(nil), std::nullopt);
}

}
