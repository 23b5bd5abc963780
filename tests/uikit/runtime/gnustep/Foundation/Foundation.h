// GNUstep's Foundation, and what it lacks of ours; doubles implement it.
#pragma once
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wgnu-include-next"
#include_next <Foundation/Foundation.h>
#pragma clang diagnostic pop
// GNUstep has its own, which says nothing.
#undef NS_UNAVAILABLE
#define NS_UNAVAILABLE __attribute__((unavailable))
@interface NSObject (ZelvoraKVO)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context;
@end
@interface NSURLSessionTask : NSObject
- (void)resume;
@end
@interface NSURLSessionDataTask : NSURLSessionTask
@end
@interface NSURLSession : NSObject
+ (NSURLSession*)sharedSession;
@property (readonly, retain) NSOperationQueue* delegateQueue;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request
                           completionHandler:
                               (void (^)(NSData* data, NSURLResponse* response, NSError* error))completionHandler;
@end
